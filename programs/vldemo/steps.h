// Tells a hand-off step by step, as it happens.
#pragma once

#include "frame/unique.h"

#include <stdint.h>
#include <windows.h>

#include <string>

namespace programs {

// Prints lines with the time since the object was made; usable from any thread.
class Steps {
public:
    void tell(const std::string& text);

private:
    ULONGLONG start_ = GetTickCount64();
    SRWLOCK lock_ = SRWLOCK_INIT;
};

// Watches one hand-off of files by this process: looks into the section when the sender asks the stack
// to wake the agent, and follows its state. One at a time. The section lives until the watch ends.
class HandoffWatch {
public:
    explicit HandoffWatch(Steps* steps);
    ~HandoffWatch();
    HandoffWatch(const HandoffWatch&) = delete;
    HandoffWatch& operator=(const HandoffWatch&) = delete;

    // To be called when the sender has returned. Whether the list was taken.
    [[nodiscard]] bool taken();

private:
    static uint32_t on_wake_up(uint32_t message, uint32_t parameter);
    static DWORD WINAPI follow(void* self);
    void look_into_section();

    static HandoffWatch* current_;
    Steps* steps_;
    vl::UniqueView view_;
    vl::UniqueHandle returned_;  // event
    vl::UniqueHandle follower_;  // thread
    bool taken_ = false;
};

}  // namespace programs
