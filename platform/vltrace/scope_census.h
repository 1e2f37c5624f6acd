// Which scopes are open in which thread, and what was wrong with those that were left.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <map>
#include <string>
#include <vector>

namespace vltrace {

// What the facility keeps in the caller's 64 bytes.
struct ScopeObject {
    uint32_t mark;    // kQuiet, kEntered or kLeft; anything else was never entered
    uint32_t module;  // as passed
    uint64_t serial;  // names the entry of the census: an address may be used again
    int64_t entered;  // performance counter
    uint32_t epoch;   // census that it belongs to
    uint8_t rest[36];
};
static_assert(sizeof(ScopeObject) == 64);

constexpr uint32_t kQuiet = 0x51756965, kEntered = 0x456E7472, kLeft = 0x4C656674;

struct OpenScope {
    const ScopeObject* object;
    uint64_t serial;
    uint32_t module;
    std::string name;  // the caller's literal may be unloaded before the scope is reported
};

class ScopeCensus {
public:
    using Stack = std::vector<OpenScope>;

    // Notes a scope as the thread's innermost and marks the object.
    void enter(ScopeObject& object, uint32_t module, const std::string& name, uint32_t thread);
    // Forgets a scope and marks the object. Answers false when it belongs to no open scope of this
    // census; otherwise `scope` is what was forgotten.
    bool leave(ScopeObject& object, uint32_t thread, OpenScope& scope);
    // The thread's open scopes can be left by nobody any more.
    void end_thread(uint32_t thread);
    // Counts from zero; objects of before are not counted when they are left.
    void restart();

    [[nodiscard]] size_t open() const;
    [[nodiscard]] std::vector<std::string> open_scopes() const;
    [[nodiscard]] const Stack& stack(uint32_t thread) { return stacks_[thread]; }
    [[nodiscard]] const std::vector<std::string>& reports() const { return reports_; }

private:
    bool leave_own(Stack& own, uint64_t serial, OpenScope& scope);
    bool leave_foreign(uint64_t serial, OpenScope& scope);
    void drop_abandoned(Stack& own, const ScopeObject* object);

    static constexpr uint32_t kEndedThreads = 0;  // no thread has this number
    std::map<uint32_t, Stack> stacks_;
    std::vector<std::string> reports_;
    uint64_t last_serial_ = 0;
    uint32_t epoch_ = 1;
};

}  // namespace vltrace
