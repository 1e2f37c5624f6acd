#include "steps.h"

#include "VlSim.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

constexpr char kSection[] = "SHARE_MEM_SENDFILE";
constexpr char kRelay[] = "Btsdk_PostMessageToCtrlCenter";
constexpr uint32_t kTaken = 2;

struct SectionHeader {
    uint32_t state, total_size, count;
};

uint32_t state_of(const vl::UniqueView& view) {
    return static_cast<const volatile SectionHeader*>(view.get())->state;
}

}  // namespace

void Steps::tell(const std::string& text) {
    AcquireSRWLockExclusive(&lock_);
    printf("  [%5llu ms] %s\n", GetTickCount64() - start_, text.c_str());
    fflush(stdout);
    ReleaseSRWLockExclusive(&lock_);
}

HandoffWatch* HandoffWatch::current_;

HandoffWatch::HandoffWatch(Steps* steps)
    : steps_(steps), returned_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {
    current_ = this;
    VlSim_Hook(kRelay, reinterpret_cast<void*>(on_wake_up));
}

HandoffWatch::~HandoffWatch() {
    (void)taken();
    VlSim_Hook(kRelay, nullptr);
    current_ = nullptr;
}

bool HandoffWatch::taken() {
    SetEvent(returned_.get());
    if (follower_) WaitForSingleObject(follower_.get(), INFINITE);
    return taken_;
}

void HandoffWatch::look_into_section() {
    const vl::UniqueHandle section(OpenFileMappingA(FILE_MAP_READ, FALSE, kSection));
    view_.reset(section ? MapViewOfFile(section.get(), FILE_MAP_READ, 0, 0, 0) : nullptr);
    if (!view_) {
        steps_->tell("no section");
        return;
    }
    const auto* header = static_cast<const volatile SectionHeader*>(view_.get());
    steps_->tell(std::string("section ") + kSection + " made: " + std::to_string(header->total_size) +
                 " bytes, " + std::to_string(header->count) + " record, state " + hex(header->state));
    follower_.reset(CreateThread(nullptr, 0, follow, this, 0, nullptr));
}

// Runs on the sender's thread, between filling the section and waiting: nothing can be missed. A hook
// that calls its own operation reaches the stack.
uint32_t HandoffWatch::on_wake_up(uint32_t message, uint32_t parameter) {
    current_->look_into_section();
    current_->steps_->tell("relay asked: message " + hex(message) + ", device " + hex(parameter));
    const uint32_t result = Btsdk_PostMessageToCtrlCenter(message, parameter);
    if (result != 0) current_->steps_->tell("relay failed: " + std::to_string(result));
    return result;
}

DWORD WINAPI HandoffWatch::follow(void* self) {
    constexpr DWORD kLookAgain_ms = 1;  // a state word announces itself to nobody
    auto* watch = static_cast<HandoffWatch*>(self);
    bool waiting = true;
    while (waiting && state_of(watch->view_) != kTaken) {
        waiting = WaitForSingleObject(watch->returned_.get(), kLookAgain_ms) == WAIT_TIMEOUT;
    }
    watch->taken_ = state_of(watch->view_) == kTaken;
    watch->steps_->tell(watch->taken_ ? "taken: state 2" : "not taken: state " + hex(state_of(watch->view_)));
    return 0;
}

}  // namespace programs
