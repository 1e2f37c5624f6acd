#include "handoff_channel.h"

#include "frame/trace.h"
#include "vlcm/handoff.h"

#include <string.h>

namespace vl::handoff {
namespace {

constexpr uint32_t kSendStride = sizeof(VlSendRecord) + 4;
constexpr uint32_t kOutlookStride = sizeof(VlOutlookContactRecord) + 8;

constexpr WakeUp kFileWakeUps[] = {
    {0x1105, 0x0205, 0x4302},  // object push
    {0x1106, 0x0205, 0x4305},  // file transfer
    {0x1118, 0x0205, 0x4207},  // direct printing
};
constexpr WakeUp kImageWakeUps[] = {
    {0x111B, 0x0205, 0x4202},  // imaging responder
};
constexpr WakeUp kPhoneContactWakeUps[] = {
    {kEveryClass, 0x0206, 0x6039},
};
constexpr WakeUp kOutlookContactWakeUps[] = {
    {kEveryClass, 0x0205, 0x4208},
};

}  // namespace

// The names in the lines are part of the traces that support reads, the wrong ones included.
constexpr Channel kFiles = {
    .section = "SHARE_MEM_SENDFILE",
    .record_size = sizeof(VlSendRecord),
    .stride_64bit = kSendStride,
    .sleep_rule = SleepRule::kWaitingBitSet,
    .wake_ups = kFileWakeUps,
    .creation_failed =
        "CreateFileMapping VLCM_SHARE_MEM_SENDFILE failed in func VlCm_SendFilestoBtDevice\r\n",
    .already_exists =
        "CreateFileMapping VLCM_SHARE_MEM_SENDFILE already exist in func VlCm_SendFilestoBtDevice\r\n",
    .map_failed = "MapViewOfFile failed in func VlCm_SendFilestoBtDevice\r\n",
    .open_failed = nullptr,
    .open_map_failed = nullptr,
    .reads_open_error = true,
};

// The sender compares the whole state with 1 and so never sleeps: the state it wrote has bit 28 too.
constexpr Channel kImages = {
    .section = "SHARE_MEM_SENDIMAGE",
    .record_size = sizeof(VlSendRecord),
    .stride_64bit = kSendStride,
    .sleep_rule = SleepRule::kWaitingAlone,
    .wake_ups = kImageWakeUps,
    .creation_failed =
        "CreateFileMapping VLCM_SHARE_MEM_SENDIMAGE failed in func VlCm_SendImagestoBtDevice\r\n",
    .already_exists =
        "CreateFileMapping VLCM_SHARE_MEM_SENDIMAGE already exist in func VlCm_SendImagestoBtDevice\r\n",
    .map_failed = "MapViewOfFile failed in func VlCm_SendImagestoBtDevice\r\n",
    .open_failed = nullptr,
    .open_map_failed = nullptr,
    .reads_open_error = false,
};

constexpr Channel kPhoneContacts = {
    .section = "SHARE_MEM_CONTACTINFO",
    .record_size = sizeof(VlSendRecord),
    .stride_64bit = kSendStride,
    .sleep_rule = SleepRule::kWaitingBitSet,
    .wake_ups = kPhoneContactWakeUps,
    .creation_failed =
        "CreateFileMapping VLCM_SHARE_MEM_SENDFILE failed in func VlCm_SendContactsToMobilePhone\r\n",
    .already_exists =
        "CreateFileMapping VLCM_SHARE_MEM_SENDFILE already exist in func VlCm_SendContactsToMobilePhone\r\n",
    .map_failed = "MapViewOfFile failed in func VlCm_SendContactsToMobilePhone\r\n",
    .open_failed = nullptr,
    .open_map_failed = nullptr,
    .reads_open_error = false,
};

constexpr Channel kOutlookContacts = {
    .section = "SHARE_MEM_SENDCONTACT",
    .record_size = sizeof(VlOutlookContactRecord),
    .stride_64bit = kOutlookStride,
    .sleep_rule = SleepRule::kWaitingBitSet,
    .wake_ups = kOutlookContactWakeUps,
    .creation_failed =
        "CreateFileMapping VLCM_SHARE_MEM_SENDCONTACT failed in func VlCm_SendContactsToOutLook\r\n",
    .already_exists =
        "CreateFileMapping VLCM_SHARE_MEM_SENDCONTACT already exist in func VlCm_SendContactsToOutLook\r\n",
    .map_failed = "MapViewOfFile failed in func VLCM_SHARE_MEM_SENDCONTACT\r\n",
    .open_failed = nullptr,
    .open_map_failed = nullptr,
    .reads_open_error = false,
};

constexpr Channel kTextMessage = {
    .section = "SHARE_MEM_SMSINFO",
    .record_size = sizeof(VlSmsRecord),
    .stride_64bit = sizeof(VlSmsRecord),
    .sleep_rule = SleepRule::kWaitingAlone,
    .wake_ups = {},
    .creation_failed = "Error! Can not create memory file!!!!!!!!\r\n",
    .already_exists = "Error! A same name memory file already exists!!!!!!!!\r\n",
    .map_failed = "Error! Can not map view of the memory file!!!!!!!!\r\n",
    .open_failed = "Error! Can not open memory file!!!!!!!\r\n",
    .open_map_failed = "Error! Can not map view of the memory file!!!!!!!!\r\n",
    .reads_open_error = false,
};

namespace {

constexpr DWORD kReadWrite = FILE_MAP_READ | FILE_MAP_WRITE;

void trace_if(const char* line) {
    if (line != nullptr) trace_line(line);
}

uint32_t refuse(const char* line) {
    trace_if(line);
    return VLCM_RESOURCE_FAILURE;
}

bool map_whole(MappedSection& mapped) {
    mapped.view.reset(MapViewOfFile(mapped.section.get(), kReadWrite, 0, 0, 0));
    return static_cast<bool>(mapped.view);
}

}  // namespace

uint32_t create_section(const Channel& channel, uint64_t size, MappedSection& made) {
    // The header holds 32 bits of size: a section cut to them would be overrun.
    if (size > UINT32_MAX) return refuse(channel.creation_failed);
    made.section.reset(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                          static_cast<DWORD>(size), channel.section));
    if (!made.section) return refuse(channel.creation_failed);
    if (GetLastError() == ERROR_ALREADY_EXISTS) return refuse(channel.already_exists);
    return map_whole(made) ? uint32_t{VLCM_OK} : refuse(channel.map_failed);
}

bool open_section(const Channel& channel, MappedSection& opened) {
    opened.section.reset(OpenFileMappingA(kReadWrite, FALSE, channel.section));
    if (!opened.section) {
        if (channel.reads_open_error) GetLastError();
        trace_if(channel.open_failed);
        return false;
    }
    if (map_whole(opened)) return true;
    trace_if(channel.open_map_failed);
    return false;
}

void wait_until_taken(const void* view, SleepRule rule) {
    constexpr int kTries = 20;
    constexpr DWORD kPauseMs = 100;
    const auto state = static_cast<const volatile uint32_t*>(view);
    for (int tries = 0; tries < kTries; ++tries) {
        const uint32_t now = *state;
        const bool asleep = rule == SleepRule::kWaitingBitSet ? (now & kWaiting) != 0 : now == kWaiting;
        if (asleep) {
            Sleep(kPauseMs);
        } else if (now == kTaken) {
            return;
        }
    }
}

UntrustedView::UntrustedView(void* view) : base_(static_cast<unsigned char*>(view)), size_(0) {
    MEMORY_BASIC_INFORMATION region{};
    if (VirtualQuery(view, &region, sizeof region) == 0) return;
    const DWORD access = region.Protect & ~DWORD{PAGE_NOCACHE | PAGE_WRITECOMBINE};
    if (region.State == MEM_COMMIT && access == PAGE_READWRITE) size_ = region.RegionSize;
}

uint32_t UntrustedView::word(size_t offset) const {
    return *reinterpret_cast<const volatile uint32_t*>(base_ + offset);
}

void UntrustedView::mark_taken() const { *reinterpret_cast<volatile uint32_t*>(base_) = kTaken; }

void UntrustedView::copy(size_t offset, void* out, size_t bytes) const {
    const size_t rest = offset < size_ ? size_ - offset : 0;
    const size_t present = rest < bytes ? rest : bytes;
    memcpy(out, base_ + offset, present);
    memset(static_cast<unsigned char*>(out) + present, 0, bytes - present);
}

}  // namespace vl::handoff
