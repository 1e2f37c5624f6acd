// What the tray agent does with the messages that the stack relays to it.
#pragma once

#include "delivery_queue.h"
#include "event_log.h"
#include "phone_connections.h"

#include <stdint.h>

namespace programs {

class Requests {
public:
    explicit Requests(const EventLog& log) : log_(log), deliveries_(log), phones_(log) {}

    // Requests to send take the waiting list at once, those about phones are noted; any other message is
    // only logged.
    void handle(uint32_t message, uint32_t parameter);

private:
    void take_files(const struct FileRequest& request, uint32_t device);
    void take_outlook_contacts() const;
    void show_file_property() const;

    const EventLog& log_;
    DeliveryQueue deliveries_;
    PhoneConnections phones_;
};

}  // namespace programs
