// Deleting a device's serial-port shortcuts whose service it no longer lists.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"

namespace {

using scene::Lines;
using support::CallPatch;

constexpr uint16_t kSerialPort = 0x1101, kObjectPush = 0x1105;
constexpr uint32_t kPhone = 1;

std::string service(int handle, const char* service_class = "0x1101") {
    return "{\"handle\": " + std::to_string(handle) + ", \"class\": \"" + service_class + "\"}";
}

// A shortcut of the phone; service 0 is one that it no longer lists.
std::string shortcut(int handle, int of_service, const char* more = "",
                     const char* service_class = "0x1101") {
    return "{\"device\": 1, \"handle\": " + std::to_string(handle) +
           ", \"service\": " + std::to_string(of_service) + ", \"class\": \"" + service_class + "\"" + more +
           "}";
}

void set_scene(const Lines& services, const Lines& shortcuts) {
    scene::set("\"devices\": [{\"handle\": 1, " + scene::list("services", services) +
               "}, {\"handle\": 2}], " + scene::list("shortcuts", shortcuts) +
               R"(, "ports": [{"port": 7, "serial": 70}, {"port": 200, "serial": 71}])");
}

void tidy(uint16_t service_class = kSerialPort) {
    VlCm_DelAllShortcutsBySvcClsForSpecialDevice(kPhone, service_class);
}

Lines deleted() { return support::sdk_calls("Btsdk_DeleteShortCut"); }

Lines released() {
    Lines calls;
    for (const std::string& call : support::sdk_calls()) {
        if (call.find("Comm") != std::string::npos) calls.push_back(call);
    }
    return calls;
}

Lines deletion_of(int handle) { return {"Btsdk_DeleteShortCut(" + std::to_string(handle) + ") = 0"}; }

class StalePorts : public support::SuiteTest {};

TEST_F(StalePorts, AreReleasedAndThenDeleted) {
    set_scene({service(10), service(11, "0x1105")}, {shortcut(100, 10), shortcut(101, 0, R"(, "port": 7)")});
    tidy();
    const Lines calls = support::sdk_calls();
    const Lines expected = {"Btsdk_EnumRemoteService",
                            "Btsdk_GetShortCutByServiceHandle(1, 10, out, 1) = 1",
                            "Btsdk_EnumRemoteService",
                            "Btsdk_EnumRemoteService",
                            "Btsdk_EndEnumRemoteService",
                            "Btsdk_GetShortCutByDeviceHandle(1, 4353, null, 0) = 2",
                            "Btsdk_GetShortCutByDeviceHandle(1, 4353, out, 2) = 2",
                            "Btsdk_GetShortCutProperty({shortcut 100}) = 0",
                            "Btsdk_GetShortCutProperty({shortcut 101}) = 0",
                            "Btsdk_GetShortCutProperty({shortcut 101, mask 64}) = 0",
                            "Btsdk_GetShortCutProperty({shortcut 101, mask 64, parameterLength 10}) = 0",
                            "Btsdk_DeinitCommObj(7) = 0",
                            "Btsdk_CommNumToSerialNum(7) = 70",
                            "Btsdk_PlugOutVComm(70, 16) = 0",
                            "Btsdk_IsBluetoothReady() = 1",
                            "Btsdk_GetShortCutProperty({shortcut 101}) = 0",
                            "Btsdk_DeleteShortCut(101) = 0"};
    ASSERT_EQ(calls.size(), expected.size() + 1);
    EXPECT_TRUE(scene::starts_with(calls[0], "Btsdk_StartEnumRemoteService(1)"));
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_TRUE(scene::starts_with(calls[i + 1], expected[i].c_str())) << calls[i + 1] << expected[i];
    }
}

TEST_F(StalePorts, ShowTheirStepsInTheTrace) {
    set_scene({service(10)}, {shortcut(101, 0, R"(, "port": 7)")});
    tidy();
    EXPECT_EQ(support::trace_log(),
              (Lines{">512 VlCm_DelAllShortcutsBySvcClsForSpecialDevice", ">512 VlCm_IsShortcutConnected",
                     "<512 VlCm_IsShortcutConnected", ">512 VlCm_GetComPortByShortcut",
                     "<512 VlCm_GetComPortByShortcut", ">512 VlCm_DeleteShortCut", "<512 VlCm_DeleteShortCut",
                     "<512 VlCm_DelAllShortcutsBySvcClsForSpecialDevice"}));
}

TEST_F(StalePorts, AreIdleAndOfNoListedService) {
    struct Row {
        const char* label;
        std::string shortcut;
        Lines deleted, released;
    };
    const Lines none;
    const Row rows[] = {
        {"live", shortcut(100, 10, R"(, "port": 7)"), none, none},
        {"connected", shortcut(101, 0, R"(, "port": 7, "connection": 5)"), none, none},
        {"stale without a port", shortcut(102, 0), deletion_of(102), none},
        {"stale with port 0", shortcut(103, 0, R"(, "port": 0)"), deletion_of(103), none},
        {"stale with a high port",
         shortcut(104, 0, R"(, "port": 200)"),
         deletion_of(104),
         {"Btsdk_DeinitCommObj(200) = 0", "Btsdk_CommNumToSerialNum(200) = 71",
          "Btsdk_PlugOutVComm(71, 16) = 0"}},
        {"stale with an unknown port",
         shortcut(105, 0, R"(, "port": 9)"),
         deletion_of(105),
         {"Btsdk_DeinitCommObj(9) = 1025", "Btsdk_CommNumToSerialNum(9) = 0",
          "Btsdk_PlugOutVComm(0, 16) = 1025"}},
        {"of another class", shortcut(106, 0, "", "0x1103"), none, none},
        {"of another device", R"({"handle": 107, "device": 2, "class": "0x1101"})", none, none},
    };
    support::for_each_row(rows, [](const Row& row) {
        set_scene({service(10)}, {row.shortcut});
        tidy();
        EXPECT_EQ(deleted(), row.deleted);
        EXPECT_EQ(released(), row.released);
    });
}

TEST_F(StalePorts, IncludeASecondShortcutOfAListedService) {
    set_scene({service(10)}, {shortcut(100, 10), shortcut(101, 10)});
    tidy();
    EXPECT_EQ(deleted(), deletion_of(101));
}

TEST_F(StalePorts, AreAllDeletedInOneCall) {
    set_scene({service(10)}, {shortcut(101, 0), shortcut(100, 10), shortcut(102, 0),
                              shortcut(103, 0, R"(, "connection": 5)")});
    tidy();
    EXPECT_EQ(deleted(), (Lines{"Btsdk_DeleteShortCut(101) = 0", "Btsdk_DeleteShortCut(102) = 0"}));
}

TEST_F(StalePorts, OfAnotherClassStayThoughAllIsAsked) {
    set_scene({service(10, "0x1105")},
              {shortcut(100, 10, "", "0x1105"), shortcut(101, 0, R"(, "port": 7)", "0x1105")});
    tidy(kObjectPush);
    EXPECT_EQ(
        support::sdk_operations(),
        (Lines{"Btsdk_StartEnumRemoteService", "Btsdk_EnumRemoteService", "Btsdk_GetShortCutByServiceHandle",
               "Btsdk_EnumRemoteService", "Btsdk_EndEnumRemoteService", "Btsdk_GetShortCutByDeviceHandle",
               "Btsdk_GetShortCutByDeviceHandle", "Btsdk_GetShortCutProperty", "Btsdk_GetShortCutProperty"}));
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 2U);
}

// `services` services with handles from 1000; those from `first` on have shortcuts with handles from 2000.
void set_many(int services, int first) {
    Lines listed, shortcuts;
    for (int i = 0; i < services; ++i) listed.push_back(service(1000 + i));
    for (int i = first; i < services; ++i) shortcuts.push_back(shortcut(2000 + i, 1000 + i));
    set_scene(listed, shortcuts);
}

TEST_F(StalePorts, AreNotAmongTheFirst16LiveOnes) {
    set_many(16, 0);
    tidy();
    EXPECT_EQ(deleted(), Lines{});
    set_many(18, 0);
    tidy();
    EXPECT_EQ(deleted(), (Lines{"Btsdk_DeleteShortCut(2016) = 0", "Btsdk_DeleteShortCut(2017) = 0"}));
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetShortCutByServiceHandle"), 18U);
}

TEST_F(StalePorts, AServiceWithoutAShortcutTakesNoPlaceAmongTheLive) {
    set_many(20, 4);
    tidy();
    EXPECT_EQ(deleted(), Lines{});
}

TEST_F(StalePorts, AreNotLookedForWhenTheServicesCannotBeWalked) {
    set_scene({service(10)}, {shortcut(101, 0)});
    VlSim_Fail("Btsdk_StartEnumRemoteService", 1, 0);
    tidy();
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_StartEnumRemoteService"});
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_DelAllShortcutsBySvcClsForSpecialDevice",
                                           "<512 VlCm_DelAllShortcutsBySvcClsForSpecialDevice"}));
}

TEST_F(StalePorts, AreCountedOnceWhenThereAreNone) {
    set_scene({service(10)}, {});
    tidy();
    EXPECT_EQ(support::sdk_calls("Btsdk_GetShortCutByDeviceHandle"),
              Lines{"Btsdk_GetShortCutByDeviceHandle(1, 4353, null, 0) = 0"});
}

TEST_F(StalePorts, HandlesThatAreZeroOrMoreThanCountedAreNotUsed) {
    set_scene({service(10)}, {shortcut(101, 0), shortcut(102, 0), shortcut(103, 0)});
    CallPatch list("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    list.answer([](BtHandle, uint16_t, BtHandle* found, uint32_t room) {
        if (found == nullptr) return 3U;
        EXPECT_EQ(room, 3U);
        EXPECT_EQ(found[0] | found[1] | found[2], 0U);
        found[0] = 101;
        found[2] = 103;
        return 500U;
    });
    tidy();
    EXPECT_EQ(deleted(), (Lines{"Btsdk_DeleteShortCut(101) = 0", "Btsdk_DeleteShortCut(103) = 0"}));
    list.answer([](BtHandle, uint16_t, BtHandle* found, uint32_t) {
        if (found != nullptr) found[0] = 102;
        return found != nullptr ? 1U : 3U;
    });
    support::clear_sdk_log();
    tidy();
    EXPECT_EQ(deleted(), deletion_of(102));
}

TEST_F(StalePorts, AShortcutWhoseStateCannotBeReadCountsAsIdle) {
    set_scene({service(10)}, {shortcut(101, 0, R"(, "connection": 5)")});
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, scene::kStackCode);
    tidy();
    EXPECT_EQ(deleted(), deletion_of(101));
    EXPECT_EQ(support::trace_lines(), Lines{"Fail to Btsdk_GetShortCutProperty\r\n"});
}

TEST_F(StalePorts, StayWithTheirPortReleasedWhenTheStackIsNotReady) {
    set_scene({service(10)}, {shortcut(101, 0, R"(, "port": 7)")});
    VlSim_Set("/ready", "false");
    tidy();
    EXPECT_EQ(released().size(), 3U);
    EXPECT_EQ(deleted(), Lines{});
}

TEST_F(StalePorts, EachAllocationMayFail) {
    struct Row {
        const char* label;
        size_t nth;
        Lines deleted;
        size_t released;
    };
    const Row rows[] = {
        {"the list", 1, {}, 0},
        {"the parameter", 2, deletion_of(101), 0},
        {"none", 0, deletion_of(101), 3},
    };
    support::for_each_row(rows, [this](const Row& row) {
        set_scene({service(10)}, {shortcut(101, 0, R"(, "port": 7)")});
        const size_t before = blocks().allocations();
        blocks().fail_nth(row.nth);
        tidy();
        const size_t asked = blocks().allocations() - before;
        blocks().fail_nth(0);
        EXPECT_EQ(asked, row.nth == 1 ? 1U : 2U);
        EXPECT_EQ(deleted(), row.deleted);
        EXPECT_EQ(released().size(), row.released);
    });
}

TEST_F(StalePorts, EachCallOfTheStackMayFail) {
    scene::for_each_failing_call(
        [] {
            set_scene({service(10)}, {shortcut(100, 10), shortcut(101, 0, R"(, "port": 7)")});
        },
        [](const std::string& failing) {
            tidy();
            // Without the live one's handle it counts as stale.
            const bool spares_none =
                failing == "Btsdk_EnumRemoteService 1" || failing == "Btsdk_GetShortCutByServiceHandle 1";
            EXPECT_EQ(scene::count_of(deleted(), "Btsdk_DeleteShortCut(100) = 0"), spares_none ? 1U : 0U);
        });
}

}  // namespace
