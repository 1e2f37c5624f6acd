#include "delivery_queue.h"

#include "delivery.h"
#include "image_facts.h"
#include "inbox.h"
#include "text.h"

#include <utility>

namespace programs {
namespace {

class Locked {
public:
    explicit Locked(SRWLOCK* lock) : lock_(lock) { AcquireSRWLockExclusive(lock_); }
    ~Locked() { ReleaseSRWLockExclusive(lock_); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

private:
    SRWLOCK* lock_;
};

}  // namespace

DeliveryQueue::DeliveryQueue(const EventLog& log)
    : log_(log), thread_(CreateThread(nullptr, 0, run, this, 0, nullptr)) {}

DeliveryQueue::~DeliveryQueue() {
    {
        const Locked locked(&lock_);
        ending_ = true;
    }
    WakeConditionVariable(&changed_);
    WaitForSingleObject(thread_.get(), INFINITE);
}

void DeliveryQueue::add(DeliveryJob job) {
    {
        const Locked locked(&lock_);
        jobs_.push_back(std::move(job));
    }
    WakeConditionVariable(&changed_);
}

bool DeliveryQueue::next(DeliveryJob* job) {
    const Locked locked(&lock_);
    while (jobs_.empty() && !ending_) SleepConditionVariableSRW(&changed_, &lock_, INFINITE, 0);
    if (jobs_.empty()) return false;
    *job = std::move(jobs_.front());
    jobs_.pop_front();
    return true;
}

void DeliveryQueue::carry_out(const DeliveryJob& job) const {
    const std::wstring inbox = inbox_folder(job.device);
    const std::string source = utf8(job.source);
    if (inbox.empty()) {
        log_.line("failed " + source + ": no device " + hex(job.device));
        return;
    }
    const Delivery result = deliver(job.source, inbox);
    if (result.arrived.empty()) {
        log_.line("failed " + source + ": " + result.failure);
        return;
    }
    if (job.with_thumbnail) add_thumbnail(result.arrived);
    log_.line("delivered " + source + " as " + utf8(result.arrived));
}

void DeliveryQueue::add_thumbnail(const std::wstring& arrived) const {
    const auto image = image_facts(arrived);
    if (!image) {
        log_.line("no picture: " + utf8(arrived));
        return;
    }
    log_.line("picture " + utf8(arrived) + ": " + described(*image));
    const std::wstring thumbnail = arrived + L".thumb.jpg";
    if (!make_thumbnail(arrived, thumbnail)) log_.line("no thumbnail: " + utf8(thumbnail));
}

DWORD WINAPI DeliveryQueue::run(void* self) {
    auto* queue = static_cast<DeliveryQueue*>(self);
    DeliveryJob job = {};
    while (queue->next(&job)) queue->carry_out(job);
    return 0;
}

}  // namespace programs
