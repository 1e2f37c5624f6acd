// Work on a thread of its own, one piece at a time: asking the tray agent may take seconds, when it has
// to be started or does not take a list.
#pragma once

#include "frame/unique.h"

#include <windows.h>

#include <functional>
#include <string>

namespace veltrin {

// What came of it, for people.
struct Outcome {
    std::wstring text;
    bool failed = false;
};

class BackgroundJob {
public:
    using Work = std::function<Outcome()>;

    BackgroundJob() = default;
    ~BackgroundJob() { wait(); }
    BackgroundJob(const BackgroundJob&) = delete;
    BackgroundJob& operator=(const BackgroundJob&) = delete;

    [[nodiscard]] bool busy() const { return static_cast<bool>(thread_); }
    // Posts `message` to `window` when the work is done; take_outcome() belongs to that message.
    // False: no thread, nothing happens. Never call it while busy().
    [[nodiscard]] bool start(Work work, HWND window, UINT message);
    [[nodiscard]] Outcome take_outcome();

private:
    static DWORD WINAPI run(void* self);
    void wait();

    Work work_;
    Outcome outcome_;
    HWND window_ = nullptr;
    UINT message_ = 0;
    vl::UniqueHandle thread_;
};

}  // namespace veltrin
