#include "VlCommon.h"
#include "commands.h"
#include "facts.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

constexpr int kLastPort = 256;

Json servers_of(int port) {
    constexpr uint16_t kSerialPort = 0x1101;
    Json list = Json::array();
    for (const Service& server : local_servers()) {
        if (server.service_class != kSerialPort || VlCm_GetLocalSPPSvrComPort(server.handle) != port)
            continue;
        Json facts = server_facts(server);
        facts["dynamic"] = VlCm_IsDynamicLocSppSvc(server.handle) != FALSE;
        list.push_back(std::move(facts));
    }
    return list;
}

Json shortcuts_of(int port) {
    uint32_t count = 0;
    if (!VlCm_GetShortcutsByComPort(nullptr, port, &count)) count = 0;
    std::vector<BtHandle> handles(count);
    if (count != 0) VlCm_GetShortcutsByComPort(handles.data(), port, &count);
    Json list = Json::array();
    for (const BtHandle shortcut : handles) {
        if (shortcut != 0) list.push_back(shortcut_facts(shortcut));
    }
    return list;
}

Json modem_of(int port) {
    char name[VLCM_PATH_SIZE] = "";
    uint16_t size = sizeof name;
    if (!VlCm_FindModemNameByComPort(port, name, &size)) return nullptr;
    return utf8(wide_from_ansi(name));
}

}  // namespace

Answer ask_ports() {
    Json used = Json::array();
    for (int port = 1; port <= kLastPort; ++port) {
        if (!VlCm_IsComportBeenUsed(port)) continue;
        used.push_back({{"port", port},
                        {"servers", servers_of(port)},
                        {"shortcuts", shortcuts_of(port)},
                        {"modem", modem_of(port)}});
    }
    const int free_port = VlCm_GetPluginAndNotUsedComport();
    return {{{"used", std::move(used)}, {"free", free_port != 0 ? Json(free_port) : Json(nullptr)}},
            free_port != 0 ? kYes : kNo};
}

void print_ports(const Json& facts) {
    for (const Json& port : facts.at("used")) {
        printf("COM%s\n", shown(port, "port").c_str());
        for (const Json& server : port.at("servers")) {
            printf("  service   %s: %s%s\n", shown(server, "name").c_str(), shown(server, "status").c_str(),
                   server.at("dynamic").get<bool>() ? ", made on demand" : "");
        }
        for (const Json& shortcut : port.at("shortcuts")) {
            printf("  shortcut  %s: %s\n", shown(shortcut, "name").c_str(),
                   shown(shortcut, "status").c_str());
        }
        if (!port.at("modem").is_null()) printf("  modem     %s\n", shown(port, "modem").c_str());
    }
    if (facts.at("free").is_null()) {
        printf("no free port is plugged in\n");
    } else {
        printf("next free port: COM%s\n", shown(facts, "free").c_str());
    }
}

}  // namespace programs
