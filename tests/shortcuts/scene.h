// Scenes of the simulated stack, and the library's calls that fail one at a time.
#pragma once

#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <algorithm>
#include <string>
#include <vector>

namespace scene {

using Lines = std::vector<std::string>;

inline constexpr uint32_t kStackCode = 0x0555;  // a failure that only the stack can have told

inline void forget_calls() {
    support::clear_sdk_log();
    support::clear_trace_log();
}

// A ready stack with these members: `"devices": [...], "shortcuts": [...]`.
inline void set(const std::string& members) {
    ASSERT_EQ(VlSim_LoadScenario((R"({"ready": true, )" + members + "}").c_str()), 0U) << members;
    forget_calls();
}

// Items of a list, with commas between them.
inline std::string list(const char* name, const Lines& items) {
    std::string text = '"' + std::string(name) + "\": [";
    for (const std::string& item : items) text += (text.back() == '[' ? "" : ", ") + item;
    return text + ']';
}

inline bool starts_with(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

inline size_t count_of(const Lines& lines, const std::string& line) {
    return static_cast<size_t>(std::count(lines.begin(), lines.end(), line));
}

// Each walk that could start was ended once.
inline void expect_each_walk_ended() {
    for (const std::string kind : {"Connection", "LocalServer", "RemoteService", "RemoteDevice"}) {
        size_t started = 0;
        for (const std::string& call : support::sdk_calls(("Btsdk_StartEnum" + kind).c_str())) {
            if (call.substr(call.rfind(' ') + 1) != "0") ++started;
        }
        EXPECT_EQ(support::sdk_calls(("Btsdk_EndEnum" + kind).c_str()).size(), started) << kind;
    }
}

// What an operation answers when it fails: 0 where it answers a handle, a number or yes and no.
inline uint32_t failing_answer(const std::string& operation) {
    for (const char* start : {"Btsdk_StartEnum", "Btsdk_Enum", "Btsdk_GetShortCutBy", "Btsdk_Is",
                              "Btsdk_GetRemoteDeviceHandle", "Btsdk_CommNum", "Btsdk_GetPrivate"}) {
        if (starts_with(operation, start)) return 0;
    }
    return kStackCode;
}

// Runs `body` once for every call that it makes of the stack, with that call failing; `prepare` makes the
// scene anew. The ends of walks do not fail: the walk would stay open.
template <typename Prepare, typename Body>
void for_each_failing_call(Prepare prepare, Body body) {
    prepare();
    body("nothing");
    const Lines operations = support::sdk_operations();
    for (size_t i = 0; i < operations.size(); ++i) {
        if (starts_with(operations[i], "Btsdk_EndEnum")) continue;
        const Lines before(operations.begin(), operations.begin() + static_cast<ptrdiff_t>(i) + 1);
        const auto nth = static_cast<uint32_t>(count_of(before, operations[i]));
        const std::string failing = operations[i] + " " + std::to_string(nth);
        const ::testing::ScopedTrace label(__FILE__, __LINE__, failing);
        prepare();
        VlSim_Fail(operations[i].c_str(), nth, failing_answer(operations[i]));
        body(failing);
        VlSim_ClearFaults();
        expect_each_walk_ended();
    }
}

}  // namespace scene
