#include "VlSDK.h"
#include "VlTrace.h"
#include "floor.h"

#include <shlobj.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

namespace {

constexpr uint16_t kSerialPort = 0x1101;
constexpr size_t kServerPortByte = 6;

struct SerialClass {
    uint16_t service_class;
    uint8_t port_byte;
};

constexpr SerialClass kSerialClasses[] = {
    {kSerialPort, 5}, {0x1103, 9}, {0x1126, 5}, {0x1127, 5}, {0x1111, 9}};

// A shortcut's parameter, by a call for its length and a call for its bytes.
struct Parameter {
    uint8_t bytes[64];
    uint16_t length = 0;

    explicit Parameter(BtHandle shortcut) {
        ShortcutProperty record{};
        record.shortcut = shortcut;
        record.mask = kShortcutMaskParameter;
        if (Btsdk_GetShortCutProperty(&record) != 0 || record.parameterLength == 0) return;
        const uint16_t wanted = record.parameterLength < sizeof bytes ? record.parameterLength : sizeof bytes;
        record = {};
        record.shortcut = shortcut;
        record.mask = kShortcutMaskParameter;
        record.parameterLength = wanted;
        record.parameter = bytes;
        if (Btsdk_GetShortCutProperty(&record) == 0) length = wanted;
    }
    [[nodiscard]] bool has(size_t place, int port) const { return place < length && bytes[place] == port; }
};

int port_of_server(BtHandle server) {
    ServerAttributes attributes{};
    attributes.mask = kServerMaskExtension;
    if (Btsdk_GetServerAttributes(server, &attributes) != 0 || attributes.extension == nullptr) return -1;
    const int port = static_cast<const uint8_t*>(attributes.extension)[kServerPortByte];
    Btsdk_FreeMemory(attributes.extension);
    return port;
}

bool used_by_server(int port) {
    bool used = false;
    const BtHandle walk = Btsdk_StartEnumLocalServer();
    while (!used) {
        ServerAttributes attributes{};
        const BtHandle server = Btsdk_EnumLocalServer(walk, &attributes);
        if (server == 0) break;
        used = attributes.serviceClass == kSerialPort && port_of_server(server) == port;
    }
    Btsdk_EndEnumLocalServer(walk);
    return used;
}

bool used_by_class(int port, const SerialClass& row) {
    const uint32_t count = Btsdk_GetShortCutByServiceClass(row.service_class, nullptr, 0);
    if (count == 0) return false;
    auto shortcuts = static_cast<BtHandle*>(malloc(count * sizeof(BtHandle)));
    Btsdk_GetShortCutByServiceClass(row.service_class, shortcuts, count);
    bool used = false;
    for (uint32_t i = 0; i < count && !used; ++i) {
        CVlTraceFunc scope(512, const_cast<char*>("Floor_IsPortUsed"));  // promised for each shortcut
        used = Parameter(shortcuts[i]).has(row.port_byte, port);
    }
    free(shortcuts);
    return used;
}

// Of the common settings file.
constexpr char kFile[] = "\\SysWOW64\\vlcs.ini";
using SettingsPath = char[MAX_PATH + sizeof kFile];

void settings_path(SettingsPath& path) {
    SHGetFolderPathA(nullptr, CSIDL_WINDOWS, nullptr, SHGFP_TYPE_DEFAULT, path);
    memcpy(path + strlen(path), kFile, sizeof kFile);
}

bool claimed_by_virtual_device(int port) {
    SettingsPath path;
    settings_path(path);
    const auto count = static_cast<int>(GetPrivateProfileIntA("LocalBluetooth", "VirtualDeviceNum", 0, path));
    for (int i = 0; i < count; ++i) {
        char section[32];
        char name[20] = {};
        snprintf(section, sizeof section, "VirtualDevice%d", i);
        Btsdk_GetPrivateProfileString(section, "VirtualDevice", "", name, sizeof name, path);
        if (strlen(name) > 3 && atoi(name + 3) == port) return true;
    }
    return false;
}

}  // namespace

extern "C" BOOL Floor_ShortcutsOfPort(uint32_t* found, int port, uint32_t* count) {
    CVlTraceFunc scope(512, const_cast<char*>("Floor_ShortcutsOfPort"));  // promised, too
    const uint32_t total = Btsdk_GetAllShortCuts(nullptr, 0);
    auto shortcuts = static_cast<BtHandle*>(malloc(total * sizeof(BtHandle)));
    Btsdk_GetAllShortCuts(shortcuts, total);
    uint32_t matches = 0;
    for (uint32_t i = 0; i < total; ++i) {
        const Parameter parameter(shortcuts[i]);
        if (!parameter.has(5, port) && !parameter.has(9, port)) continue;
        if (matches < *count) found[matches] = shortcuts[i];
        ++matches;
    }
    free(shortcuts);
    *count = matches;
    return TRUE;
}

extern "C" BOOL Floor_IsPortUsed(int port) {
    if (used_by_server(port)) return TRUE;
    for (const SerialClass& row : kSerialClasses) {
        if (used_by_class(port, row)) return TRUE;
    }
    return claimed_by_virtual_device(port);
}

extern "C" int Floor_FreePort() {
    SettingsPath path;
    settings_path(path);
    for (int i = 1; i < 255; ++i) {
        char key[16];
        snprintf(key, sizeof key, "SerialNum%d", i);
        const auto value = static_cast<int>(Btsdk_GetPrivateProfileInt("VComm enum info", key, 0, path));
        if (value == 0) break;
        if (value % 10 != 0 && !Floor_IsPortUsed(value / 10)) return value / 10;
    }
    return 0;
}
