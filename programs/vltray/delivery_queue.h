// Deliveries in the order in which they were asked for, on a thread of their own: the agent takes the
// next list at once, whatever time a file needs. (A sender waits two seconds, then its list is gone.)
#pragma once

#include "event_log.h"
#include "frame/unique.h"

#include <windows.h>

#include <deque>
#include <string>

namespace programs {

struct DeliveryJob {
    std::wstring source;
    unsigned device;
    bool with_thumbnail = false;
};

class DeliveryQueue {
public:
    explicit DeliveryQueue(const EventLog& log);
    ~DeliveryQueue();  // after the last delivery
    DeliveryQueue(const DeliveryQueue&) = delete;
    DeliveryQueue& operator=(const DeliveryQueue&) = delete;

    void add(DeliveryJob job);

private:
    static DWORD WINAPI run(void* self);
    // Waits for a job; false when there is none left and the queue ends.
    bool next(DeliveryJob* job);
    void carry_out(const DeliveryJob& job) const;
    // What a receiver shows of a picture before it takes the whole; made beside the delivered one.
    void add_thumbnail(const std::wstring& arrived) const;

    const EventLog& log_;
    SRWLOCK lock_ = SRWLOCK_INIT;
    CONDITION_VARIABLE changed_ = CONDITION_VARIABLE_INIT;
    std::deque<DeliveryJob> jobs_;
    bool ending_ = false;
    vl::UniqueHandle thread_;
};

}  // namespace programs
