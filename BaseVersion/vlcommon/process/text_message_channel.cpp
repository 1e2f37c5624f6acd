// Handing a text message to the message editor.
#include "frame/frame.h"
#include "handoff_channel.h"
#include "message_editor.h"
#include "tray_agent.h"
#include "vlcm/handoff.h"

namespace vl::handoff {
namespace {

constexpr size_t kRecordOffset = sizeof(uint32_t);  // behind the state
constexpr uint32_t kSectionSize = kRecordOffset + sizeof(VlSmsRecord);
static_assert(kSectionSize == 14096);

void write_message(void* view, const VlSmsRecord& record) {
    const uint32_t state = kWaiting;
    memcpy(view, &state, sizeof state);
    memcpy(static_cast<unsigned char*>(view) + kRecordOffset, &record, sizeof record);
}

uint32_t send_message(const VlSmsRecord& record) {
    MappedSection made;
    const uint32_t status = create_section(kTextMessage, kSectionSize, made);
    if (status != VLCM_OK) return status;
    write_message(made.view.get(), record);
    SetForegroundWindow(process::tray_window());
    process::start_message_editor(record.device);
    wait_until_taken(made.view.get(), kTextMessage.sleep_rule);
    return VLCM_OK;
}

VlSmsRecord* receive_message() {
    MappedSection opened;
    if (!open_section(kTextMessage, opened)) return nullptr;
    const UntrustedView view(opened.view.get());
    if (view.size() == 0) return nullptr;
    view.mark_taken();
    VlSmsRecord* record = VlCm_CreateMobileSMSInfo();
    if (record != nullptr) view.copy(kRecordOffset, record, sizeof *record);
    return record;
}

}  // namespace
}  // namespace vl::handoff

using namespace vl;

extern "C" uint32_t VlCm_SendSMS(const VlSmsRecord* record) {
    TraceScope scope("VlCm_SendSMS");
    if (record != nullptr) return handoff::send_message(*record);
    trace_line("Error! The pointer is NULL!!!\r\n");
    return VLCM_NULL_OUTPUT;
}

extern "C" VlSmsRecord* VlCm_GetSMSInfo() { return handoff::receive_message(); }
