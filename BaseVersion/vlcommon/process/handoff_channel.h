// What sender and receiver of a hand-off share: the channels, their sections and the waiting rule.
#pragma once

#include "frame/unique.h"

#include <stddef.h>
#include <stdint.h>

#include <span>

namespace vl::handoff {

// State word: kWaiting, in lists together with kFrom64Bit, until a receiver sets kTaken.
constexpr uint32_t kWaiting = 1;
constexpr uint32_t kTaken = 2;
constexpr uint32_t kFrom64Bit = 1U << 28;  // written by the 64-bit library

constexpr uint32_t kEveryClass = 0xFFFFFFFF;  // in a wake-up: whatever the records hold

struct ListHeader {
    uint32_t state;
    uint32_t total_size;  // bytes of the section
    uint32_t count;       // records that follow
};
static_assert(sizeof(ListHeader) == 12);

// When a sender sleeps before it looks at the state again.
enum class SleepRule {
    kWaitingBitSet,  // sleeps while nobody has taken the list
    kWaitingAlone,   // sleeps only while the state is kWaiting and nothing else
};

// Message to the tray agent for lists whose first record has a service class.
struct WakeUp {
    uint32_t service_class;
    uint16_t low;
    uint16_t high;
};

struct Channel {
    const char* section;
    uint32_t record_size;
    uint32_t stride_64bit;  // from one record to the next when the 64-bit library wrote them
    SleepRule sleep_rule;
    std::span<const WakeUp> wake_ups;  // none: the sender starts a program instead
    // Sender's lines; null: it says nothing.
    const char* creation_failed;
    const char* already_exists;
    const char* map_failed;
    // Receiver's lines; null: it says nothing.
    const char* open_failed;
    const char* open_map_failed;
    bool reads_open_error;  // the receiver reads the last error of a failed opening and drops it
};

extern const Channel kFiles;
extern const Channel kImages;
extern const Channel kPhoneContacts;
extern const Channel kOutlookContacts;
extern const Channel kTextMessage;

// A section and its view; the view goes first.
struct MappedSection {
    UniqueHandle section;
    UniqueView view;
};

// Sender: makes the channel's section of `size` bytes and maps it. Gives VLCM_OK, or traces the
// channel's line, if it has one, and gives VLCM_RESOURCE_FAILURE.
uint32_t create_section(const Channel& channel, uint64_t size, MappedSection& made);

// Receiver: opens and maps the channel's section; false when there is none, with the channel's line.
bool open_section(const Channel& channel, MappedSection& opened);

// Sender: looks at the state up to 20 times until a receiver has taken the section.
void wait_until_taken(const void* view, SleepRule rule);

// A mapped section of unknown origin: what may be read of it is what is committed and writable.
class UntrustedView {
public:
    explicit UntrustedView(void* view);

    [[nodiscard]] size_t size() const { return size_; }  // 0: not even a header

    // One look at a header word; another process may change it at any time.
    [[nodiscard]] uint32_t word(size_t offset) const;
    void mark_taken() const;
    // Copies `bytes` from `offset`; those behind the end are zero.
    void copy(size_t offset, void* out, size_t bytes) const;

private:
    unsigned char* base_;
    size_t size_;
};

}  // namespace vl::handoff
