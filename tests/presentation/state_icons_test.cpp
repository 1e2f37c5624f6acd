// The icons that show a state.
#include "vlcm/states.h"

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <string.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using support::CallPatch;
using support::for_each_row;

constexpr uint32_t kIdle = 0, kConnected = 1, kNotReady = 2, kPaired = 3, kWithoutAudio = 3, kDefault = 4;
// Base icons, and classes that have none: no row at all, and rows that say 1.
constexpr uint32_t kPushIcon = 116, kHandsFreeIcon = 131, kPhoneIcon = 21;
constexpr uint16_t kPush = 0x1105, kHandsFree = 0x111E, kHeadset = 0x1108, kIconZero = 0x0003;
constexpr uint16_t kWithoutIcon[] = {0x1234, 0, 0xFFFF, 0x1102, 0x1112, 0x1200};
constexpr uint32_t kPhoneClass = 0x5A020C;
// The default neighbourhood.
constexpr uint32_t kServer = 303, kPhone = 1, kHeadsetDevice = 2, kHandsFreeShortcut = 204,
                   kPushShortcut = 201, kHandsFreeService = 112, kPushService = 101, kUnknownHandle = 999;

class StateIcon : public support::SuiteTest {
protected:
    StateIcon() { support::clear_sdk_log(); }
};

void set_ready(bool ready) { VlSim_Set("/ready", ready ? "true" : "false"); }
void disconnect_all() { VlSim_Set("/connections", "[]"); }

Lines operations() {
    Lines made = support::sdk_operations();
    support::clear_sdk_log();
    return made;
}

TEST_F(StateIcon, OfTheAdapterIsOneOfThree) {
    EXPECT_EQ(VlCm_GetLocDevIconIDEx(), 27u);
    EXPECT_EQ(operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection", "Btsdk_EndEnumConnection"}));
    disconnect_all();
    EXPECT_EQ(VlCm_GetLocDevIconIDEx(), 26u);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection"}));
    set_ready(false);
    EXPECT_EQ(VlCm_GetLocDevIconIDEx(), 28u);
    EXPECT_EQ(operations(), Lines{"Btsdk_IsBluetoothReady"});
}

uint32_t ready_answer = 0;
uint32_t answer_ready() { return ready_answer; }

TEST_F(StateIcon, IsReadyWhenTheLowByteIsExactlyOne) {
    struct Row {
        const char* label;
        uint32_t answer;
        bool ready;
    };
    const Row rows[] = {{"yes", 1, true},
                        {"yes under rubbish", 0xABCDEF01, true},
                        {"two", 2, false},
                        {"all bits", 0xFF, false},
                        {"rubbish", 0x100, false}};
    const support::ImportPatch patch(support::library_under_test(), "Btsdk_IsBluetoothReady", answer_ready);
    for_each_row(rows, [](const Row& row) {
        ready_answer = row.answer;
        EXPECT_EQ(VlCm_GetLocDevIconIDEx(), row.ready ? 27u : 28u);
        EXPECT_EQ(VlCm_GetLocSvcIconIDEx(kServer, kPush), kPushIcon + (row.ready ? kIdle : kNotReady));
        EXPECT_EQ(VlCm_GetRmtDevIconIDEx(kPhone, kPhoneClass),
                  kPhoneIcon + (row.ready ? kConnected : kNotReady));
        for (const BOOL is_shortcut : {TRUE, FALSE}) {
            EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(0, kPush, is_shortcut),
                      kPushIcon + (row.ready ? kIdle : kNotReady));
        }
    });
}

TEST_F(StateIcon, OfAServiceClassWithoutIconIs0AndNothingIsAsked) {
    for (const bool ready : {true, false}) {
        set_ready(ready);
        for (const uint16_t service_class : kWithoutIcon) {
            EXPECT_EQ(VlCm_GetLocSvcIconIDEx(304, service_class), 0u) << std::hex << service_class;
            EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, service_class, TRUE), 0u);
            EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, service_class, FALSE), 0u);
        }
    }
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(StateIcon, OfAServiceCountsFromIcon0AsFromAnyOther) {
    EXPECT_EQ(VlCm_GetLocSvcIconIDEx(304, kIconZero), kConnected);
    EXPECT_EQ(VlCm_GetLocSvcIconIDEx(302, kIconZero), kNotReady);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, kIconZero, FALSE), kConnected);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, kIconZero, TRUE), kConnected);
    set_ready(false);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(1, kIconZero, TRUE), kNotReady);
}

TEST_F(StateIcon, TakesServiceClassesAs16Bits) {
    using Local = uint32_t (*)(uint32_t, uint32_t);
    using Remote = uint32_t (*)(uint32_t, uint32_t, BOOL);
    EXPECT_EQ(reinterpret_cast<Local>(reinterpret_cast<void*>(VlCm_GetLocSvcIconIDEx))(kServer, 0xABCD1105),
              kPushIcon);
    const auto remote = reinterpret_cast<Remote>(reinterpret_cast<void*>(VlCm_GetRmtSvcIconIDEx));
    EXPECT_EQ(remote(kPushShortcut, 0xABCD1105, TRUE), kPushIcon);
    VlSim_Set("/audioConnection", "false");
    EXPECT_EQ(remote(kHandsFreeShortcut, 0xABCD111E, TRUE), kHandsFreeIcon + kWithoutAudio);
}

TEST_F(StateIcon, OfALocalServiceTellsItsStatus) {
    struct Row {
        const char* label;
        uint32_t result, status, variant;
    };
    const Row rows[] = {{"nothing", 0, 0, kNotReady},
                        {"started", 0, 1, kIdle},
                        {"stopped", 0, 2, kNotReady},
                        {"in use", 0, 3, kConnected},
                        {"four", 0, 4, kNotReady},
                        {"more bits", 0, 0x101, kNotReady},
                        {"more bits, too", 0, 0x103, kNotReady},
                        {"failed", 1, 3, kNotReady}};
    CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    for_each_row(rows, [&](const Row& row) {
        status.answer([&](BtHandle server, uint32_t* out) {
            EXPECT_EQ(server, 0u) << "0 is asked like any other";
            EXPECT_EQ(*out, 0u);
            *out = row.status;
            return row.result;
        });
        EXPECT_EQ(VlCm_GetLocSvcIconIDEx(0, kPush), kPushIcon + row.variant);
    });
    set_ready(false);
    EXPECT_EQ(VlCm_GetLocSvcIconIDEx(304, kPush), kPushIcon + kNotReady);
    EXPECT_EQ(VlCm_GetLocSvcIconIDEx(304, kHeadset), kHandsFreeIcon + kNotReady);
    EXPECT_EQ(status.count(), 8u);
}

// All combinations: the first test that holds decides, and the later ones are not made.
TEST_F(StateIcon, OfADeviceIsDecidedByTheFirstTestThatHolds) {
    CallPatch connected("Btsdk_IsDeviceConnected", Btsdk_IsDeviceConnected);
    CallPatch paired("Btsdk_IsDevicePaired", Btsdk_IsDevicePaired);
    CallPatch default_shortcut("Btsdk_GetDefaultShortCut", Btsdk_GetDefaultShortCut);
    for (unsigned bits = 0; bits < 16; ++bits) {
        const bool ready = bits & 8, is_connected = bits & 4, is_default = bits & 2, is_paired = bits & 1;
        set_ready(ready);
        connected.answer([=](BtHandle) { return static_cast<uint8_t>(is_connected); });
        default_shortcut.answer([=](uint16_t) { return is_default ? kHandsFreeShortcut : 0; });
        paired.answer([=](BtHandle, uint32_t* out) {
            *out = is_paired;
            return 0U;
        });
        const size_t asked_default = default_shortcut.count(), asked_paired = paired.count();
        const uint32_t expected = !ready         ? kNotReady
                                  : is_connected ? kConnected
                                  : is_default   ? kDefault
                                  : is_paired    ? kPaired
                                                 : kIdle;
        EXPECT_EQ(VlCm_GetRmtDevIconIDEx(kHeadsetDevice, kPhoneClass), kPhoneIcon + expected) << bits;
        EXPECT_EQ(default_shortcut.count() != asked_default, ready && !is_connected) << bits;
        EXPECT_EQ(paired.count() != asked_paired, ready && !is_connected && !is_default) << bits;
    }
}

uint32_t connected_answer = 0;
uint32_t answer_connected(BtHandle /*device*/) { return connected_answer; }

TEST_F(StateIcon, OfADeviceTakesFlagsByTheirLowByte) {
    struct Row {
        const char* label;
        uint32_t connected, result, paired, variant;
    };
    const Row rows[] = {{"connected", 0xABCDEF01, 0, 1, kConnected},
                        {"rubbish", 0xABCDEF00, 0, 0, kIdle},
                        {"another number", 2, 0, 1, kPaired},
                        {"paired", 0, 0, 0xABCDEF01, kPaired},
                        {"paired by another number", 0, 0, 2, kIdle},
                        {"paired by rubbish", 0, 0, 0x100, kIdle},
                        {"failed", 0, 1, 1, kIdle}};
    const support::ImportPatch patch(support::library_under_test(), "Btsdk_IsDeviceConnected",
                                     answer_connected);
    CallPatch paired("Btsdk_IsDevicePaired", Btsdk_IsDevicePaired);
    for_each_row(rows, [&](const Row& row) {
        connected_answer = row.connected;
        paired.answer([&](BtHandle, uint32_t* out) {
            EXPECT_EQ(*out, 0u);
            *out = row.paired;
            return row.result;
        });
        EXPECT_EQ(VlCm_GetRmtDevIconIDEx(kPhone, kPhoneClass), kPhoneIcon + row.variant);
    });
}

TEST_F(StateIcon, OfADeviceOfAnUnknownClassCountsFrom1) {
    EXPECT_EQ(VlCm_GetRmtDevIconIDEx(kPhone, 0x000900), 1 + kConnected);
    EXPECT_EQ(VlCm_GetRmtDevIconIDEx(4, 0x001F00), 1 + kPaired);
    EXPECT_EQ(VlCm_GetRmtDevIconIDEx(0, 0), 1 + kIdle);
    EXPECT_EQ(operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_IsDeviceConnected",  // the phone
                     "Btsdk_IsBluetoothReady", "Btsdk_IsDeviceConnected", "Btsdk_GetDefaultShortCut",
                     "Btsdk_GetShortCutProperty",
                     "Btsdk_IsDevicePaired",  //
                     "Btsdk_IsBluetoothReady", "Btsdk_IsDeviceConnected", "Btsdk_IsDevicePaired"}));
    set_ready(false);
    EXPECT_EQ(VlCm_GetRmtDevIconIDEx(kPhone, 0x000900), 1 + kNotReady);
}

TEST_F(StateIcon, OfARemoteServiceIsThatOfTheConnectionToIt) {
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, kHandsFree, FALSE), kHandsFreeIcon + kConnected);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection",
                                   "Btsdk_EnumConnection", "Btsdk_EndEnumConnection"}))
        << "the first one matches";
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kPushService, kPush, FALSE), kPushIcon + kIdle);
    EXPECT_EQ(operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection", "Btsdk_EnumConnection",
                     "Btsdk_EnumConnection", "Btsdk_EnumConnection", "Btsdk_EndEnumConnection"}));
    VlSim_Fail("Btsdk_EnumConnection", 1, 0);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, kPush, FALSE), kPushIcon + kIdle);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection",
                                   "Btsdk_EnumConnection", "Btsdk_EndEnumConnection"}));
    disconnect_all();
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, kPush, FALSE), kPushIcon + kIdle);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection"}));
}

TEST_F(StateIcon, OfARemoteServiceGetsAZeroedRecordForEachConnection) {
    CallPatch enumerate("Btsdk_EnumConnection", Btsdk_EnumConnection);
    enumerate.answer([&](BtHandle, ConnectionProperty* record) {
        const ConnectionProperty zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0);
        memset(record, 0xAA, sizeof *record);
        if (enumerate.count() == 3) record->service = kPushService;
        return enumerate.count() < 4 ? 7U : 0U;
    });
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kPushService, kPush, FALSE), kPushIcon + kConnected);
    EXPECT_EQ(enumerate.count(), 3u);
}

TEST_F(StateIcon, OfARemoteServiceIgnoresWhatTheEndOfTheWalkLeft) {
    CallPatch enumerate("Btsdk_EnumConnection", Btsdk_EnumConnection);
    enumerate.answer([&](BtHandle, ConnectionProperty* record) {
        record->service = kPushService;
        return 0U;
    });
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kPushService, kPush, FALSE), kPushIcon + kIdle);
}

TEST_F(StateIcon, OfNoRemoteServiceIsIdle) {
    for (const BOOL is_shortcut : {TRUE, FALSE}) {
        EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(0, kHandsFree, is_shortcut), kHandsFreeIcon + kIdle);
        EXPECT_EQ(operations(), Lines{"Btsdk_IsBluetoothReady"});
    }
    set_ready(false);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, kHandsFree, FALSE), kHandsFreeIcon + kNotReady);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, kHandsFree, TRUE), kHandsFreeIcon + kNotReady);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_IsBluetoothReady"}));
}

TEST_F(StateIcon, OfAShortcutIsThatOfItsConnection) {
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kPushShortcut, kPush, TRUE), kPushIcon + kIdle);
    EXPECT_EQ(operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty", "Btsdk_GetShortCutProperty"}));
    for (const BOOL flag : {1, 2, 0x100, static_cast<int>(0x80000000)}) {
        EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, kPush, flag), kPushIcon + kConnected) << flag;
        EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty",
                                       "Btsdk_GetAllIncomingConnections", "Btsdk_GetAllIncomingConnections",
                                       "Btsdk_GetConnectionProperty", "Btsdk_GetShortCutProperty"}))
            << "audio is the business of hands-free and headset alone";
    }
}

TEST_F(StateIcon, OfAShortcutIsConnectedFromTheOtherSide) {
    VlSim_Set("/connections",
              R"([{"handle": 450, "incoming": true, "role": 2, "device": 9, "class": "0x110A"}])");
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(209, kPush, TRUE), kPushIcon + kConnected);
    EXPECT_TRUE(support::trace_scopes().empty()) << "the shortcut itself is asked second";
    VlSim_Set("/connections/0/device", "1");
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(209, kPush, TRUE), kPushIcon + kIdle);
    EXPECT_EQ(support::trace_scopes(), Lines{"512 VlCm_IsShortcutConnected"});
}

TEST_F(StateIcon, OfAShortcutThatCannotBeReadIsIdleAndAskedOnce) {
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kUnknownHandle, kHandsFree, TRUE), kHandsFreeIcon + kIdle);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty"}));
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, 1);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, kHandsFree, TRUE), kHandsFreeIcon + kIdle);
    EXPECT_EQ(operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty"}));
    EXPECT_TRUE(support::trace_log().empty());
}

// The caller's class decides, not the shortcut's.
TEST_F(StateIcon, OfAConnectedHeadsetTellsOfItsAudioLink) {
    struct Row {
        const char* label;
        uint32_t result, flag, variant;
    };
    const Row rows[] = {{"none", 0, 0, kWithoutAudio},
                        {"a link", 0, 1, kConnected},
                        {"a link under rubbish", 0, 0xABCDEF01, kConnected},
                        {"another number", 0, 2, kWithoutAudio},
                        {"rubbish", 0, 0x100, kWithoutAudio},
                        {"failed", 1, 1, kWithoutAudio}};
    CallPatch audio("Btsdk_AGAP_IsAudioConnExisted", Btsdk_AGAP_IsAudioConnExisted);
    for_each_row(rows, [&](const Row& row) {
        audio.answer([&](uint32_t* flag) {
            EXPECT_EQ(*flag, 0u);
            *flag = row.flag;
            return row.result;
        });
        EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, kHandsFree, TRUE), kHandsFreeIcon + row.variant);
        EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeShortcut, kHeadset, TRUE), kHandsFreeIcon + row.variant);
    });
    const size_t asked = audio.count();
    EXPECT_EQ(asked, 12u);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kPushShortcut, kHandsFree, TRUE), kHandsFreeIcon + kIdle);
    EXPECT_EQ(VlCm_GetRmtSvcIconIDEx(kHandsFreeService, kHandsFree, FALSE), kHandsFreeIcon + kConnected);
    EXPECT_EQ(audio.count(), asked) << "not for an idle shortcut, nor for a service";
}

}  // namespace
