// The trace facility of this process: the census of scopes, the in-process log and the readable trace,
// behind one lock.
#pragma once

#include "scope_census.h"
#include "trace_writer.h"

#include <atomic>

namespace vltrace {

struct LogEntry {
    std::string text, format;
};

class Facility {
public:
    // True when anybody listens. Nothing else is done for a scope while it is false.
    [[nodiscard]] bool listening() const { return listening_.load(std::memory_order_relaxed); }

    void attach();
    void detach();
    void end_thread();

    void enter(ScopeObject& object, uint32_t module, const char* name);
    void leave(ScopeObject& object);
    void write(uint32_t module, const char* format, const std::string& text);

    void enable_log(bool on);
    void clear_log();

    // Reads under the lock: size, or one text ("" past the end).
    size_t log_size();
    LogEntry log_entry(size_t index);
    std::vector<std::string> open_scopes();
    std::vector<std::string> reports();

private:
    size_t shown_depth(uint32_t thread);
    void log(char kind, uint32_t module, const std::string& text, const char* format);
    void tell_new_reports(size_t already_told);

    SRWLOCK lock_ = SRWLOCK_INIT;
    std::atomic<bool> listening_{false};
    bool logging_ = false;
    std::vector<LogEntry> log_;
    ScopeCensus census_;
    TraceWriter writer_;
};

extern Facility g_facility;

}  // namespace vltrace
