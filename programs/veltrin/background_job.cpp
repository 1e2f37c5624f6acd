#include "background_job.h"

#include "text.h"

#include <exception>
#include <utility>

namespace veltrin {

bool BackgroundJob::start(Work work, HWND window, UINT message) {
    work_ = std::move(work);
    window_ = window;
    message_ = message;
    thread_.reset(CreateThread(nullptr, 0, run, this, 0, nullptr));
    return busy();
}

Outcome BackgroundJob::take_outcome() {
    wait();
    return std::exchange(outcome_, {});
}

void BackgroundJob::wait() {
    if (busy()) WaitForSingleObject(thread_.get(), INFINITE);
    thread_.reset();
}

DWORD WINAPI BackgroundJob::run(void* self) {
    auto* job = static_cast<BackgroundJob*>(self);
    try {
        job->outcome_ = job->work_();
    } catch (const std::exception& error) {
        job->outcome_ = {programs::wide(error.what()), true};
    }
    PostMessageW(job->window_, job->message_, 0, 0);
    return 0;
}

}  // namespace veltrin
