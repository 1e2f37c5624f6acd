#include "document.h"

#include "home_folder.h"
#include "misuse.h"
#include "printer_keys.h"
#include "shared_file.h"

#include <algorithm>
#include <stdexcept>

namespace vlspool {
namespace {

constexpr char kBuiltIn[] = R"({
  "printers": [ { "name": "Office printer", "driver": "Generic / Text Only", "port": "LPT1:" } ],
  "ports": [ { "name": "LPT1:" }, { "name": "FILE:" }, { "name": "BT1:", "monitor": "Bluetooth" },
             { "name": "BT2:", "monitor": "Bluetooth" } ],
  "drivers": [ { "name": "Generic / Text Only" } ]
})";
constexpr const char* kLists[] = {"printers", "ports", "drivers"};

// Made at the first call: the folder is none of the loader's business.
vlsim::SharedFile& file() {
    static vlsim::SharedFile only(vlsim::home_folder(), L"spooler.json");
    return only;
}

void expect_texts(const json& item, std::initializer_list<const char*> members) {
    for (const char* member : members) {
        if (item.contains(member) && !item.at(member).is_string()) throw std::invalid_argument(member);
    }
}

void expect_named(const json& item) {
    if (item.value("name", "").empty()) throw std::invalid_argument("an item without a name");
}

void check_printer(json& printer) {
    expect_texts(printer, {"driver", "port", "processor"});
    for (json& job : printer["jobs"] = printer.value("jobs", json::array())) {
        expect_texts(job, {"document", "user"});
        if (job.contains("reads") && !job.at("reads").is_number_unsigned())
            throw std::invalid_argument("reads");
    }
    const json refusals = printer.value("refuses", json::object());
    for (const auto& [operation, error] : refusals.items()) {
        if (!error.is_number_unsigned()) throw std::invalid_argument(operation);
    }
}

json checked(json document) {
    if (!document.is_object()) throw std::invalid_argument("not an object");
    for (const char* list : kLists) {
        for (const json& item : document[list] = document.value(list, json::array())) expect_named(item);
    }
    for (json& printer : document["printers"]) check_printer(printer);
    return document;
}

json load(const vlsim::SharedFile::Lock& held) {
    const auto text = held.read();
    if (!text) return built_in_scenario();
    try {
        return checked(json::parse(*text));
    } catch (const std::exception& error) {
        vlsim::report_misuse("spooler.json", error.what());
        held.set_aside();
        return built_in_scenario();
    }
}

}  // namespace

json built_in_scenario() { return checked(json::parse(kBuiltIn)); }

json read_document() {
    const vlsim::SharedFile::Lock held(file());
    return load(held);
}

bool change_document(const std::function<bool(json&)>& change) {
    const vlsim::SharedFile::Lock held(file());
    const json before = load(held);
    try {
        json after = before;
        if (!change(after)) return false;
        after = checked(std::move(after));
        if (!held.replace(after.dump(2) + "\n")) return false;
        follow_in_registry(before.at("printers"), after.at("printers"));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

json* find_printer(json& document, const std::string& name) {
    json& printers = document.at("printers");
    const auto found = std::find_if(printers.begin(), printers.end(), [&name](const json& printer) {
        return _stricmp(printer.at("name").get_ref<const std::string&>().c_str(), name.c_str()) == 0;
    });
    return found != printers.end() ? &*found : nullptr;
}

}  // namespace vlspool
