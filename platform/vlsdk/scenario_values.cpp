#include "scenario_values.h"

#include <cstdio>
#include <stdexcept>

namespace vlsim {
namespace {

using nlohmann::json;

[[noreturn]] void refuse(const json& value, const char* wanted) {
    throw std::invalid_argument(value.dump() + " is no " + wanted);
}

int digit_of(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

std::vector<uint8_t> bytes_of_digits(const json& value, const std::string& digits, char separator) {
    std::vector<uint8_t> bytes;
    for (size_t at = 0; at < digits.size(); at += 2) {
        while (at < digits.size() && digits[at] == separator) ++at;
        if (at == digits.size()) break;
        const int high = digit_of(digits[at]);
        const int low = at + 1 < digits.size() ? digit_of(digits[at + 1]) : -1;
        if (high < 0 || low < 0) refuse(value, "row of hexadecimal bytes");
        bytes.push_back(static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
}

}  // namespace

uint32_t number_of(const json& value) {
    int64_t number = -1;
    if (value.is_number_integer()) {
        number = value.get<int64_t>();
    } else if (value.is_string()) {
        size_t used = 0;
        const auto& text = value.get_ref<const std::string&>();
        number = std::stoll(text, &used, 0);
        if (used != text.size()) refuse(value, "number");
    } else {
        refuse(value, "number");
    }
    if (number < 0 || number > std::numeric_limits<uint32_t>::max()) refuse(value, "32-bit number");
    return static_cast<uint32_t>(number);
}

std::string text_of(const json& value) {
    if (value.is_object() && value.contains("hex")) {
        const std::vector<uint8_t> bytes = bytes_of(value.at("hex"));
        return {bytes.begin(), bytes.end()};
    }
    if (!value.is_string()) refuse(value, "text");
    return value.get<std::string>();
}

std::vector<uint8_t> bytes_of(const json& value) {
    if (!value.is_string()) refuse(value, "row of hexadecimal bytes");
    return bytes_of_digits(value, value.get_ref<const std::string&>(), ' ');
}

Address address_of(const json& value) {
    Address address{};
    if (!value.is_string()) refuse(value, "device address");
    const auto bytes = bytes_of_digits(value, value.get_ref<const std::string&>(), ':');
    if (bytes.size() != address.size()) refuse(value, "device address");
    std::copy(bytes.rbegin(), bytes.rend(), address.begin());
    return address;
}

Members::Members(const json& object) : object_(object) {
    if (!object.is_object()) refuse(object, "object");
}

uint32_t Members::number(const char* name, uint32_t fallback) const {
    return has(name) ? number_of(object_.at(name)) : fallback;
}

uint16_t Members::half(const char* name, uint16_t fallback) const {
    const uint32_t value = number(name, fallback);
    if (value > std::numeric_limits<uint16_t>::max()) refuse(object_.at(name), "16-bit number");
    return static_cast<uint16_t>(value);
}

bool Members::flag(const char* name, bool fallback) const {
    if (!has(name)) return fallback;
    const json& value = object_.at(name);
    if (!value.is_boolean()) refuse(value, "true or false");
    return value.get<bool>();
}

std::string Members::text(const char* name, const std::string& fallback) const {
    return has(name) ? text_of(object_.at(name)) : fallback;
}

std::vector<uint8_t> Members::bytes(const char* name) const {
    return has(name) ? bytes_of(object_.at(name)) : std::vector<uint8_t>{};
}

Address Members::address(const char* name, const Address& fallback) const {
    return has(name) ? address_of(object_.at(name)) : fallback;
}

const json& Members::list(const char* name) const {
    static const json none = json::array();
    if (!has(name)) return none;
    const json& value = object_.at(name);
    if (!value.is_array()) refuse(value, "list");
    return value;
}

}  // namespace vlsim
