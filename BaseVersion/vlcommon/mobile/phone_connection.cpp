// Asking the tray agent to use a phone's connection or to end it.
#include "frame/frame.h"
#include "vlcm/companions.h"
#include "vlcm/mobile.h"

namespace vl::mobile {
namespace {

constexpr uint16_t kPhoneRequest = 0x0206;
constexpr uint16_t kUseConnection = 0x6035;
constexpr uint16_t kEndConnection = 0x6036;

BOOL request(uint16_t code, BtHandle connection) {
    if (connection == 0) return FALSE;
    VlCm_PostMsg2Vltray(kPhoneRequest, code, static_cast<LPARAM>(connection));
    return TRUE;
}

}  // namespace
}  // namespace vl::mobile

using namespace vl;

extern "C" BOOL VlCm_UseMobileConnection(uint32_t connection) {
    TraceScope scope("VlCm_UseMobileConnection");
    return mobile::request(mobile::kUseConnection, connection);
}

extern "C" BOOL VlCm_DisconnectMobilePhone(uint32_t connection) {
    TraceScope scope("VlCm_DisconnectMobilePhone");
    return mobile::request(mobile::kEndConnection, connection);
}
