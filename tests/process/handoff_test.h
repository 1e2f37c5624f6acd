// The fixture of the hand-off's tests: the tray agent's window, the relay and the waits are answered here.
#pragma once

#include "handoff_lists.h"
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"

class HandoffTest : public support::SuiteTest {
protected:
    HandoffTest() {
        find_window.answer([this](const char*, const char*) { return tray; });
        foreground.answer([](HWND) { return TRUE; });
        relay.answer([this](uint32_t, uint32_t) {
            if (on_wake_up) on_wake_up();
            return 0U;
        });
    }

    // What the library traced as lines, each of which must have module 512.
    static std::vector<std::string> lines() {
        std::vector<std::string> common;
        for (const std::string& entry : support::trace_log()) {
            if (entry.rfind("=512 ", 0) == 0) common.push_back(entry.substr(5));
        }
        EXPECT_EQ(common, support::trace_lines());
        return common;
    }

    HWND tray = reinterpret_cast<HWND>(0x4242);
    std::function<void()> on_wake_up;
    support::SleepPatch sleeps;
    support::CallPatch<HWND(const char*, const char*)> find_window{"FindWindowA", FindWindowA};
    support::CallPatch<BOOL(HWND)> foreground{"SetForegroundWindow", SetForegroundWindow};
    support::CallPatch<uint32_t(uint32_t, uint32_t)> relay{"Btsdk_PostMessageToCtrlCenter",
                                                           Btsdk_PostMessageToCtrlCenter};
};

using support::CallPatch;
using support::for_each_row;
