#include "model.h"

#include <algorithm>

namespace vlsim {
namespace {

uint64_t address_key(const Address& address) {
    uint64_t key = 0;
    for (const uint8_t byte : address) key = key << 8 | byte;
    return key;
}

// Key: device and remote service, the two things that a connection and a shortcut share.
std::unordered_map<uint64_t, BtHandle> outgoing_connections(const Model& model) {
    std::unordered_map<uint64_t, BtHandle> found;
    for (const Connection& each : model.connections.all()) {
        if (!each.incoming) found.emplace(pair_key(each.device, each.service), each.handle);
    }
    return found;
}

void index_devices(Model& model) {
    for (const Device& device : model.devices.all()) {
        model.device_by_address.emplace(address_key(device.address), device.handle);
    }
    std::unordered_map<BtHandle, bool> connected;
    for (const Connection& each : model.connections.all()) connected[each.device] = true;
    for (Device& device : model.devices.all()) device.connected |= connected.contains(device.handle);
}

void index_shortcut(Model& model, const Shortcut& shortcut) {
    const BtHandle device = shortcut.device_valid ? shortcut.device : model.find_device(shortcut.address);
    model.all_shortcuts.push_back(shortcut.handle);
    model.shortcuts_by_class[shortcut.service_class].push_back(shortcut.handle);
    model.shortcuts_by_device[device].push_back(shortcut.handle);
    model.shortcuts_by_device_class[pair_key(device, shortcut.service_class)].push_back(shortcut.handle);
    model.shortcuts_by_device_service[pair_key(device, shortcut.service)].push_back(shortcut.handle);
    model.shortcut_by_name.emplace(shortcut.name, shortcut.handle);
    if (shortcut.is_default) model.default_shortcut.emplace(shortcut.service_class, shortcut.handle);
}

}  // namespace

BtHandle Model::find_device(const Address& address) const {
    const auto found = device_by_address.find(address_key(address));
    return found == device_by_address.end() ? 0 : found->second;
}

const Port* Model::find_port(int32_t number) const {
    const auto found = std::find_if(ports.begin(), ports.end(),
                                    [number](const Port& port) { return port.number == number; });
    return found == ports.end() ? nullptr : &*found;
}

void build_indexes(Model& model) {
    index_devices(model);
    const auto outgoing = outgoing_connections(model);
    for (Shortcut& shortcut : model.shortcuts.all()) {
        const auto live = outgoing.find(pair_key(shortcut.device, shortcut.service));
        if (shortcut.connection == 0 && live != outgoing.end()) shortcut.connection = live->second;
        index_shortcut(model, shortcut);
    }
}

}  // namespace vlsim
