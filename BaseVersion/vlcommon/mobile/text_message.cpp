// Text-message records and the mobile switch.
#include "frame/frame.h"
#include "vlcm/companions.h"
#include "vlcm/mobile.h"

namespace vl::mobile {
namespace {

VlSmsRecord* new_text_message() {
    auto record = static_cast<VlSmsRecord*>(Vlcm_SHAlloc(sizeof(VlSmsRecord)));
    if (record == nullptr) {
        trace_line("error!!! CreateMobileProcInfo: can not alloc memory.\r\n");
        return nullptr;
    }
    memset(record, 0, sizeof *record);
    return record;
}

void free_text_message(VlSmsRecord* record) {
    if (record == nullptr || IsBadReadPtr(record, sizeof *record)) {
        trace_line("error!!! DestroyMobileProcInfo: parameter is invalid.\r\n");
        return;
    }
    Vlcm_SHFree(record);
}

}  // namespace
}  // namespace vl::mobile

using namespace vl;

extern "C" uint32_t VlCm_IsMobileActive() { return Btsdk_IsMobileActive(); }

extern "C" VlSmsRecord* VlCm_CreateMobileSMSInfo() {
    TraceScope scope("VlCm_CreateMobileSMSInfo");
    return mobile::new_text_message();
}

extern "C" void VlCm_DestroyMobileSMSInfo(VlSmsRecord* record) {
    TraceScope scope("VlCm_DestroyMobileSMSInfo");
    mobile::free_text_message(record);
}
