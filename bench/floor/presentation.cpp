#include "VlSDK.h"
#include "floor.h"

#include <string.h>

namespace {

constexpr uint32_t kObjectPushId = 1180;
constexpr uint32_t kConnectedId = 1813;
constexpr uint32_t kIdleId = 1814;
constexpr uint32_t kPairedId = 1842;

// One text of the language library, which is loaded for it; its length.
int load_text(UINT id, char* buffer, uint32_t size) {
    HMODULE texts = LoadLibraryA("Vl2Res.dll");
    const int length = LoadStringA(texts, id, buffer, static_cast<int>(size));
    FreeLibrary(texts);
    return length;
}

int load_text(UINT id, wchar_t* buffer, uint32_t size) {
    HMODULE texts = LoadLibraryA("Vl2Res.dll");
    const int length = LoadStringW(texts, id, buffer, static_cast<int>(size));
    FreeLibrary(texts);
    return length;
}

template <typename Char>
uint32_t service_name(uint32_t server, Char* buffer, uint32_t size) {
    ServerAttributes attributes{};
    if (const uint32_t result = Btsdk_GetServerAttributes(server, &attributes)) return result;
    load_text(kObjectPushId, buffer, size);
    return 0;
}

template <typename Char>
BOOL service_status(uint32_t server, Char* buffer, uint32_t size) {
    uint32_t status = 0;
    Btsdk_IsBluetoothReady();
    Btsdk_GetServerStatus(server, &status);
    return load_text(status == 3 ? kConnectedId : kIdleId, buffer, size) > 0;
}

}  // namespace

extern "C" uint32_t Floor_LocalServiceName(uint32_t server, char* buffer, uint32_t size) {
    return service_name(server, buffer, size);
}

extern "C" uint32_t Floor_LocalServiceNameW(uint32_t server, wchar_t* buffer, uint32_t size) {
    return service_name(server, buffer, size);
}

extern "C" BOOL Floor_AdapterStatus(char* buffer, uint32_t size) {
    Btsdk_IsBluetoothReady();
    const BtHandle walk = Btsdk_StartEnumConnection();
    if (walk != 0) Btsdk_EndEnumConnection(walk);
    return load_text(walk != 0 ? kConnectedId : kIdleId, buffer, size) > 0;
}

extern "C" BOOL Floor_LocalServiceStatus(uint32_t server, char* buffer, uint32_t size) {
    return service_status(server, buffer, size);
}

extern "C" BOOL Floor_LocalServiceStatusW(uint32_t server, wchar_t* buffer, uint32_t size) {
    return service_status(server, buffer, size);
}

extern "C" BOOL Floor_RemoteDeviceStatus(uint32_t device, char* buffer, uint32_t size) {
    uint32_t paired = 0;
    HMODULE texts = LoadLibraryA("Vl2Res.dll");
    Btsdk_IsBluetoothReady();
    const UINT id = Btsdk_IsDeviceConnected(device) == 1 ? kConnectedId : kIdleId;
    int length = LoadStringA(texts, id, buffer, static_cast<int>(size));
    Btsdk_IsDevicePaired(device, &paired);
    if ((paired & 0xFF) == 1) {
        buffer[length++] = ',';
        buffer[length++] = ' ';
        LoadStringA(texts, kPairedId, buffer + length, static_cast<int>(size) - length);
    }
    FreeLibrary(texts);
    return TRUE;
}
