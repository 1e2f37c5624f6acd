// The connection that carries the service-level link of a headset or hands-free shortcut.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"

namespace {

using scene::Lines;
using support::CallPatch;

constexpr uint32_t kUnknown = 99;

// Connections 50, 51, ... of the phone (device 1, stored address as below) or of others.
std::string connection(uint32_t role, uint32_t device, const char* service_class) {
    return "{\"role\": " + std::to_string(role) + ", \"device\": " + std::to_string(device) +
           ", \"class\": \"" + service_class + "\"}";
}

void set_link_scene(const std::string& shortcut_members, const Lines& connections) {
    Lines numbered;
    for (const std::string& each : connections) {
        numbered.push_back("{\"handle\": " + std::to_string(50 + numbered.size()) + ", " + each.substr(1));
    }
    scene::set(R"("devices": [{"handle": 1, "address": "66:55:44:33:22:11"}, {"handle": 2}],
        "shortcuts": [{"handle": 100, )" +
               shortcut_members + "}], " + scene::list("connections", numbered));
}

// Of a service to which no connection leads: the stack would fill in that one.
constexpr char kHeadset[] = R"("device": 1, "service": 900, "class": "0x1108")";
constexpr char kHandsFree[] = R"("device": 1, "service": 900, "class": "0x111E")";

uint32_t link(uint32_t shortcut = 100) { return VlCm_GetHSHFSLCConnHdl(0xDEADBEEF, shortcut); }

const Lines kLinkScope = {">512 VlCm_GetHSHFSLCConnHdl", "<512 VlCm_GetHSHFSLCConnHdl"};

class ServiceLevelLink : public support::SuiteTest {};

TEST_F(ServiceLevelLink, OfShortcut0IsNone) {
    set_link_scene(kHeadset, {});
    EXPECT_EQ(link(0), 0U);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(support::trace_log(), kLinkScope);
}

TEST_F(ServiceLevelLink, IsTheShortcutsOwnConnection) {
    set_link_scene(std::string(kHeadset) + R"(, "connection": 77)", {connection(1, 1, "0x1112")});
    EXPECT_EQ(link(), 77U);
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetShortCutProperty({shortcut 100}) = 0"});
    EXPECT_EQ(support::trace_log(), kLinkScope);
}

TEST_F(ServiceLevelLink, CountsExactlyTheGatewaysAndTheDevicesHeadset) {
    constexpr const char* kClasses[] = {"0x1108", "0x1112", "0x111E", "0x111F", "0x110A", "0x110B", "0x1115"};
    for (const bool headset : {true, false}) {
        const std::string gateway = headset ? "0x1112" : "0x111F";
        for (const std::string service_class : kClasses) {
            for (uint32_t role = 0; role < 4; ++role) {
                for (const uint32_t device : {1U, 2U}) {
                    SCOPED_TRACE(std::to_string(headset) + service_class + " " + std::to_string(role) + " " +
                                 std::to_string(device));
                    // The other bits of the word do not count.
                    set_link_scene(headset ? kHeadset : kHandsFree,
                                   {connection(role | 0xFFFFFFF0, device, service_class.c_str())});
                    const bool counts = (role == 1 && service_class == gateway) ||
                                        (role == 2 && service_class == "0x1108" && device == 1);
                    EXPECT_EQ(link(), counts ? 50U : 0U);
                    scene::expect_each_walk_ended();
                }
            }
        }
    }
}

TEST_F(ServiceLevelLink, IsTheFirstThatCounts) {
    set_link_scene(kHandsFree,
                   {connection(2, 2, "0x1108"), connection(2, 1, "0x1108"), connection(1, 1, "0x111F")});
    EXPECT_EQ(link(), 51U);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetShortCutProperty", "Btsdk_StartEnumConnection", "Btsdk_EnumConnection",
                     "Btsdk_EnumConnection", "Btsdk_EndEnumConnection"}));
}

TEST_F(ServiceLevelLink, OfAShortcutOfAnotherClassIsTheHandsFreeGateways) {
    set_link_scene(R"("device": 1, "service": 900, "class": "0x1112")",
                   {connection(1, 2, "0x1112"), connection(1, 2, "0x111F")});
    EXPECT_EQ(link(), 51U);
}

TEST_F(ServiceLevelLink, FindsTheDeviceByItsAddressUnlessTheHandleIsValid) {
    struct Row {
        const char* label;
        uint8_t valid;
        uint32_t device;
        const char* address;
        uint32_t answer;
    };
    constexpr Row kRows[] = {
        {"handle", 1, 1, "\0\0\0\0\0\0", 50},
        {"another's handle", 1, 2, "\x11\x22\x33\x44\x55\x66", 0},
        {"address", 0, 0, "\x11\x22\x33\x44\x55\x66", 50},
        {"the handle is not valid", 0, 1, "\x01\x02\x03\x04\x05\x06", 0},
        {"2 is not valid", 2, 2, "\x11\x22\x33\x44\x55\x66", 50},
        {"unknown address", 0, 1, "\x66\x55\x44\x33\x22\x11", 0},
    };
    support::for_each_row(kRows, [](const Row& row) {
        // The second connection has no device: what is unknown equals nothing.
        set_link_scene(kHeadset, {connection(2, 1, "0x1108"), connection(2, 0, "0x1108")});
        CallPatch property("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
        property.answer([&row](ShortcutProperty* record) {
            record->serviceClass = 0x1108;
            record->deviceValid = row.valid;
            record->device = row.device;
            std::copy_n(row.address, 6, record->address);
            return 0U;
        });
        EXPECT_EQ(link(), row.answer);
        EXPECT_EQ(VlSim_CallCount("Btsdk_GetRemoteDeviceHandle"), row.valid == 1 ? 0U : 1U);
    });
}

TEST_F(ServiceLevelLink, NeedsAReadableShortcut) {
    set_link_scene(kHeadset, {connection(1, 1, "0x1112")});
    EXPECT_EQ(link(kUnknown), 0U);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetShortCutProperty"});
    EXPECT_EQ(support::trace_log(), kLinkScope);
}

TEST_F(ServiceLevelLink, TellsWhenThereIsNoMemory) {
    set_link_scene(kHeadset, {connection(1, 1, "0x1112")});
    blocks().fail_nth(1);
    EXPECT_EQ(link(), 0U);
    blocks().fail_nth(0);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(support::trace_log(), (Lines{kLinkScope[0], "=512 Fail to new memory!\r\n", kLinkScope[1]}));
}

TEST_F(ServiceLevelLink, EachCallOfTheStackMayFail) {
    scene::for_each_failing_call(
        [] {
            set_link_scene(R"("class": "0x1108", "deviceValid": false, "address": "66:55:44:33:22:11")",
                           {connection(0, 1, "0x1112"), connection(2, 1, "0x1108")});
        },
        [](const std::string& failing) { EXPECT_EQ(link(), failing == "nothing" ? 51U : 0U); });
}

}  // namespace
