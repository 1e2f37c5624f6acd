// How a sender waits whose states are plain numbers: it sleeps while the state is 1 and ends at 2.
#pragma once

#include "handoff_test.h"
#include "page_watch.h"

#include <functional>

struct TakenState {
    const char* label;
    uint32_t at_start;     // what the receiver has written when the wait begins
    uint32_t change_look;  // the look before which it writes another one; 0: none
    uint32_t change_to;
    size_t looks;
    size_t pauses;
};

inline constexpr TakenState kTakenStates[] = {
    {"nobody takes it", 1, 0, 0, 20, 20},         {"taken before the first look", 2, 0, 0, 1, 0},
    {"taken at the third look", 1, 3, 2, 3, 2},   {"other values pass at once", 1, 6, 0, 20, 5},
    {"other odd values pass", 3, 0, 0, 20, 0},    {"marked values pass", kFreshState, 0, 0, 20, 0},
    {"another value, then taken", 0, 8, 2, 8, 0}, {"taken at the last look", 1, 20, 2, 20, 19},
};

// `woken` is what the fixture runs when the sender wakes the receiver; `send` sends one record.
inline void expect_sleeps_while_the_state_is_one(std::function<void()>& woken, support::SleepPatch& sleeps,
                                                 const std::function<uint32_t()>& send) {
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    unsigned char* view = nullptr;
    mapped.answer(
        [&](auto... arguments) { return view = static_cast<unsigned char*>(mapped.real(arguments...)); });
    for_each_row(kTakenStates, [&](const TakenState& row) {
        PageWatch watch;
        watch.before_access([&](size_t nth) {
            if (nth == row.change_look) put_word(view, row.change_to);
        });
        woken = [&] {
            put_word(view, row.at_start);
            watch.start(view);
        };
        CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
        unmapped.answer([&](const void* address) { return watch.stop(), unmapped.real(address); });
        const size_t before = sleeps.count();
        EXPECT_EQ(send(), 0U);
        EXPECT_EQ(watch.accesses().size(), row.looks);
        EXPECT_EQ(sleeps.count() - before, row.pauses);
    });
    woken = nullptr;
    for (const DWORD length : sleeps.lengths()) EXPECT_EQ(length, 100U);
}
