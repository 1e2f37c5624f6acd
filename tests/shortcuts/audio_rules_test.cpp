// Which shortcut carries a device's voice.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"

namespace {

using scene::Lines;
using support::CallPatch;

constexpr uint32_t kPhone = 1;
constexpr const char* kTakeServiceList = "\"0x80000000\"";

std::string shortcut(int handle, const char* service_class, int of_service = 0) {
    return "{\"device\": 1, \"handle\": " + std::to_string(handle) +
           ", \"service\": " + std::to_string(of_service) + ", \"class\": \"" + service_class + "\"}";
}

std::string service(int handle, const char* service_class) {
    return "{\"handle\": " + std::to_string(handle) + ", \"name\": \"s\", \"class\": \"" + service_class +
           "\"}";
}

void set_scene(const char* parameter, const Lines& services, const Lines& shortcuts) {
    scene::set(std::string("\"devices\": [{\"handle\": 1, \"parameter\": ") + parameter + ", " +
               scene::list("services", services) + "}], " + scene::list("shortcuts", shortcuts));
}

class VoiceShortcut : public support::SuiteTest {};

TEST_F(VoiceShortcut, OfDevice0IsNone) {
    set_scene("0", {}, {shortcut(100, "0x111E")});
    EXPECT_EQ(VlCm_GetCurrHFHSShc(0), 0U);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(VoiceShortcut, IsTheLastHandsFreeOneElseTheLastHeadsetOne) {
    struct Row {
        const char* label;
        Lines shortcuts;
        uint32_t answer;
    };
    const Row rows[] = {
        {"none", {}, 0},
        {"no voice", {shortcut(100, "0x111F"), shortcut(101, "0x1112"), shortcut(102, "0x110B")}, 0},
        {"headset", {shortcut(100, "0x1108"), shortcut(101, "0x1101")}, 100},
        {"hands-free", {shortcut(100, "0x111E")}, 100},
        {"hands-free first", {shortcut(100, "0x111E"), shortcut(101, "0x1108")}, 100},
        {"headset first", {shortcut(100, "0x1108"), shortcut(101, "0x111E")}, 101},
        {"two hands-free", {shortcut(100, "0x111E"), shortcut(101, "0x111E")}, 101},
        {"two headsets", {shortcut(100, "0x1108"), shortcut(101, "0x1108"), shortcut(102, "0x1101")}, 101},
        {"another device", {R"({"device": 2, "handle": 100, "class": "0x111E"})"}, 0},
    };
    for (const char* parameter : {"0", "\"0x7FFFFFFF\""}) {
        support::for_each_row(rows, [parameter](const Row& row) {
            set_scene(parameter, {service(10, "0x111E")}, row.shortcuts);
            EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), row.answer);
            EXPECT_EQ(VlSim_CallCount("Btsdk_StartEnumRemoteService"), 0U);
        });
    }
}

TEST_F(VoiceShortcut, IsLookedForAmongAllShortcutsOfTheDevice) {
    set_scene("0", {}, {shortcut(100, "0x1108"), shortcut(101, "0x111E")});
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 101U);
    EXPECT_EQ(support::sdk_calls(), (Lines{"Btsdk_GetRemoteDeviceParam(1, out) = 0",
                                           "Btsdk_GetShortCutByDeviceHandle(1, 0, null, 0) = 2",
                                           "Btsdk_GetShortCutByDeviceHandle(1, 0, out, 2) = 2",
                                           "Btsdk_GetShortCutProperty({shortcut 100}) = 0",
                                           "Btsdk_GetShortCutProperty({shortcut 101}) = 0"}));
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(VoiceShortcut, IsLookedForAmongTheServicesWhenTheDeviceSaysSo) {
    set_scene(kTakeServiceList, {service(10, "0x1108"), service(11, "0x111E"), service(12, "0x1101")},
              {shortcut(100, "0x1108", 10), shortcut(101, "0x111E", 11), shortcut(102, "0x111E", 11),
               shortcut(103, "0x1101", 12)});
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 101U);
    Lines calls = support::sdk_calls();
    calls.erase(
        std::remove_if(calls.begin(), calls.end(),
                       [](const std::string& call) { return call.find("Enum") != std::string::npos; }),
        calls.end());
    EXPECT_EQ(calls, (Lines{"Btsdk_GetRemoteDeviceParam(1, out) = 0",
                            "Btsdk_GetShortCutByServiceHandle(1, 10, null, 0) = 1",
                            "Btsdk_GetShortCutByServiceHandle(1, 10, out, 1) = 1",
                            "Btsdk_GetShortCutByServiceHandle(1, 11, null, 0) = 2",
                            "Btsdk_GetShortCutByServiceHandle(1, 11, out, 1) = 1",
                            "Btsdk_GetShortCutByServiceHandle(1, 12, null, 0) = 1",
                            "Btsdk_GetShortCutByServiceHandle(1, 12, out, 1) = 1"}));
    EXPECT_EQ(VlSim_CallCount("Btsdk_EnumRemoteService"), 4U);
    scene::expect_each_walk_ended();
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(VoiceShortcut, IsMadeForEveryServiceThatHasNone) {
    set_scene(kTakeServiceList,
              {service(10, "0x1101"), service(11, "0x111E"), service(12, "0x1105"), service(13, "0x1108")},
              {shortcut(100, "0x1108", 13)});
    const uint32_t answer = VlCm_GetCurrHFHSShc(kPhone);
    uint32_t made = 0;
    EXPECT_EQ(Btsdk_GetShortCutByServiceHandle(kPhone, 11, &made, 1), 1U);
    EXPECT_EQ(answer, made);
    EXPECT_EQ(Btsdk_GetShortCutByServiceHandle(kPhone, 10, nullptr, 0), 1U);
    EXPECT_EQ(Btsdk_GetShortCutByServiceHandle(kPhone, 12, nullptr, 0), 1U);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 4U);
    EXPECT_EQ(support::trace_scopes(), Lines(3, "512 VlCm_CreateShortCut"));
}

TEST_F(VoiceShortcut, OfSeveralServicesIsTheLastOne) {
    set_scene(kTakeServiceList, {service(10, "0x111E"), service(11, "0x111E")},
              {shortcut(100, "0x111E", 10), shortcut(101, "0x111E", 11)});
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 101U);
    VlSim_Set("/devices/0/services/1/class", "\"0x1108\"");
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 100U);
    VlSim_Set("/devices/0/services/0/class", "\"0x1108\"");
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 101U);
}

// The first service's shortcut stands when the second one gets none.
TEST_F(VoiceShortcut, AServiceWithoutOneLeavesTheCandidate) {
    set_scene(kTakeServiceList, {service(10, "0x111E"), service(11, "0x111E")},
              {shortcut(100, "0x111E", 10)});
    VlSim_Fail("Btsdk_CreateShortCutEx", 0, scene::kStackCode);
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 100U);
    scene::expect_each_walk_ended();
}

TEST_F(VoiceShortcut, AParameterThatCannotBeReadCountsAs0) {
    set_scene(kTakeServiceList, {service(10, "0x1108")}, {shortcut(100, "0x111E")});
    VlSim_Fail("Btsdk_GetRemoteDeviceParam", 1, scene::kStackCode);
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 100U);
    CallPatch parameter("Btsdk_GetRemoteDeviceParam", Btsdk_GetRemoteDeviceParam);
    parameter.answer([](BtHandle, uint32_t* word) {
        *word = 0x80000000;
        return scene::kStackCode;
    });
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 100U);
}

TEST_F(VoiceShortcut, NeedsMemoryForTheList) {
    set_scene("0", {}, {shortcut(100, "0x111E")});
    blocks().fail_nth(1);
    EXPECT_EQ(VlCm_GetCurrHFHSShc(kPhone), 0U);
    EXPECT_EQ(VlSim_CallCount("Btsdk_GetShortCutProperty"), 0U);
}

TEST_F(VoiceShortcut, EachCallOfTheStackMayFail) {
    scene::for_each_failing_call(
        [] {
            set_scene("0", {}, {shortcut(100, "0x1108"), shortcut(101, "0x111E")});
        },
        [](const std::string& failing) {
            const uint32_t answer = VlCm_GetCurrHFHSShc(kPhone);
            const bool list = scene::starts_with(failing, "Btsdk_GetShortCutByDevice");
            EXPECT_EQ(answer, list ? 0U : failing == "Btsdk_GetShortCutProperty 2" ? 100U : 101U);
        });
    scene::for_each_failing_call(
        [] {
            set_scene(kTakeServiceList, {service(10, "0x1108"), service(11, "0x1101")},
                      {shortcut(100, "0x1108", 10)});
        },
        [](const std::string& failing) {
            const uint32_t answer = VlCm_GetCurrHFHSShc(kPhone);
            const bool lost = failing == "Btsdk_StartEnumRemoteService 1" ||
                              failing == "Btsdk_EnumRemoteService 1" ||
                              failing == "Btsdk_GetShortCutByServiceHandle 2";
            if (failing == "Btsdk_GetShortCutByServiceHandle 1") {
                EXPECT_GT(answer, 100U);  // one more is made
            } else {
                EXPECT_EQ(answer, lost ? 0U : 100U);
            }
        });
}

}  // namespace
