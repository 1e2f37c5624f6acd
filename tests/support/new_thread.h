// Threads that a test starts.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>

namespace support {

// Runs `body` on a thread of its own, which has no COM apartment yet.
inline void on_new_thread(std::function<void()> body) {
    HANDLE thread = CreateThread(
        nullptr, 0,
        [](void* run) -> DWORD {
            (*static_cast<std::function<void()>*>(run))();
            return 0;
        },
        &body, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

}  // namespace support
