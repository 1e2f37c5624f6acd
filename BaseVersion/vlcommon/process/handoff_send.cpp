// Handing a list over: files, images, contacts.
#include "frame/frame.h"
#include "frame/guard.h"
#include "frame/stack_state.h"
#include "handoff_channel.h"
#include "text/path_name.h"
#include "tray_agent.h"
#include "vlcm/companions.h"
#include "vlcm/handoff.h"

namespace vl::handoff {
namespace {

// The program that hands over one file at a time.
constexpr char kSendTool[] = "Veltrin Quill.exe";

uint32_t service_class_of(const VlSendRecord& record) { return record.serviceClass; }
uint32_t service_class_of(const VlOutlookContactRecord& /*record*/) { return 0; }

uint32_t refusal(const void* list) {
    if (list == nullptr) return VLCM_NULL_OUTPUT;
    return is_bluetooth_ready() ? VLCM_OK : VLCM_STACK_NOT_READY;
}

bool called_by_send_tool() {
    PathBuffer path;
    GetModuleFileNameA(nullptr, path.data(), PathBuffer::size());
    path.data()[PathBuffer::size() - 1] = 0;  // a cut path comes back unterminated
    return _stricmp(text::file_name(path.text()), kSendTool) == 0;
}

// What the send tool hands over: where the file goes and which it is.
VlSendRecord single_file(const VlSendRecord& first) {
    VlSendRecord record{};
    record.serviceClass = first.serviceClass;
    copy_bounded(record.path, sizeof record.path, first.path);
    return record;
}

template <typename Record>
uint64_t count_records(const Record* list) {
    uint64_t count = 0;
    for (; list != nullptr; list = list->next) ++count;
    return count;
}

template <typename Record>
uint64_t section_size(uint64_t count) {
    return count * sizeof(Record) + sizeof(ListHeader);
}

// Records that lie one behind the other in memory, from `first` on.
template <typename Record>
size_t adjacent_records(const Record* first) {
    size_t records = 1;
    for (; first->next == first + 1; ++first) ++records;
    return records;
}

// Packed one behind the other at their own size, whatever stride the receiver takes. The records of an
// array are copied at once: one large copy is faster than many small ones.
template <typename Record>
void write_records(unsigned char* out, const Record* list) {
    while (list != nullptr) {
        const size_t run = adjacent_records(list);
        memcpy(out, list, run * sizeof(Record));
        for (size_t i = 0; i < run; ++i, out += sizeof(Record)) {
            memset(out + offsetof(Record, next), 0, sizeof(Record*));
        }
        list = list[run - 1].next;
    }
}

template <typename Record>
void write_list(void* view, const Record* list, uint32_t count) {
    const ListHeader header{kFrom64Bit | kWaiting, static_cast<uint32_t>(section_size<Record>(count)), count};
    memcpy(view, &header, sizeof header);
    write_records(static_cast<unsigned char*>(view) + sizeof header, list);
}

void wake_receiver(const Channel& channel, uint32_t service_class, uintptr_t parameter) {
    for (const WakeUp& row : channel.wake_ups) {
        if (row.service_class != service_class && row.service_class != kEveryClass) continue;
        VlCm_PostMsg2Vltray(row.low, row.high, static_cast<LPARAM>(parameter));
        return;
    }
}

template <typename Record>
uint32_t hand_over(const Channel& channel, const Record* list, uintptr_t parameter) {
    const uint64_t count = count_records(list);
    MappedSection made;
    const uint32_t status = create_section(channel, section_size<Record>(count), made);
    if (status != VLCM_OK) return status;
    write_list(made.view.get(), list, static_cast<uint32_t>(count));
    wake_receiver(channel, service_class_of(*list), parameter);
    wait_until_taken(made.view.get(), channel.sleep_rule);
    return VLCM_OK;
}

uint32_t send_files(const VlSendRecord* list, uintptr_t target) {
    if (const uint32_t refused = refusal(list)) return refused;
    VlSendRecord single;
    if (called_by_send_tool()) {
        single = single_file(*list);
        list = &single;
    }
    process::bring_tray_to_front();
    return hand_over(kFiles, list, target);
}

template <typename Record>
uint32_t send_list(const Channel& channel, const Record* list, uintptr_t parameter) {
    if (const uint32_t refused = refusal(list)) return refused;
    SetForegroundWindow(process::tray_window());  // not tested: only files look first
    return hand_over(channel, list, parameter);
}

struct FilesRequest {
    const VlSendRecord* list;
    uintptr_t target;
};

uint32_t guarded_files(void* context) {
    const auto request = static_cast<const FilesRequest*>(context);
    return send_files(request->list, request->target);
}

uint32_t guarded_outlook_contacts(void* context) {
    return send_list(kOutlookContacts, static_cast<const VlOutlookContactRecord*>(context), 0);
}

}  // namespace
}  // namespace vl::handoff

using namespace vl;

// An exception leaves section and view of the two guarded senders open.
extern "C" uint32_t VlCm_SendFilestoBtDevice(const VlSendRecord* list, uintptr_t target,
                                             uintptr_t /*unused1*/, uintptr_t /*unused2*/) {
    handoff::FilesRequest request{list, target};
    return run_guarded(handoff::guarded_files, &request, "VlCm_SendFilestoBtDevice",
                       "VlCm_SendFilestoBtDevice catch exception\r\n");
}

extern "C" uint32_t VlCm_SendImagestoBtDevice(const VlSendRecord* list, uint32_t target) {
    TraceScope scope("VlCm_SendImagestoBtDevice", Module::kImage);
    return handoff::send_list(handoff::kImages, list, target);
}

extern "C" uint32_t VlCm_SendContactsToMobilePhone(const VlSendRecord* list, uint32_t target) {
    return handoff::send_list(handoff::kPhoneContacts, list, target);
}

extern "C" uint32_t VlCm_SendContactsToOutLook(const VlOutlookContactRecord* list) {
    return run_guarded(handoff::guarded_outlook_contacts, const_cast<VlOutlookContactRecord*>(list),
                       "VlCm_SendContactsToOutLook", "VlCm_SendContactsToOutLook catch exception\r\n");
}
