#include "scenario.h"

#include "scenario_values.h"

#include <windows.h>

#include <cstdio>
#include <stdexcept>

namespace vlsim {
namespace {

constexpr const char* kHandleLists[] = {"servers", "shortcuts", "connections"};

// Where the port stands in the block of a serial-type service.
constexpr size_t kServerPortByte = 6;
constexpr size_t kSerialPortByte = 5;
constexpr size_t kModemPortByte = 9;
constexpr size_t kParameterLength = 10;
constexpr uint16_t kDialUp = 0x1103;
constexpr uint16_t kFax = 0x1111;

// Visits every object that carries a handle.
template <typename Visit>
void for_each_item(json& document, Visit visit) {
    if (document.contains("devices")) {
        for (json& device : document.at("devices")) {
            visit(device);
            if (!device.contains("services")) continue;
            for (json& service : device.at("services")) visit(service);
        }
    }
    for (const char* list : kHandleLists) {
        if (!document.contains(list)) continue;
        for (json& item : document.at(list)) visit(item);
    }
}

template <typename Item>
void add_once(Items<Item>& items, Item item) {
    if (item.handle == 0 || items.find(item.handle)) {
        throw std::invalid_argument("handle used twice: " + std::to_string(item.handle));
    }
    items.add(std::move(item));
}

void add_services(Model& model, Device& device, const Members& from) {
    for (const json& each : from.list("services")) {
        const Members members(each);
        Service service{.handle = members.number("handle"),
                        .device = device.handle,
                        .service_class = members.half("class"),
                        .name = members.text("name"),
                        .extension = members.bytes("extension")};
        device.services.push_back(service.handle);
        add_once(model.services, std::move(service));
    }
}

void add_devices(Model& model, const Members& document) {
    for (const json& each : document.list("devices")) {
        const Members members(each);
        Device device{.handle = members.number("handle"),
                      .address = members.address("address"),
                      .name = members.text("name"),
                      .device_class = members.number("class"),
                      .type = members.number("type"),
                      .parameter = members.number("parameter"),
                      .paired = members.flag("paired"),
                      .connected = members.flag("connected"),
                      .services = {}};
        add_services(model, device, members);
        add_once(model.devices, std::move(device));
    }
}

void add_servers(Model& model, const Members& document) {
    for (const json& each : document.list("servers")) {
        const Members members(each);
        Server server{.handle = members.number("handle"),
                      .service_class = members.half("class"),
                      .name = members.text("name"),
                      .status = members.number("status", 1),
                      .extension = members.bytes("extension")};
        if (members.has("port")) {
            server.extension.resize(std::max(server.extension.size(), kServerPortByte + 2));
            server.extension[kServerPortByte] = static_cast<uint8_t>(members.number("port"));
        }
        add_once(model.servers, std::move(server));
    }
}

void add_connections(Model& model, const Members& document) {
    for (const json& each : document.list("connections")) {
        const Members members(each);
        const Service* service = model.services.find(members.number("service"));
        add_once(model.connections,
                 Connection{.handle = members.number("handle"),
                            .role_and_flags = members.number("role"),
                            .device = members.number("device"),
                            .service = members.number("service"),
                            .service_class = members.half("class", service ? service->service_class : 0),
                            .incoming = members.flag("incoming")});
    }
}

std::vector<uint8_t> shortcut_parameter(const Members& members, uint16_t service_class) {
    std::vector<uint8_t> parameter = members.bytes("parameter");
    if (!members.has("port")) return parameter;
    const bool modem = service_class == kDialUp || service_class == kFax;
    parameter.resize(std::max(parameter.size(), kParameterLength));
    parameter[modem ? kModemPortByte : kSerialPortByte] = static_cast<uint8_t>(members.number("port"));
    return parameter;
}

// What a shortcut does not say itself holds as its device and service say.
void add_shortcuts(Model& model, const Members& document) {
    for (const json& each : document.list("shortcuts")) {
        const Members members(each);
        const Device* device = model.devices.find(members.number("device"));
        const Service* service = model.services.find(members.number("service"));
        const uint16_t service_class = members.half("class", service ? service->service_class : 0);
        add_once(model.shortcuts,
                 Shortcut{.handle = members.number("handle"),
                          .connection = members.number("connection"),
                          .device = members.number("device"),
                          .service = members.number("service"),
                          .device_valid = members.flag("deviceValid", true),
                          .stack_flag = static_cast<uint8_t>(members.number("stackFlag", 1)),
                          .address = members.address("address", device ? device->address : Address{}),
                          .service_class = service_class,
                          .name = members.text("name"),
                          .service_name = members.text("serviceName", service ? service->name : ""),
                          .device_class = members.number("deviceClass", device ? device->device_class : 0),
                          .is_default = members.flag("default"),
                          .parameter = shortcut_parameter(members, service_class)});
    }
}

void add_ports(Model& model, const Members& document) {
    for (const json& each : document.list("ports")) {
        const Members members(each);
        model.ports.push_back({.number = static_cast<int32_t>(members.number("port")),
                               .serial = members.number("serial"),
                               .plugged = members.flag("plugged", true),
                               .open = members.flag("open")});
    }
}

std::string hexadecimal(const std::vector<uint8_t>& bytes) {
    std::string text;
    for (const uint8_t byte : bytes) {
        char pair[3];
        std::snprintf(pair, sizeof pair, "%02X", byte);
        text += pair;
    }
    return text;
}

bool is_utf8(const std::string& text) {
    return text.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                               static_cast<int>(text.size()), nullptr, 0) > 0;
}

}  // namespace

void give_handles(json& document) {
    BtHandle next = Members(document).number("nextHandle", 1);
    for_each_item(document,
                  [&next](json& item) { next = std::max(next, Members(item).number("handle") + 1); });
    for_each_item(document, [&next](json& item) {
        if (!item.contains("handle")) item["handle"] = next++;
    });
    document["nextHandle"] = next;
}

Model make_model(const json& document) {
    const Members members(document);
    Model model;
    model.ready = members.flag("ready");
    model.mobile_active = members.number("mobileActive");
    model.ad_function = members.number("adFunction");
    model.audio_connection = members.flag("audioConnection");
    if (members.has("local")) model.local_class = Members(document.at("local")).number("class");
    add_devices(model, members);
    add_servers(model, members);
    add_connections(model, members);
    add_shortcuts(model, members);
    add_ports(model, members);
    build_indexes(model);
    return model;
}

json text_value(const std::string& text) {
    if (is_utf8(text)) return text;
    return {{"hex", hexadecimal({text.begin(), text.end()})}};
}

json bytes_value(const std::vector<uint8_t>& bytes) { return hexadecimal(bytes); }

json address_value(const Address& address) {
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", address[5], address[4], address[3],
                  address[2], address[1], address[0]);
    return text;
}

json class_value(uint32_t device_or_service_class) {
    char text[11];
    std::snprintf(text, sizeof text, "0x%04X", device_or_service_class);
    return text;
}

}  // namespace vlsim
