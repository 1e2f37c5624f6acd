#include "facility.h"

#include "../locks.h"

namespace vltrace {
namespace {

int64_t ticks() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

std::string microseconds_since(int64_t start) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return std::to_string((ticks() - start) * 1000000 / frequency.QuadPart) + " us";
}

}  // namespace

Facility g_facility;

void Facility::attach() {
    writer_.open();
    listening_ = writer_.active();
}

void Facility::detach() {
    // The process may have ended a thread that held the lock.
    if (!TryAcquireSRWLockExclusive(&lock_)) return;
    for (const std::string& scope : census_.open_scopes()) {
        writer_.line(0, 0, '!', scope + " was never left");
    }
    listening_ = false;
    writer_.close();
    ReleaseSRWLockExclusive(&lock_);
}

void Facility::end_thread() {
    if (!listening()) return;
    const locks::Exclusive held(lock_);
    const size_t told = census_.reports().size();
    census_.end_thread(GetCurrentThreadId());
    tell_new_reports(told);
}

void Facility::enter(ScopeObject& object, uint32_t module, const char* name) {
    const std::string copy = name ? name : "(null)";  // outside the lock: the pointer may be bad
    const locks::Exclusive held(lock_);
    const size_t told = census_.reports().size();
    const uint32_t thread = GetCurrentThreadId();
    census_.enter(object, module, copy, thread);
    tell_new_reports(told);
    log('>', module, copy, "");
    if (writer_.shows(module)) writer_.line(module, shown_depth(thread) - 1, '>', copy);
    object.entered = ticks();
}

void Facility::leave(ScopeObject& object) {
    const int64_t entered = object.entered;
    const locks::Exclusive held(lock_);
    const size_t told = census_.reports().size();
    const uint32_t thread = GetCurrentThreadId();
    OpenScope scope{};
    const bool known = census_.leave(object, thread, scope);
    tell_new_reports(told);
    if (!known) return;
    log('<', scope.module, scope.name, "");
    if (writer_.shows(scope.module)) {
        writer_.line(scope.module, shown_depth(thread), '<', scope.name + ' ' + microseconds_since(entered));
    }
}

void Facility::write(uint32_t module, const char* format, const std::string& text) {
    const locks::Exclusive held(lock_);
    log('=', module, text, format);
    if (writer_.shows(module)) writer_.line(module, shown_depth(GetCurrentThreadId()), '=', text);
}

void Facility::enable_log(bool on) {
    const locks::Exclusive held(lock_);
    logging_ = on;
    listening_ = on || writer_.active();
    log_.clear();
    census_.restart();
}

void Facility::clear_log() {
    const locks::Exclusive held(lock_);
    log_.clear();
}

size_t Facility::log_size() {
    const locks::Exclusive held(lock_);
    return log_.size();
}

LogEntry Facility::log_entry(size_t index) {
    const locks::Exclusive held(lock_);
    return index < log_.size() ? log_[index] : LogEntry{};
}

std::vector<std::string> Facility::open_scopes() {
    const locks::Exclusive held(lock_);
    return census_.open_scopes();
}

std::vector<std::string> Facility::reports() {
    const locks::Exclusive held(lock_);
    return census_.reports();
}

// The readable trace is indented by the scopes that it shows.
size_t Facility::shown_depth(uint32_t thread) {
    size_t depth = 0;
    for (const OpenScope& scope : census_.stack(thread)) depth += writer_.shows(scope.module);
    return depth;
}

void Facility::log(char kind, uint32_t module, const std::string& text, const char* format) {
    if (logging_) log_.push_back({kind + std::to_string(module) + ' ' + text, format});
}

void Facility::tell_new_reports(size_t already_told) {
    for (size_t i = already_told; i < census_.reports().size(); ++i) {
        writer_.line(0, shown_depth(GetCurrentThreadId()), '!', census_.reports()[i]);
    }
}

}  // namespace vltrace
