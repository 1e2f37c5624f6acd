// Local audio services switched on and off.
#include "VlCommon.h"
#include "scene.h"

namespace {

using scene::Lines;

// Servers 30 (source), 31 (sink), 32 (headset gateway) and 33 (hands-free gateway).
void set_servers(uint32_t status) {
    Lines servers;
    for (const uint32_t service_class : {0x110AU, 0x110BU, 0x1112U, 0x111FU}) {
        servers.push_back("{\"handle\": " + std::to_string(30 + servers.size()) + ", \"class\": " +
                          std::to_string(service_class) + ", \"status\": " + std::to_string(status) + "}");
    }
    scene::set(scene::list("servers", servers));
}

Lines switched() {
    Lines calls = support::sdk_calls("Btsdk_StartServer");
    for (const std::string& call : support::sdk_calls("Btsdk_StopServer")) calls.push_back(call);
    return calls;
}

using Control = BOOL (*)(uint16_t, BOOL);

class AudioService : public support::SuiteTest {
protected:
    struct Row {
        const char* label;
        uint32_t status;
        BOOL start;
        const char* call;  // null: nothing changes
    };
    // Status 1 and 3 are running; what starts is any value but 0.
    static constexpr Row kRows[] = {
        {"start a stopped one", 2, TRUE, "Btsdk_StartServer"},
        {"start with another value", 2, 0x100, "Btsdk_StartServer"},
        {"start with -1", 2, -1, "Btsdk_StartServer"},
        {"start one without a status", 0, TRUE, "Btsdk_StartServer"},
        {"start a running one", 1, TRUE, nullptr},
        {"start one in use", 3, TRUE, nullptr},
        {"stop a running one", 1, FALSE, "Btsdk_StopServer"},
        {"stop one in use", 3, FALSE, "Btsdk_StopServer"},
        {"stop a stopped one", 2, FALSE, nullptr},
    };
    static void expect_switches(Control control, uint16_t service_class, int server) {
        support::for_each_row(kRows, [=](const Row& row) {
            set_servers(row.status);
            EXPECT_EQ(control(service_class, row.start), row.call != nullptr ? TRUE : FALSE);
            Lines expected;
            if (row.call != nullptr) {
                expected.push_back(std::string(row.call) + '(' + std::to_string(server) + ") = 0");
            }
            EXPECT_EQ(switched(), expected);
            scene::expect_each_walk_ended();
            EXPECT_TRUE(support::trace_log().empty());
        });
    }
    void both_directions(const std::string& value) {
        settings().common("VLConfig", "IsSupportBothA2dpSinkSource", value);
    }
};

TEST_F(AudioService, OfA2dpIsSwitchedWhenItIsNotYetSo) {
    expect_switches(VlCm_ControlA2DPService, 0x110A, 30);
    expect_switches(VlCm_ControlA2DPService, 0x110B, 31);
}

TEST_F(AudioService, OfAnyClassIsSwitchedByTheOther) {
    expect_switches(VlCm_ControlA2DPHFPService, 0x110A, 30);
    expect_switches(VlCm_ControlA2DPHFPService, 0x1112, 32);
    expect_switches(VlCm_ControlA2DPHFPService, 0x111F, 33);
}

TEST_F(AudioService, IsFoundThenLookedAtThenSwitched) {
    set_servers(2);
    VlCm_ControlA2DPService(0x110A, TRUE);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetPrivateProfileInt", "Btsdk_StartEnumLocalServer", "Btsdk_EnumLocalServer",
                     "Btsdk_EndEnumLocalServer", "Btsdk_IsBluetoothReady", "Btsdk_StartEnumLocalServer",
                     "Btsdk_EnumLocalServer", "Btsdk_GetServerStatus", "Btsdk_EndEnumLocalServer",
                     "Btsdk_StartServer"}));
    set_servers(1);
    VlCm_ControlA2DPHFPService(0x110A, FALSE);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_StartEnumLocalServer", "Btsdk_EnumLocalServer", "Btsdk_EndEnumLocalServer",
                     "Btsdk_IsBluetoothReady", "Btsdk_StartEnumLocalServer", "Btsdk_EnumLocalServer",
                     "Btsdk_GetServerStatus", "Btsdk_EndEnumLocalServer", "Btsdk_StopServer"}));
}

TEST_F(AudioService, OfA2dpIsLeftAloneWhenBothDirectionsAreSupported) {
    both_directions("1");
    for (const BOOL start : {TRUE, FALSE}) {
        set_servers(start ? 2 : 1);
        EXPECT_EQ(VlCm_ControlA2DPService(0x110A, start), FALSE);
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetPrivateProfileInt"});
        EXPECT_EQ(VlCm_ControlA2DPHFPService(0x110A, start), TRUE);
    }
    for (const char* value : {"0", "2", "-1"}) {
        both_directions(value);
        set_servers(2);
        EXPECT_EQ(VlCm_ControlA2DPService(0x110A, TRUE), TRUE) << value;
    }
}

TEST_F(AudioService, OfA2dpIsSourceOrSink) {
    constexpr uint16_t kOthers[] = {0x1112, 0x111F, 0x110C, 0x1109, 0};
    for (const uint16_t service_class : kOthers) {
        set_servers(2);
        EXPECT_EQ(VlCm_ControlA2DPService(service_class, TRUE), FALSE);
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetPrivateProfileInt"});
    }
}

// A service that is not there is started by handle 0 in one function and not in the other.
TEST_F(AudioService, ThatIsNotThereIsRefusedByOneFunctionOnly) {
    scene::set(R"("servers": [{"handle": 32, "class": "0x1112"}])");
    EXPECT_EQ(VlCm_ControlA2DPHFPService(0x110A, TRUE), FALSE);
    EXPECT_EQ(VlSim_CallCount("Btsdk_IsBluetoothReady"), 0U);
    EXPECT_EQ(switched(), Lines{});
    EXPECT_EQ(VlCm_ControlA2DPService(0x110A, TRUE), TRUE);
    EXPECT_EQ(switched(), Lines{"Btsdk_StartServer(0) = 1025"});
    EXPECT_EQ(VlCm_ControlA2DPService(0x110A, FALSE), FALSE);
    EXPECT_EQ(VlSim_CallCount("Btsdk_StopServer"), 0U);
}

TEST_F(AudioService, EachCallOfTheStackMayFail) {
    scene::for_each_failing_call(
        [] { set_servers(1); },
        [](const std::string& failing) {
            const bool state_unknown =
                failing == "Btsdk_IsBluetoothReady 1" || failing == "Btsdk_StartEnumLocalServer 2" ||
                failing == "Btsdk_EnumLocalServer 2" || failing == "Btsdk_GetServerStatus 1";
            EXPECT_EQ(VlCm_ControlA2DPService(0x110A, FALSE), state_unknown ? FALSE : TRUE);
        });
    scene::for_each_failing_call(
        [] { set_servers(2); },
        [](const std::string& failing) {
            const bool not_found =
                failing == "Btsdk_StartEnumLocalServer 1" || failing == "Btsdk_EnumLocalServer 1";
            EXPECT_EQ(VlCm_ControlA2DPHFPService(0x110A, TRUE), not_found ? FALSE : TRUE);
        });
}

}  // namespace
