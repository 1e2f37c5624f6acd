#include "scope_census.h"

#include <algorithm>

namespace vltrace {
namespace {

std::string label(const OpenScope& scope) { return std::to_string(scope.module) + " " + scope.name; }

auto find(ScopeCensus::Stack& stack, uint64_t serial) {
    return std::find_if(stack.begin(), stack.end(),
                        [serial](const OpenScope& scope) { return scope.serial == serial; });
}

}  // namespace

void ScopeCensus::enter(ScopeObject& object, uint32_t module, const std::string& name, uint32_t thread) {
    Stack& own = stacks_[thread];
    drop_abandoned(own, &object);
    object = {kEntered, module, ++last_serial_, 0, epoch_, {}};
    own.push_back({&object, object.serial, module, name});
}

// Two live objects cannot share an address: the older one's function ended without leaving it.
void ScopeCensus::drop_abandoned(Stack& own, const ScopeObject* object) {
    const auto older = std::find_if(own.begin(), own.end(),
                                    [object](const OpenScope& scope) { return scope.object == object; });
    if (older == own.end()) return;
    reports_.push_back(label(*older) + " was abandoned: its function ended without leaving it");
    own.erase(older);
}

bool ScopeCensus::leave(ScopeObject& object, uint32_t thread, OpenScope& scope) {
    const ScopeObject seen = object;
    object.mark = kLeft;
    if (seen.mark == kLeft) {
        reports_.emplace_back("a scope was left twice");
        return false;
    }
    if (seen.mark != kEntered) {
        reports_.emplace_back("a scope was left that was never entered");
        return false;
    }
    if (seen.epoch != epoch_) return false;
    if (leave_own(stacks_[thread], seen.serial, scope) || leave_foreign(seen.serial, scope)) return true;
    reports_.emplace_back("a copy of a scope was left");
    return false;
}

bool ScopeCensus::leave_own(Stack& own, uint64_t serial, OpenScope& scope) {
    const auto entry = find(own, serial);
    if (entry == own.end()) return false;
    if (entry + 1 != own.end()) {
        reports_.push_back(label(*entry) + " was left before " + label(own.back()) + ", entered later");
    }
    scope = *entry;
    own.erase(entry);
    return true;
}

bool ScopeCensus::leave_foreign(uint64_t serial, OpenScope& scope) {
    for (auto& [thread, stack] : stacks_) {
        const auto entry = find(stack, serial);
        if (entry == stack.end()) continue;
        reports_.push_back(label(*entry) + " was left by another thread than entered it");
        scope = *entry;
        stack.erase(entry);
        return true;
    }
    return false;
}

void ScopeCensus::end_thread(uint32_t thread) {
    const auto ended = stacks_.find(thread);
    if (ended == stacks_.end()) return;
    for (const OpenScope& scope : ended->second) {
        reports_.push_back(label(scope) + " was open when its thread ended");
    }
    Stack& rest = stacks_[kEndedThreads];
    rest.insert(rest.end(), ended->second.begin(), ended->second.end());
    stacks_.erase(ended);
}

void ScopeCensus::restart() {
    stacks_.clear();
    reports_.clear();
    ++epoch_;
}

size_t ScopeCensus::open() const {
    size_t count = 0;
    for (const auto& [thread, stack] : stacks_) count += stack.size();
    return count;
}

std::vector<std::string> ScopeCensus::open_scopes() const {
    std::vector<std::string> lines;
    for (const auto& [thread, stack] : stacks_) {
        for (const OpenScope& scope : stack) {
            lines.push_back(label(scope) + (thread == kEndedThreads
                                                ? " in an ended thread"
                                                : " in thread " + std::to_string(thread)));
        }
    }
    return lines;
}

}  // namespace vltrace
