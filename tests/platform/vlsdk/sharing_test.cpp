// One state for all processes that use the folder: seen at once, never lost, never half.
#include "stack_test.h"
#include "support/call_patch.h"
#include "support/child_process.h"
#include "support/role.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vlsim_test {
namespace {

using support::CallPatch;
using support::ChildProcess;
using support::NamedEvent;
using support::role_options;
using support::run_role;

constexpr int kWrites = 25;

std::string state_path() { return home_folder() + "\\state.json"; }

std::string file_content(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write_content(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

uint32_t create_shortcut(const std::string& name) {
    ShortcutProperty record{};
    record.device = 1;
    record.service = 101;
    record.deviceValid = 1;
    record.stackFlag = 1;
    record.serviceClass = 0x1105;
    record.mask = kShortcutMaskCreate;
    name.copy(record.name, sizeof record.name - 1);
    return Btsdk_CreateShortCutEx(&record);
}

TEST_ROLE(vlsim_create) { return static_cast<int>(create_shortcut(arguments.at(0))); }

TEST_ROLE(vlsim_find) { return Btsdk_GetShortCutByName(arguments.at(0).c_str()) != 0 ? 0 : 1; }

// Makes shortcuts "<name> 0", "<name> 1", ... as soon as everybody may start.
TEST_ROLE(vlsim_create_many) {
    NamedEvent ready(arguments.at(0) + "-ready");
    NamedEvent start("vlsim-test-start");
    ready.set();
    if (!start.wait()) return 1;
    for (int number = 0; number < kWrites; ++number) {
        if (create_shortcut(arguments.at(0) + ' ' + std::to_string(number)) != 0) return 2;
    }
    return 0;
}

// Dies while it holds the lock: before the new content is whole ("half"), before ("unmoved") or just
// after ("moved") it took the old one's place.
TEST_ROLE(vlsim_die_in_write) {
    Btsdk_IsBluetoothReady();
    const HMODULE stack = GetModuleHandleA("VlSDK.dll");
    CallPatch written("WriteFile", WriteFile, stack);
    CallPatch moved("MoveFileExW", MoveFileExW, stack);
    if (arguments.at(0) == "half") {
        written.answer([](HANDLE file, LPCVOID data, DWORD size, LPDWORD count, LPOVERLAPPED overlapped) {
            WriteFile(file, data, size / 2, count, overlapped);
            return TerminateProcess(GetCurrentProcess(), 50);
        });
    } else {
        moved.answer([move = arguments.at(0) == "moved"](LPCWSTR from, LPCWSTR to, DWORD flags) {
            if (move) MoveFileExW(from, to, flags);
            return TerminateProcess(GetCurrentProcess(), 50);
        });
    }
    create_shortcut("last words");
    return 0;
}

TEST_ROLE(vlsim_watch) {
    NamedEvent watching("vlsim-test-watching");
    NamedEvent changed("vlsim-test-changed");
    const uint32_t before = Btsdk_GetAllShortCuts(nullptr, 0);
    watching.set();
    if (!changed.wait()) return 1;
    return static_cast<int>(Btsdk_GetAllShortCuts(nullptr, 0) - before);
}

class Sharing : public StackTest {};

TEST_F(Sharing, WhatOneProcessMakesTheOthersSee) {
    EXPECT_EQ(run_role("vlsim_create", {"theirs"}).exit_code, 0u);
    EXPECT_NE(Btsdk_GetShortCutByName("theirs"), 0u);
    EXPECT_EQ(create_shortcut("ours"), 0u);
    EXPECT_EQ(run_role("vlsim_find", {"ours"}).exit_code, 0u);
    EXPECT_EQ(run_role("vlsim_find", {"nobody's"}).exit_code, 1u);
}

TEST_F(Sharing, ARunningProcessSeesTheChangeWithItsNextCall) {
    NamedEvent watching("vlsim-test-watching");
    NamedEvent changed("vlsim-test-changed");
    ChildProcess watcher(support::own_path(), role_options("vlsim_watch"));
    ASSERT_TRUE(watching.wait());
    ASSERT_EQ(create_shortcut("one"), 0u);
    ASSERT_EQ(create_shortcut("two"), 0u);
    changed.set();
    EXPECT_EQ(watcher.wait(), 2u);
}

TEST_F(Sharing, WritersAtOnceLoseNothing) {
    NamedEvent start("vlsim-test-start");
    NamedEvent red_ready("red-ready");
    NamedEvent blue_ready("blue-ready");
    ChildProcess red(support::own_path(), role_options("vlsim_create_many", {"red"}));
    ChildProcess blue(support::own_path(), role_options("vlsim_create_many", {"blue"}));
    ASSERT_TRUE(red_ready.wait() && blue_ready.wait());
    start.set();
    for (int number = 0; number < kWrites; ++number) {
        ASSERT_EQ(create_shortcut("own " + std::to_string(number)), 0u);
    }
    ASSERT_EQ(red.wait(), 0u);
    ASSERT_EQ(blue.wait(), 0u);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 10u + 3 * kWrites);
    for (const char* writer : {"red ", "blue ", "own "}) {
        for (int number = 0; number < kWrites; ++number) {
            const std::string name = writer + std::to_string(number);
            EXPECT_NE(Btsdk_GetShortCutByName(name.c_str()), 0u) << name;
        }
    }
}

TEST_F(Sharing, SurvivesAProcessThatDiesWhileItWrites) {
    ASSERT_EQ(create_shortcut("before"), 0u);
    const std::string whole = file_content(state_path());
    for (const char* moment : {"half", "unmoved"}) {
        SCOPED_TRACE(moment);
        EXPECT_EQ(run_role("vlsim_die_in_write", {moment}).exit_code, 50u);
        EXPECT_EQ(file_content(state_path()), whole);
        EXPECT_TRUE(std::filesystem::exists(state_path() + ".new"));
        EXPECT_EQ(Btsdk_GetShortCutByName("last words"), 0u);
        EXPECT_NE(Btsdk_GetShortCutByName("before"), 0u);
    }
    EXPECT_EQ(run_role("vlsim_die_in_write", {"moved"}).exit_code, 50u);
    EXPECT_NE(Btsdk_GetShortCutByName("last words"), 0u);
    EXPECT_EQ(create_shortcut("after"), 0u);
    EXPECT_EQ(run_role("vlsim_find", {"after"}).exit_code, 0u);
    EXPECT_FALSE(std::filesystem::exists(state_path() + ".new"));
}

TEST_F(Sharing, AFileThatIsNoScenarioGivesWayToTheNeighbourhood) {
    ASSERT_EQ(VlSim_LoadScenario("{}"), 0u);
    write_content(state_path(), "{ broken");
    // This process knows the file as it wrote it; another one reads it anew.
    EXPECT_EQ(run_role("vlsim_create", {"rescued"}).exit_code, 0u);
    EXPECT_EQ(file_content(state_path() + ".broken"), "{ broken");
    EXPECT_NE(Btsdk_GetShortCutByName("rescued"), 0u);
    EXPECT_EQ(walk_devices().size(), 10u);
}

TEST_F(Sharing, AFileThatCannotBeReplacedLosesTheChangeAlone) {
    const HMODULE stack = GetModuleHandleA("VlSDK.dll");
    {
        CallPatch moved("MoveFileExW", MoveFileExW, stack);
        moved.fail_nth(1, FALSE, ERROR_ACCESS_DENIED);
        EXPECT_NE(create_shortcut("lost"), 0u);
    }
    EXPECT_EQ(Btsdk_GetShortCutByName("lost"), 0u);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 10u);
    EXPECT_EQ(create_shortcut("kept"), 0u);
    EXPECT_NE(Btsdk_GetShortCutByName("kept"), 0u);
}

TEST_F(Sharing, TheFileIsReadAgainOnlyAfterAChange) {
    ASSERT_EQ(create_shortcut("one"), 0u);
    const HMODULE stack = GetModuleHandleA("VlSDK.dll");
    CallPatch waited("WaitForSingleObject", WaitForSingleObject, stack);
    for (int again = 0; again < 5; ++again) EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 11u);
    EXPECT_EQ(waited.count(), 0u);
    EXPECT_EQ(run_role("vlsim_create", {"two"}).exit_code, 0u);
    for (int again = 0; again < 5; ++again) EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 12u);
    EXPECT_EQ(waited.count(), 1u);
}

// A scenario with many shortcuts of many devices, two to each.
std::string large_scenario(uint32_t shortcuts) {
    std::string devices;
    std::string list;
    for (uint32_t number = 0; number < shortcuts; number += 2) {
        const std::string handle = std::to_string(1000000 + number);
        devices += R"({"handle": )" + handle + "},";
        for (const char* name : {"a", "b"}) {
            list.append(R"({"device": )").append(handle).append(R"(, "class": 4357, "name": ")");
            list.append(name).append(handle).append("\"},");
        }
    }
    devices.pop_back();
    list.pop_back();
    return R"({"devices": [)" + devices + R"(], "shortcuts": [)" + list + "]}";
}

// The quickest of some rounds of queries that each concern one device, in counter ticks.
int64_t query_ticks() {
    VlSim_SetLogging(0);
    int64_t best = INT64_MAX;
    for (int round = 0; round < 20; ++round) {
        LARGE_INTEGER begin;
        LARGE_INTEGER end;
        QueryPerformanceCounter(&begin);
        for (int again = 0; again < 200; ++again) {
            BtHandle handles[2];
            EXPECT_EQ(Btsdk_GetShortCutByDeviceHandle(1000000, 4357, handles, 2), 2u);
            ShortcutProperty record = shortcut_query(handles[1]);
            EXPECT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
            EXPECT_EQ(Btsdk_GetShortCutByName("b1000000"), handles[1]);
        }
        QueryPerformanceCounter(&end);
        best = std::min(best, static_cast<int64_t>(end.QuadPart - begin.QuadPart));
    }
    return best;
}

TEST_F(Sharing, AQueryCostsTheSameAmongTwentyThousandShortcuts) {
    ASSERT_EQ(VlSim_LoadScenario(large_scenario(200).c_str()), 0u);
    const int64_t few = query_ticks();
    ASSERT_EQ(VlSim_LoadScenario(large_scenario(20000).c_str()), 0u);
    const int64_t many = query_ticks();
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 20000u);
    EXPECT_LT(many, few * 5);  // a search through the list would be a hundred times as long
}

}  // namespace
}  // namespace vlsim_test
