#include "VlCommon.h"
#include "commands.h"
#include "facts.h"

#include <stdio.h>

namespace programs {
namespace {

Json all_servers(bool all) {
    Json list = Json::array();
    for (const Service& server : local_servers()) {
        Json facts = server_facts(server);
        if (all || facts.at("shown").get<bool>()) list.push_back(std::move(facts));
    }
    return list;
}

Json devices_around(bool all) {
    Json list = Json::array();
    for (const Device& device : all_devices()) {
        Json facts = device_facts(device);
        if (!all && !facts.at("shown").get<bool>()) continue;
        facts["services"] = services_facts(device.handle, all);
        facts["shortcuts"] = shortcuts_facts(device.handle, all);
        list.push_back(std::move(facts));
    }
    return list;
}

}  // namespace

Answer ask_show(bool all) {
    return {{{"adapter", adapter_facts()}, {"services", all_servers(all)}, {"devices", devices_around(all)}},
            kYes};
}

void print_show(const Json& facts) {
    const Json& adapter = facts.at("adapter");
    printf("adapter  icon %s  %s, as %s\n", shown(adapter, "icon").c_str(), shown(adapter, "status").c_str(),
           shown(adapter, "kind").c_str());
    for (const Json& server : facts.at("services")) {
        printf("  service   %s  icon %-3s  %s: %s%s\n", shown(server, "class").c_str(),
               shown(server, "icon").c_str(), shown(server, "name").c_str(), shown(server, "status").c_str(),
               server.at("shown").get<bool>() ? "" : "  (hidden)");
    }
    for (const Json& device : facts.at("devices")) {
        printf("%s  icon %s  %s (%s): %s%s\n", shown(device, "address").c_str(),
               shown(device, "icon").c_str(), shown(device, "name").c_str(), shown(device, "kind").c_str(),
               shown(device, "status").c_str(), device.at("shown").get<bool>() ? "" : "  (hidden)");
        print_services(device, "  ");
    }
}

}  // namespace programs
