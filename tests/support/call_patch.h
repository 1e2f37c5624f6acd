// One function that the library imports, observed, answered otherwise or made to fail:
//
//     CallPatch deleted("DeleteFileA", DeleteFileA);
//     deleted.fail_nth(2, FALSE, ERROR_ACCESS_DENIED);
//     ...
//     EXPECT_EQ(deleted.count(), 2u);
//
// Arguments are kept as they were passed: what pointers point at may be gone when they are read. Look at
// it in answer(), which runs inside the call. A name that the library does not import fails the test.
#pragma once

#include "support/import_patch.h"

#include <array>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

namespace support {

// Fails the running test: the patch would never be called. Aborts when no slot is free.
void report_missing_import(const char* function);
[[noreturn]] void report_no_free_slot(const char* function);

template <typename Signature>
class CallPatch;

template <typename R, typename... A>
class CallPatch<R(A...)> {
public:
    using Function = R (*)(A...);

    // function: its name. type: the function itself, which tells the types.
    CallPatch(const char* function, Function type) : CallPatch(function, type, library_under_test()) {}
    CallPatch(const char* function, Function /*type*/, HMODULE module)
        : slot_(take_slot(function)), patch_(module, function, trampoline_of(slot_)) {
        if (patch_.slots() == 0) report_missing_import(function);
    }
    ~CallPatch() { live_[slot_] = nullptr; }
    CallPatch(const CallPatch&) = delete;
    CallPatch& operator=(const CallPatch&) = delete;

    // Runs instead of the function, at each call that does not fail.
    void answer(std::function<R(A...)> replacement) { answer_ = std::move(replacement); }
    // Makes the nth call (from 1, counted since the patch was made) fail, or all from the nth on.
    template <typename Result>
    void fail_nth(size_t nth, Result result, DWORD last_error = 0) {
        fail(
            nth, nth, [result] { return static_cast<R>(result); }, last_error);
    }
    template <typename Result>
    void fail_from(size_t nth, Result result, DWORD last_error = 0) {
        fail(
            nth, SIZE_MAX, [result] { return static_cast<R>(result); }, last_error);
    }

    [[nodiscard]] size_t count() const { return calls().size(); }
    [[nodiscard]] std::vector<std::tuple<A...>> calls() const {
        AcquireSRWLockShared(&lock_);
        std::vector<std::tuple<A...>> copy = calls_;
        ReleaseSRWLockShared(&lock_);
        return copy;
    }
    // The function as it was before the patch.
    R real(A... arguments) const { return patch_.template original<Function>()(arguments...); }

private:
    static constexpr size_t kSlots = 8;  // patches of one signature that may live at the same time

    void fail(size_t first, size_t last, std::function<R()> result, DWORD last_error) {
        first_failure_ = first;
        last_failure_ = last;
        failure_ = std::move(result);
        last_error_ = last_error;
    }
    size_t note(A... arguments) {
        AcquireSRWLockExclusive(&lock_);
        calls_.emplace_back(arguments...);
        const size_t nth = calls_.size();
        ReleaseSRWLockExclusive(&lock_);
        return nth;
    }
    R on_call(A... arguments) {
        const size_t nth = note(arguments...);
        if (failure_ && nth >= first_failure_ && nth <= last_failure_) {
            SetLastError(last_error_);
            return failure_();
        }
        return answer_ ? answer_(arguments...) : real(arguments...);
    }

    template <size_t Slot>
    static R trampoline(A... arguments) {
        return live_[Slot]->on_call(arguments...);
    }
    static Function trampoline_of(size_t slot) {
        return [slot]<size_t... I>(std::index_sequence<I...>) {
            return std::array<Function, kSlots>{&trampoline<I>...}[slot];
        }
        (std::make_index_sequence<kSlots>());
    }
    size_t take_slot(const char* function) {
        for (size_t i = 0; i < kSlots; ++i) {
            if (live_[i] != nullptr) continue;
            live_[i] = this;
            return i;
        }
        report_no_free_slot(function);
    }

    static inline std::array<CallPatch*, kSlots> live_{};

    mutable SRWLOCK lock_ = SRWLOCK_INIT;
    std::vector<std::tuple<A...>> calls_;
    std::function<R(A...)> answer_;
    std::function<R()> failure_;
    size_t first_failure_ = 0, last_failure_ = 0;
    DWORD last_error_ = 0;
    size_t slot_;
    ImportPatch patch_;  // last: from here on calls arrive
};

template <typename R, typename... A>
CallPatch(const char*, R (*)(A...)) -> CallPatch<R(A...)>;
template <typename R, typename... A>
CallPatch(const char*, R (*)(A...), HMODULE) -> CallPatch<R(A...)>;

// The library's waits, which then take no time: their number and lengths.
class SleepPatch {
public:
    explicit SleepPatch(HMODULE module = library_under_test());

    // Runs in place of each wait with its number, from 1: for instance a peer that answers late.
    void on_sleep(std::function<void(size_t nth)> action) { action_ = std::move(action); }
    [[nodiscard]] std::vector<DWORD> lengths() const;
    [[nodiscard]] size_t count() const { return patch_.count(); }
    [[nodiscard]] DWORD total() const;

private:
    std::function<void(size_t)> action_;
    CallPatch<void(DWORD)> patch_;
};

}  // namespace support
