#include "printer_keys.h"

#include "ansi_text.h"

#include <windows.h>

#include <set>

namespace vlspool {
namespace {

std::string key_of(const std::string& printer) {
    return "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\" + ansi_text(printer);
}

std::set<std::string> names_in(const json& printers) {
    std::set<std::string> names;
    for (const json& printer : printers) names.insert(printer.at("name").get<std::string>());
    return names;
}

void make_key(const std::string& printer) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key_of(printer).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr) == ERROR_SUCCESS) {
        RegCloseKey(key);
    }
}

}  // namespace

void follow_in_registry(const json& before, const json& after) {
    const std::set<std::string> gone = names_in(before);
    const std::set<std::string> there = names_in(after);
    for (const std::string& name : gone) {
        if (!there.contains(name)) RegDeleteKeyA(HKEY_LOCAL_MACHINE, key_of(name).c_str());
    }
    for (const std::string& name : there) make_key(name);
}

}  // namespace vlspool
