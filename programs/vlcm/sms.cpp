#include "sms.h"

#include "VlCommon.h"
#include "devices.h"
#include "facts.h"
#include "sending.h"
#include "text_message.h"

#include <stdio.h>

namespace programs {
namespace {

// While mobile support is active, only phones that offer their messages have an editor.
bool has_editor(BtHandle phone) {
    constexpr uint16_t kMessageAccess = 0x1132;
    return VlCm_IsMobileActive() == 0 || VlCm_IsSupportService(phone, kMessageAccess) != FALSE;
}

}  // namespace

Answer ask_sms(const MessageRequest& request) {
    const auto& [handle, property] = device_of(request.device);
    const VlSmsRecord record = to_record({handle, request.number, request.text});
    const bool editor = has_editor(handle);
    const uint32_t status = VlCm_SendSMS(&record);
    return {{{"device", display_name(property.address)},
             {"number", request.number},
             {"text", request.text},
             {"editor", editor},
             {"status", status},
             {"meaning", meaning_of(status)}},
            editor && status == VLCM_OK ? kYes : kNo};
}

void print_sms(const Json& facts) {
    printf("to %s by %s: %s (%s)\n", shown(facts, "number").c_str(), shown(facts, "device").c_str(),
           shown(facts, "meaning").c_str(), shown(facts, "status").c_str());
    if (!facts.at("editor")) printf("  no editor opens: this phone offers no messages\n");
}

}  // namespace programs
