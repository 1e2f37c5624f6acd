// The stack's state as the operations read it: made from the scenario document, with indexes.
#pragma once

#include "VlSDK.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace vlsim {

using Address = std::array<uint8_t, 6>;  // least significant byte first

struct Service {
    BtHandle handle;
    BtHandle device;
    uint16_t service_class;
    std::string name;
    std::vector<uint8_t> extension;
};

struct Device {
    BtHandle handle;
    Address address;
    std::string name;
    uint32_t device_class;
    uint32_t type;
    uint32_t parameter;
    bool paired;
    bool connected;
    std::vector<BtHandle> services;
};

struct Server {
    BtHandle handle;
    uint16_t service_class;
    std::string name;
    uint32_t status;
    std::vector<uint8_t> extension;
};

struct Shortcut {
    BtHandle handle;
    BtHandle connection;
    BtHandle device;
    BtHandle service;
    bool device_valid;
    uint8_t stack_flag;
    Address address;
    uint16_t service_class;
    std::string name;
    std::string service_name;
    uint32_t device_class;
    bool is_default;
    std::vector<uint8_t> parameter;
};

struct Connection {
    BtHandle handle;
    uint32_t role_and_flags;
    BtHandle device;
    BtHandle service;
    uint16_t service_class;
    bool incoming;
};

struct Port {
    int32_t number;
    uint32_t serial;
    bool plugged;
    bool open;
};

// Items of one kind in the document's order, found by handle in one step.
template <typename Item>
class Items {
public:
    void add(Item item) {
        places_.emplace(item.handle, all_.size());
        all_.push_back(std::move(item));
    }
    [[nodiscard]] const Item* find(BtHandle handle) const {
        const auto found = places_.find(handle);
        return found == places_.end() ? nullptr : &all_[found->second];
    }
    [[nodiscard]] const std::vector<Item>& all() const { return all_; }
    [[nodiscard]] std::vector<Item>& all() { return all_; }

private:
    std::vector<Item> all_;
    std::unordered_map<BtHandle, size_t> places_;
};

using HandleLists = std::unordered_map<uint64_t, std::vector<BtHandle>>;

struct Model {
    bool ready = false;
    uint32_t mobile_active = 0;
    uint32_t ad_function = 0;
    bool audio_connection = false;
    uint32_t local_class = 0;
    Items<Device> devices;
    Items<Service> services;
    Items<Server> servers;
    Items<Shortcut> shortcuts;
    Items<Connection> connections;
    std::vector<Port> ports;

    // Indexes over the shortcuts; a key of two parts holds the first in its upper half.
    std::vector<BtHandle> all_shortcuts;
    HandleLists shortcuts_by_class;
    HandleLists shortcuts_by_device;
    HandleLists shortcuts_by_device_class;
    HandleLists shortcuts_by_device_service;
    std::unordered_map<std::string, BtHandle> shortcut_by_name;
    std::unordered_map<uint16_t, BtHandle> default_shortcut;
    std::unordered_map<uint64_t, BtHandle> device_by_address;

    [[nodiscard]] BtHandle find_device(const Address& address) const;
    [[nodiscard]] const Port* find_port(int32_t number) const;
};

[[nodiscard]] constexpr uint64_t pair_key(uint32_t first, uint32_t second) {
    return uint64_t{first} << 32 | second;
}

// Fills the indexes from the items.
void build_indexes(Model& model);

}  // namespace vlsim
