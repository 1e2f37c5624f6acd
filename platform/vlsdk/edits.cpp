#include "edits.h"

#include "document.h"
#include "scenario_values.h"

#include <algorithm>

namespace vlsim {
namespace {

json* find_item(json& list, const char* member, uint32_t value) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const json& item) {
        return item.contains(member) && number_of(item.at(member)) == value;
    });
    return found == list.end() ? nullptr : &*found;
}

json* find_in(json& document, const char* list, BtHandle handle) {
    return document.contains(list) ? find_item(document.at(list), "handle", handle) : nullptr;
}

json* find_service(json& document, BtHandle handle) {
    if (!document.contains("devices")) return nullptr;
    for (json& device : document.at("devices")) {
        if (json* const found = find_in(device, "services", handle)) return found;
    }
    return nullptr;
}

json shortcut_value(const Shortcut& shortcut, BtHandle handle) {
    json value = {{"handle", handle},
                  {"device", shortcut.device},
                  {"service", shortcut.service},
                  {"class", class_value(shortcut.service_class)},
                  {"name", text_value(shortcut.name)},
                  {"serviceName", text_value(shortcut.service_name)},
                  {"deviceClass", class_value(shortcut.device_class)},
                  {"deviceValid", shortcut.device_valid},
                  {"stackFlag", shortcut.stack_flag}};
    if (!shortcut.device_valid) value["address"] = address_value(shortcut.address);
    if (!shortcut.parameter.empty()) value["parameter"] = bytes_value(shortcut.parameter);
    return value;
}

// A service class has at most one default shortcut: the others of the class lose the flag.
void make_only_default(json& document, json& shortcut) {
    const Model model = make_model(document);
    const Shortcut* const chosen = model.shortcuts.find(number_of(shortcut.at("handle")));
    for (json& each : document.at("shortcuts")) {
        const Shortcut* const other = model.shortcuts.find(number_of(each.at("handle")));
        if (other->service_class == chosen->service_class) each.erase("default");
    }
    shortcut["default"] = true;
}

}  // namespace

BtHandle add_shortcut(const Shortcut& shortcut) {
    BtHandle handle = 0;
    const bool stored = change_document([&](json& document) {
        handle = number_of(document.at("nextHandle"));
        document["shortcuts"].push_back(shortcut_value(shortcut, handle));
        return true;
    });
    return stored ? handle : 0;
}

bool erase_shortcut(BtHandle shortcut) {
    return change_document([shortcut](json& document) {
        json* const found = find_in(document, "shortcuts", shortcut);
        if (!found) return false;
        json& list = document.at("shortcuts");
        list.erase(static_cast<size_t>(found - &list.front()));
        return true;
    });
}

bool change_shortcut(BtHandle shortcut, const ShortcutChange& change) {
    return change_document([&](json& document) {
        json* const found = find_in(document, "shortcuts", shortcut);
        if (!found) return false;
        if (change.name) (*found)["name"] = text_value(*change.name);
        if (change.service_name) (*found)["serviceName"] = text_value(*change.service_name);
        if (change.parameter) {
            (*found)["parameter"] = bytes_value(*change.parameter);
            found->erase("port");
        }
        if (change.is_default && *change.is_default) make_only_default(document, *found);
        if (change.is_default && !*change.is_default) found->erase("default");
        return true;
    });
}

bool set_server_status(BtHandle server, uint32_t status) {
    return change_document([=](json& document) {
        json* const found = find_in(document, "servers", server);
        if (found) (*found)["status"] = status;
        return found != nullptr;
    });
}

bool set_service_parameter(BtHandle service, uint32_t parameter) {
    return change_document([=](json& document) {
        json* const found = find_service(document, service);
        if (found) (*found)["parameter"] = parameter;
        return found != nullptr;
    });
}

bool set_local_class(uint32_t device_class) {
    return change_document([=](json& document) {
        document["local"]["class"] = class_value(device_class);
        return true;
    });
}

bool clear_port_flag(int32_t number, const char* member) {
    return change_document([=](json& document) {
        json* const found = document.contains("ports")
                                ? find_item(document.at("ports"), "port", static_cast<uint32_t>(number))
                                : nullptr;
        if (found) (*found)[member] = false;
        return found != nullptr;
    });
}

}  // namespace vlsim
