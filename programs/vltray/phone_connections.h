// Connections to phones that programs asked the agent to use.
#pragma once

#include "event_log.h"
#include "text.h"

#include <stdint.h>

#include <set>
#include <string>

namespace programs {

class PhoneConnections {
public:
    explicit PhoneConnections(const EventLog& log) : log_(log) {}

    void use(uint32_t connection) {
        used_.insert(connection);
        report(connection, "in use");
    }
    void end(uint32_t connection) {
        report(connection, used_.erase(connection) == 1 ? "ended" : "was not in use");
    }

private:
    void report(uint32_t connection, const char* what) const {
        log_.line("phone connection " + hex(connection) + " " + what + ", " + std::to_string(used_.size()) +
                  " in use");
    }

    const EventLog& log_;
    std::set<uint32_t> used_;
};

}  // namespace programs
