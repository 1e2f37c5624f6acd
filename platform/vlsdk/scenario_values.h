// Values of the scenario document as they are read. All throw std::exception on another form.
#pragma once

#include "model.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <string>
#include <vector>

namespace vlsim {

// A number, or its text in C notation ("0x1105").
[[nodiscard]] uint32_t number_of(const nlohmann::json& value);
[[nodiscard]] std::string text_of(const nlohmann::json& value);
// Hexadecimal digits in pairs, blanks between pairs allowed.
[[nodiscard]] std::vector<uint8_t> bytes_of(const nlohmann::json& value);
// "AA:BB:CC:DD:EE:FF", most significant byte first.
[[nodiscard]] Address address_of(const nlohmann::json& value);

// Members of one object of the document, with what holds when they are missing.
class Members {
public:
    explicit Members(const nlohmann::json& object);

    [[nodiscard]] bool has(const char* name) const { return object_.contains(name); }
    [[nodiscard]] uint32_t number(const char* name, uint32_t fallback = 0) const;
    [[nodiscard]] uint16_t half(const char* name, uint16_t fallback = 0) const;
    [[nodiscard]] bool flag(const char* name, bool fallback = false) const;
    [[nodiscard]] std::string text(const char* name, const std::string& fallback = {}) const;
    [[nodiscard]] std::vector<uint8_t> bytes(const char* name) const;
    [[nodiscard]] Address address(const char* name, const Address& fallback = {}) const;
    // An array of objects; empty when missing.
    [[nodiscard]] const nlohmann::json& list(const char* name) const;

private:
    const nlohmann::json& object_;
};

}  // namespace vlsim
