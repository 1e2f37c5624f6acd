#include "connecting.h"

#include "VlCommon.h"
#include "devices.h"
#include "hand_over.h"
#include "resources.h"
#include "texts.h"

namespace veltrin {
namespace {

Outcome failure(std::wstring why) { return {std::move(why), true}; }

// The relayed request by which the library asks for a default connection, for any shortcut.
void relay_connect(BtHandle shortcut) {
    constexpr uint16_t kLow = 0x0203, kHigh = 0x4908;
    VlCm_PostMsg2Vltray(kLow, kHigh, static_cast<LPARAM>(shortcut));
}

// The first shortcut of the device that is the default one of its service class; 0: there is none.
BtHandle default_shortcut(BtHandle device) {
    for (const BtHandle shortcut : programs::shortcuts_of(device)) {
        if (VlCm_IsDefaultShortcut(shortcut)) return shortcut;
    }
    return 0;
}

template <typename Relay>
Outcome ask_agent(const std::wstring& name, Relay relay) {
    if (Btsdk_IsBluetoothReady() != 1) return failure(text(IDS_NOT_READY));
    if (programs::run_agent() == 0) return failure(text(IDS_NO_AGENT));
    relay();
    return {text(IDS_CONNECT_ASKED, name)};
}

}  // namespace

Outcome connect_device(const DeviceRow& device) {
    const BtHandle handle = device.handle;
    if (VlCm_ShouldShowDefaultConn(handle)) {
        return ask_agent(device.name, [handle] { VlCm_ConnectDefaultShcByDevhdl(handle); });
    }
    const BtHandle shortcut = default_shortcut(handle);
    if (shortcut == 0) return failure(text(IDS_NO_DEFAULT, device.name));
    return ask_agent(device.name, [shortcut] { relay_connect(shortcut); });
}

Outcome connect_service(const ServiceRow& service) {
    const BtHandle shortcut = service.shortcut;
    if (shortcut == 0) return failure(text(IDS_NO_SHORTCUT, service.name));
    return ask_agent(service.name, [shortcut] { relay_connect(shortcut); });
}

}  // namespace veltrin
