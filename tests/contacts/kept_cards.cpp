#include "kept_cards.h"

#include "support/settings_scope.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <windows.h>

#include <string.h>

#include <algorithm>
#include <map>

namespace {

using Json = nlohmann::json;

// Read by the test that follows (CMakeLists.txt).
constexpr char kFolder[] = "..\\contact_cards\\";

template <size_t room>
std::string text(const char (&field)[room]) {
    return {field, strnlen(field, room)};
}

Json address_details(const VlContactAddress& address) {
    return {{"street", text(address.street)},
            {"locality", text(address.locality)},
            {"region", text(address.region)},
            {"postalCode", text(address.postalCode)},
            {"country", text(address.country)}};
}

Json details_of(const VlContact& contact) {
    Json details = {{"family", text(contact.name->family)},
                    {"given", text(contact.name->given)},
                    {"additional", text(contact.name->additional)},
                    {"company", text(contact.organisation->company)},
                    {"department", text(contact.organisation->department)},
                    {"title", text(contact.organisation->title)},
                    {"home", address_details(contact.addresses[VLCM_ADDRESS_HOME])},
                    {"work", address_details(contact.addresses[VLCM_ADDRESS_WORK])},
                    {"emails", {text(contact.emails[0].address)}},
                    {"urls", {text(contact.urls[0].text)}}};
    for (size_t i = 0; i < VLCM_CONTACT_PHONES; ++i) {
        details["phones"].push_back(
            {{"type", contact.phones[i].type}, {"number", text(contact.phones[i].number)}});
    }
    return details;
}

bool is_utf8(const std::string& value) {
    return value.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, value.data(),
                                                static_cast<int>(value.size()), nullptr, 0) != 0;
}

bool comes_back(const Json& details) {
    if (details.is_string()) {
        const auto& value = details.get_ref<const std::string&>();
        return is_utf8(value) && value.find_first_of(";,\\\r\n") == std::string::npos;
    }
    if (!details.is_structured()) return true;  // a walk over it would give itself
    return std::all_of(details.begin(), details.end(), comes_back);
}

bool has_name(const Json& details) {
    return details.value("family", "") + details.value("given", "") + details.value("additional", "") != "";
}

// Cards of an earlier run would be read, too.
void empty_folder() {
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((std::string(kFolder) + "*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        DeleteFileA((std::string(kFolder) + found.cFileName).c_str());
    } while (FindNextFileA(search, &found));
    FindClose(search);
}

std::string next_path() {
    static std::map<std::string, size_t> numbers;
    if (numbers.empty()) empty_folder();
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string name = std::string(test->test_suite_name()) + "." + test->name();
    return kFolder + name + "-" + std::to_string(++numbers[name]);
}

void keep(const Json& details, const std::string& card) {
    if (!has_name(details) || !comes_back(details)) return;
    const std::string path = next_path();
    support::write_file(path + ".json", details.dump());
    support::write_file(path + ".vcf", card);
}

}  // namespace

void keep_card(const VlContact& contact, const std::string& card) { keep(details_of(contact), card); }

void keep_card(const std::string& details, const std::string& card) { keep(Json::parse(details), card); }
