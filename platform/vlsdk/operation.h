// The one road that every operation of the stack takes: log, faults and hooks, then its rule.
#pragma once

#include "call_log.h"
#include "call_text.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace vlsim {

template <size_t N>
struct OperationName {
    consteval OperationName(const char (&name)[N]) { std::copy_n(name, N, text); }  // NOLINT: from a literal
    char text[N];
};

// One exported operation: and what tests told it to do.
struct Operation {
    struct Fault {
        uint32_t remaining;  // calls until it strikes; 0: always
        uint32_t code;
    };

    explicit Operation(const char* exported_name);

    const char* name;
    Operation* next;  // all operations form a list
    std::atomic<void*> hook{nullptr};
    std::vector<Fault> faults;  // guarded by the lock in operation.cpp
};

template <OperationName name>
inline Operation operation{name.text};

// Set while calls are logged or any operation has a fault or a hook; otherwise a call goes straight
// to its rule, at the cost of this one look.
extern std::atomic<bool> watched;

// The code of the fault that strikes this call, if one does.
[[nodiscard]] std::optional<uint32_t> striking_fault(Operation& called);

// The operation's hook; null without one, and while this thread is inside that hook, so that a hook
// may call the operation it stands for.
[[nodiscard]] void* active_hook(const Operation& called);

// Marks that this thread runs an operation's hook.
class InsideHook {
public:
    explicit InsideHook(const Operation& hooked);
    ~InsideHook();
    InsideHook(const InsideHook&) = delete;
    InsideHook& operator=(const InsideHook&) = delete;

private:
    friend void* active_hook(const Operation& called);
    const Operation* hooked_;
    InsideHook* outer_;
};

// A fault's code as the operation's result; a pointer result takes it sign-extended, so that
// 0xFFFFFFFF is INVALID_HANDLE_VALUE.
template <typename Result>
Result result_of_fault(uint32_t code) {
    if constexpr (std::is_pointer_v<Result>) {
        return reinterpret_cast<Result>(static_cast<intptr_t>(static_cast<int32_t>(code)));
    } else {
        return static_cast<Result>(code);
    }
}

template <typename Result, typename... Parameters>
Result answer(Operation& called, Result (*rule)(Parameters...), Parameters... arguments) {
    if (const auto code = striking_fault(called)) return result_of_fault<Result>(*code);
    void* const hook = active_hook(called);
    if (!hook) return rule(arguments...);
    const InsideHook inside(called);
    return reinterpret_cast<Result (*)(Parameters...)>(hook)(arguments...);
}

// Runs one call of an operation. The arguments are put into words before the call: they are what the
// caller gave, not what came back.
template <OperationName name, typename Result, typename... Parameters>
Result call(Result (*rule)(Parameters...), std::type_identity_t<Parameters>... arguments) {
    if (!watched.load(std::memory_order_relaxed)) return rule(arguments...);
    Operation& called = operation<name>;
    if (!logging()) return answer(called, rule, arguments...);
    std::string text = call_text(called.name, arguments...);
    if constexpr (std::is_void_v<Result>) {
        answer(called, rule, arguments...);
        log_call(called, std::move(text));
    } else {
        const Result result = answer(called, rule, arguments...);
        text += " = ";
        append_value(text, result);
        log_call(called, std::move(text));
        return result;
    }
}

}  // namespace vlsim
