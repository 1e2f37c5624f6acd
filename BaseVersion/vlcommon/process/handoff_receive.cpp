// Taking a list that was handed over. Sections come from any program: nothing in them is trusted.
#include "handoff_channel.h"
#include "vlcm/handoff.h"
#include "vlcm/settings.h"

#include <stddef.h>

namespace vl::handoff {
namespace {

template <typename Record>
void free_records(Record* first) {
    while (first != nullptr) {
        UniqueSdkMemory record(first);
        first = first->next;
    }
}

// At most `count` records, fewer when the next one would start behind the view.
template <typename Record>
Record* copy_records(const UntrustedView& view, uint32_t count, size_t stride) {
    Record* first = nullptr;
    Record** link = &first;
    size_t offset = sizeof(ListHeader);
    for (uint32_t made = 0; made < count && offset < view.size(); ++made, offset += stride) {
        auto record = static_cast<Record*>(Btsdk_MallocMemory(sizeof(Record)));
        if (record == nullptr) {
            free_records(first);
            return nullptr;
        }
        view.copy(offset, record, sizeof *record);
        record->next = nullptr;  // the copied link field is not a pointer of this process
        *link = record;
        link = &record->next;
    }
    return first;
}

template <typename Record>
Record* take_list(const Channel& channel, void* mapped) {
    const UntrustedView view(mapped);
    if (view.size() == 0) return nullptr;
    const uint32_t state = view.word(offsetof(ListHeader, state));
    const bool wide = (state & kFrom64Bit) != 0 && VlCm_IsX64Platform();
    view.mark_taken();
    const uint32_t total_size = view.word(offsetof(ListHeader, total_size));
    const uint32_t count = view.word(offsetof(ListHeader, count));
    if (total_size == 0 || count == 0) return nullptr;
    return copy_records<Record>(view, count, wide ? channel.stride_64bit : channel.record_size);
}

template <typename Record>
Record* receive_list(const Channel& channel) {
    MappedSection opened;
    if (!open_section(channel, opened)) return nullptr;
    return take_list<Record>(channel, opened.view.get());
}

}  // namespace
}  // namespace vl::handoff

using namespace vl::handoff;

extern "C" VlSendRecord* VlCm_GetFilePathInfo() { return receive_list<VlSendRecord>(kFiles); }

extern "C" VlSendRecord* VlCm_GetImagePathInfo() { return receive_list<VlSendRecord>(kImages); }

extern "C" VlSendRecord* VlCm_GetContactInfo() { return receive_list<VlSendRecord>(kPhoneContacts); }

extern "C" VlOutlookContactRecord* VlCm_GetOutlookContactInfo() {
    return receive_list<VlOutlookContactRecord>(kOutlookContacts);
}
