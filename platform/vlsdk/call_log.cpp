#include "call_log.h"

#include "../locks.h"
#include "faults.h"
#include "operation.h"

#include <cstring>

namespace vlsim {
namespace {

struct Entry {
    const Operation* called;
    std::string text;
};

SRWLOCK lock = SRWLOCK_INIT;
std::atomic<bool> logging_on{false};
std::vector<Entry> entries;

}  // namespace

bool logging() { return logging_on.load(std::memory_order_relaxed); }

void set_logging(bool on) {
    logging_on.store(on);
    update_watched();
}

void log_call(const Operation& called, std::string text) {
    const locks::Exclusive held(lock);
    entries.push_back({&called, std::move(text)});
}

void clear_log() {
    const locks::Exclusive held(lock);
    entries.clear();
}

uint32_t call_count(const char* name) {
    const locks::Shared held(lock);
    return static_cast<uint32_t>(std::count_if(entries.begin(), entries.end(), [name](const Entry& entry) {
        return !name || std::strcmp(entry.called->name, name) == 0;
    }));
}

std::optional<std::string> logged_call(uint32_t index) {
    const locks::Shared held(lock);
    if (index >= entries.size()) return std::nullopt;
    return entries[index].text;
}

}  // namespace vlsim
