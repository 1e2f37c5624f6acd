// The relay to the tray agent.
#include "TrayRelay.h"
#include "VlSDK.h"
#include "operation.h"
#include "results.h"

namespace vlsim {
namespace {

uint32_t post(uint32_t message, uint32_t parameter) {
    const HWND agent = FindWindowA(nullptr, VLSIM_TRAY_WINDOW_TITLE);
    if (!agent) return kNoListener;
    return PostMessageA(agent, VLSIM_RELAY_MESSAGE, message, static_cast<LPARAM>(parameter)) ? kDone
                                                                                             : kNoListener;
}

}  // namespace
}  // namespace vlsim

uint32_t Btsdk_PostMessageToCtrlCenter(uint32_t message, uint32_t parameter) {
    return vlsim::call<"Btsdk_PostMessageToCtrlCenter">(vlsim::post, message, parameter);
}
