#include "call_recorder.h"

#include <algorithm>

namespace process_test {

class CallRecorder::Locked {
public:
    explicit Locked(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    ~Locked() { ReleaseSRWLockExclusive(&lock_); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

private:
    SRWLOCK& lock_;
};

Lines CallRecorder::take() {
    Locked locked(lock_);
    Lines taken;
    taken.swap(lines_);
    return taken;
}

size_t CallRecorder::count(const std::string& call) const {
    Locked locked(lock_);
    return static_cast<size_t>(std::count(lines_.begin(), lines_.end(), call));
}

bool CallRecorder::record(const std::string& function, const Lines& arguments) {
    std::string line = function + "(";
    for (size_t i = 0; i < arguments.size(); ++i) line += (i == 0 ? "" : ", ") + arguments[i];
    line += ")";
    if (on_call) on_call(line);
    Locked locked(lock_);
    lines_.push_back(line);
    for (auto failure = failures_.begin(); failure != failures_.end(); ++failure) {
        if (failure->function != function || --failure->nth > 0) continue;
        failures_.erase(failure);
        return true;
    }
    return false;
}

void CallRecorder::name(const void* handle, const std::string& text) {
    Locked locked(lock_);
    names_[handle] = text;
}

std::string CallRecorder::name_of(const void* handle) const {
    Locked locked(lock_);
    const auto known = names_.find(handle);
    return known != names_.end() ? known->second : "given";
}

std::vector<const void*> CallRecorder::handles_named(const std::string& text) const {
    Locked locked(lock_);
    std::vector<const void*> handles;
    for (const auto& [handle, known] : names_) {
        if (known == text) handles.push_back(handle);
    }
    return handles;
}

bool CallRecorder::forget(const void* handle) {
    Locked locked(lock_);
    return names_.erase(handle) != 0;
}

void CallRecorder::fail(const std::string& function, int nth) {
    Locked locked(lock_);
    failures_.push_back({function, nth});
}

size_t CallRecorder::drop_failures() {
    Locked locked(lock_);
    const size_t dropped = failures_.size();
    failures_.clear();
    return dropped;
}

}  // namespace process_test
