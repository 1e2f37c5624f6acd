// The state of adapter, services and devices in words.
#include "vlcm/states.h"

#include "language_library_use.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "twin.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <functional>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using support::CallPatch;
using support::for_each_row;

constexpr UINT kConnected = 1813, kIdle = 1814, kPaired = 1842, kNotReady = 1843;
// The default neighbourhood: a started server; the phone, paired; the headset with a connected hands-free
// shortcut and an idle headset shortcut; the phone's idle shortcut; one whose record names no device.
constexpr uint32_t kServer = 303, kPhone = 1, kHeadset = 2, kHandsFreeShortcut = 204, kHeadsetShortcut = 205,
                   kPushShortcut = 201, kUnknownHandle = 999;
constexpr uint32_t kEnough = 300;
const char kNoLibrary[] = "error!!! Can not load resource library.\r\n";
const char kTooSmall[] = "error!!! The given buffer is not enough.\r\n";

void set_ready(bool ready) { VlSim_Set("/ready", ready ? "true" : "false"); }
void disconnect_all() { VlSim_Set("/connections", "[]"); }

template <typename Char>
class StatusText : public support::SuiteTest {
protected:
    using String = std::basic_string<Char>;
    using Call = std::function<BOOL(Char*, uint32_t)>;
    struct Operation {
        const char* label;
        Call call;
        Call with_handle_0;  // empty: takes none
    };

    static Call adapter() { return form_of<Char>(VlCm_GetLocDevStatusString, VlCm_GetLocDevStatusStringW); }
    static Call server(uint32_t handle) {
        return bound(form_of<Char>(VlCm_GetLocSvcStatusString, VlCm_GetLocSvcStatusStringW), handle);
    }
    static Call device(uint32_t handle) {
        return bound(form_of<Char>(VlCm_GetRmtDevStatusString, VlCm_GetRmtDevStatusStringW), handle);
    }
    static Call service(uint32_t handle) {
        return bound(form_of<Char>(VlCm_GetRmtSvcStatusString, VlCm_GetRmtSvcStatusStringW), handle);
    }
    static std::vector<Operation> operations() {
        return {{"adapter", adapter(), {}},
                {"local service", server(kServer), server(0)},
                {"remote device", device(kPhone), device(0)},
                {"remote service", service(kPushShortcut), service(0)}};
    }

    static Outcome<Char> outcome(const Call& call, uint32_t size = kEnough) {
        support::clear_sdk_log();
        support::clear_trace_log();
        return outcome_of<Char>(
            [&](Char* buffer, uint32_t room) { return static_cast<uint32_t>(call(buffer, room)); }, size,
            std::min(size, kEnough));
    }
    // The text that a call is expected to give.
    static String text(const Call& call) {
        const auto found = outcome(call);
        EXPECT_EQ(found.result, 1u);
        EXPECT_FALSE(found.untouched);
        EXPECT_TRUE(found.rest_untouched);
        EXPECT_TRUE(support::trace_lines().empty());
        return found.text;
    }
    static String loaded(UINT id) { return resource_text<Char>(id); }
    static String paired(UINT id) { return loaded(id) + ascii<Char>(", ") + loaded(kPaired); }

private:
    template <typename Function>
    static Call bound(Function function, uint32_t handle) {
        return [=](Char* buffer, uint32_t size) { return function(handle, buffer, size); };
    }
};
TYPED_TEST_SUITE(StatusText, TwinForms, TwinFormName);

TYPED_TEST(StatusText, NeedsABufferAndAHandleAndSaysNothing) {
    const LanguageLibraryUse library;
    for_each_row(this->operations(), [&](const auto& row) {
        support::clear_sdk_log();
        EXPECT_EQ(row.call(nullptr, kEnough), 0);
        if (!row.with_handle_0) return;
        const auto found = outcome_of<TypeParam>(
            [&](TypeParam* buffer, uint32_t size) {
                return static_cast<uint32_t>(row.with_handle_0(buffer, size));
            },
            kEnough, kEnough);
        EXPECT_EQ(found.result, 0u);
        EXPECT_TRUE(found.untouched);
        EXPECT_TRUE(support::sdk_calls().empty());
    });
    EXPECT_EQ(library.tries(), 0u);
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(StatusText, NeedsTheLanguageLibraryBeforeTheStackIsAsked) {
    LanguageLibraryUse library;
    library.fail();
    for_each_row(this->operations(), [&](const auto& row) {
        const auto found = this->outcome(row.call);
        EXPECT_EQ(found.result, 0u);
        EXPECT_TRUE(found.untouched);
        EXPECT_TRUE(support::sdk_calls().empty());
        EXPECT_EQ(support::trace_log(), Lines{std::string("=512 ") + kNoLibrary});
    });
    EXPECT_EQ(library.frees(), 0u);
}

TYPED_TEST(StatusText, FitsWithItsTerminatorOrLeavesTheBuffer) {
    for_each_row(this->operations(), [&](const auto& row) {
        const auto length = static_cast<uint32_t>(this->text(row.call).size());
        ASSERT_GT(length, 2u);
        for (const uint32_t size : {0u, 1u, length - 1, length}) {
            const auto refused = this->outcome(row.call, size);
            EXPECT_EQ(refused.result, 0u) << size;
            EXPECT_TRUE(refused.untouched) << size;
            EXPECT_EQ(support::trace_lines(), Lines{kTooSmall}) << size;
        }
        for (const uint32_t size : {length + 1, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
            const auto fits = this->outcome(row.call, size);
            EXPECT_EQ(fits.result, 1u) << size;
            EXPECT_EQ(fits.text.size(), length) << size;
            EXPECT_TRUE(support::trace_lines().empty());
        }
    });
}

TYPED_TEST(StatusText, LoadsTheLibraryFirstAndFreesItOnce) {
    const LanguageLibraryUse library;
    size_t calls = 0;
    for (const bool ready : {true, false}) {
        set_ready(ready);
        for_each_row(this->operations(), [&](const auto& row) {
            for (const uint32_t size : {1u, kEnough}) {
                this->outcome(row.call, size);
                ++calls;
                EXPECT_EQ(library.loads(), calls);
                EXPECT_EQ(library.frees(), calls);
                EXPECT_EQ(library.asked_at_load(), 0u);
                EXPECT_EQ(library.asked_at_free(), support::sdk_calls().size());
            }
        });
    }
}

TYPED_TEST(StatusText, LoadsEachTextWithTheWholeWorkBuffer) {
    const StringLoads<TypeParam> strings;
    for_each_row(this->operations(), [&](const auto& row) { this->outcome(row.call); });
    const std::vector<std::pair<UINT, int>> each = {
        {kConnected, 100}, {kIdle, 100}, {kConnected, 200}, {kPaired, 100}, {kIdle, 100}};
    EXPECT_EQ(strings.loads(), each);
}

TYPED_TEST(StatusText, IsCutToItsWorkBuffer) {
    StringLoads<TypeParam> strings;
    const auto longest = ascii<TypeParam>(std::string(400, 's')),
               paired = ascii<TypeParam>(std::string(400, 'p'));
    strings.set(kIdle, longest);
    strings.set(kConnected, longest);
    strings.set(kPaired, paired);
    EXPECT_EQ(this->text(this->adapter()), longest.substr(0, 99));
    EXPECT_EQ(this->text(this->server(kServer)), longest.substr(0, 99));
    EXPECT_EQ(this->text(this->service(kPushShortcut)), longest.substr(0, 99));
    for (const size_t length : {10u, 98u, 99u, 150u, 196u, 197u, 198u, 199u, 300u}) {
        strings.set(kConnected, longest.substr(0, length));
        const auto whole =
            longest.substr(0, length).substr(0, 199) + ascii<TypeParam>(", ") + paired.substr(0, 99);
        EXPECT_EQ(this->text(this->device(kPhone)), whole.substr(0, 199)) << length;
    }
}

TYPED_TEST(StatusText, IsEmptyWhenItsTextIsMissing) {
    StringLoads<TypeParam> strings;
    strings.remove(kConnected);
    strings.remove(kIdle);
    const auto empty = this->outcome(this->adapter(), 1);
    EXPECT_EQ(empty.result, 1u);
    EXPECT_FALSE(empty.untouched);
    EXPECT_TRUE(this->text(this->server(kServer)).empty());
    EXPECT_TRUE(this->text(this->service(kPushShortcut)).empty());
    EXPECT_EQ(this->text(this->device(kPhone)), ascii<TypeParam>(", ") + this->loaded(kPaired));
    strings.remove(kPaired);
    EXPECT_EQ(this->text(this->device(kPhone)), ascii<TypeParam>(", "));
}

// Only the low byte of the stack's answer means anything.
uint32_t ready_answer = 0;
uint32_t answer_ready() { return ready_answer; }

TYPED_TEST(StatusText, IsReadyWhenTheLowByteIsExactlyOne) {
    struct Row {
        const char* label;
        uint32_t answer;
        bool ready;
    };
    const Row rows[] = {{"no", 0, false},
                        {"yes", 1, true},
                        {"two", 2, false},
                        {"all bits of the byte", 0xFF, false},
                        {"rubbish", 0x100, false},
                        {"rubbish and yes", 0xABCDEF01, true},
                        {"rubbish, no", 0xABCDEF00, false}};
    const support::ImportPatch patch(support::library_under_test(), "Btsdk_IsBluetoothReady", answer_ready);
    ASSERT_EQ(patch.slots(), 1u);
    for_each_row(rows, [this](const Row& row) {
        ready_answer = row.answer;
        EXPECT_EQ(this->text(this->adapter()), this->loaded(row.ready ? kConnected : kNotReady));
        EXPECT_EQ(this->text(this->server(kServer)), this->loaded(row.ready ? kIdle : kNotReady));
        EXPECT_EQ(this->text(this->device(kPhone)),
                  row.ready ? this->paired(kConnected) : this->loaded(kIdle));
        EXPECT_EQ(this->text(this->service(kPushShortcut)), this->loaded(row.ready ? kIdle : kNotReady));
    });
}

TYPED_TEST(StatusText, WhileNotReadyAsksNothingElse) {
    set_ready(false);
    for_each_row(this->operations(), [&](const auto& row) {
        this->outcome(row.call);
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"});
    });
}

TYPED_TEST(StatusText, OfTheAdapterTellsOfConnections) {
    EXPECT_EQ(this->text(this->adapter()), this->loaded(kConnected));
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection", "Btsdk_EndEnumConnection"}));
    disconnect_all();
    EXPECT_EQ(this->text(this->adapter()), this->loaded(kIdle));
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumConnection"}))
        << "nothing to end";
    set_ready(false);
    EXPECT_EQ(this->text(this->adapter()), this->loaded(kNotReady));
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(StatusText, OfALocalServiceTellsItsStatus) {
    struct Row {
        const char* label;
        uint32_t result, status;
        UINT text;
    };
    const Row rows[] = {{"nothing", 0, 0, kNotReady},
                        {"started", 0, 1, kIdle},
                        {"stopped", 0, 2, kNotReady},
                        {"in use", 0, 3, kConnected},
                        {"four", 0, 4, kNotReady},
                        {"started and more bits", 0, 0x101, kNotReady},
                        {"in use and more bits", 0, 0x80000003, kNotReady},
                        {"failed", 1, 3, kNotReady},
                        {"failed otherwise", 0xFFFFFFFF, 1, kNotReady}};
    CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    for_each_row(rows, [&](const Row& row) {
        status.answer([&](BtHandle server, uint32_t* out) {
            EXPECT_EQ(server, kServer);
            EXPECT_EQ(*out, 0u) << "set before the call";
            *out = row.status;
            return row.result;
        });
        EXPECT_EQ(this->text(this->server(kServer)), this->loaded(row.text));
    });
}

TYPED_TEST(StatusText, OfALocalServiceAsksOnce) {
    EXPECT_EQ(this->text(this->server(kServer)), this->loaded(kIdle));
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetServerStatus"}));
    EXPECT_EQ(this->text(this->server(304)), this->loaded(kConnected));
    EXPECT_EQ(this->text(this->server(kUnknownHandle)), this->loaded(kNotReady));
    EXPECT_TRUE(support::trace_log().empty());
}

uint32_t connected_answer = 0;
uint32_t answer_connected(BtHandle /*device*/) { return connected_answer; }

TYPED_TEST(StatusText, OfADeviceIsConnectedOrIdleAndPerhapsPaired) {
    struct Row {
        const char* label;
        uint32_t connected, result, paired;
        bool shows_connected, shows_paired;
    };
    const Row rows[] = {{"neither", 0, 0, 0, false, false},
                        {"connected", 1, 0, 0, true, false},
                        {"paired", 0, 0, 1, false, true},
                        {"both", 1, 0, 1, true, true},
                        {"connected, rubbish above", 0xABCDEF01, 0, 0, true, false},
                        {"rubbish above alone", 0xABCDEF00, 0, 0, false, false},
                        {"connected by another number", 2, 0, 0, false, false},
                        {"and by the highest", 0xFF, 0, 0, false, false},
                        {"paired, rubbish above", 0, 0, 0xABCDEF01, false, true},
                        {"only rubbish above", 0, 0, 0x100, false, false},
                        {"paired by another number", 1, 0, 2, true, false},
                        {"failed", 1, 1, 1, true, false}};
    const support::ImportPatch patch(support::library_under_test(), "Btsdk_IsDeviceConnected",
                                     answer_connected);
    CallPatch paired("Btsdk_IsDevicePaired", Btsdk_IsDevicePaired);
    for_each_row(rows, [&](const Row& row) {
        connected_answer = row.connected;
        paired.answer([&](BtHandle device, uint32_t* out) {
            EXPECT_EQ(device, kPhone);
            EXPECT_EQ(*out, 0u) << "set before the call";
            *out = row.paired;
            return row.result;
        });
        const UINT id = row.shows_connected ? kConnected : kIdle;
        EXPECT_EQ(this->text(this->device(kPhone)), row.shows_paired ? this->paired(id) : this->loaded(id));
    });
}

TYPED_TEST(StatusText, OfADeviceReadsAsIdleWhileNotReady) {
    EXPECT_EQ(this->text(this->device(kPhone)), this->paired(kConnected));
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_IsDeviceConnected", "Btsdk_IsDevicePaired"}));
    set_ready(false);
    EXPECT_EQ(this->text(this->device(kPhone)), this->loaded(kIdle));
    set_ready(true);
    EXPECT_EQ(this->text(this->device(kUnknownHandle)), this->loaded(kIdle));
    EXPECT_TRUE(support::trace_log().empty());
}

// Connections of remote devices to local services alone.
void set_incoming(uint32_t device, const char* service_class) {
    VlSim_Set("/connections", (R"([{"handle": 450, "incoming": true, "role": 2, "device": )" +
                               std::to_string(device) + R"(, "class": ")" + service_class + "\"}]")
                                  .c_str());
}

TYPED_TEST(StatusText, OfAShortcutIsThatOfItsConnection) {
    VlSim_Set("/connections/1/incoming", "false");
    EXPECT_EQ(this->text(this->service(kHandsFreeShortcut)), this->loaded(kConnected));
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty", "Btsdk_GetAllIncomingConnections",
                     "Btsdk_GetShortCutProperty"}));
    EXPECT_EQ(support::trace_scopes(), Lines{"512 VlCm_IsShortcutConnected"});
    EXPECT_EQ(this->text(this->service(kPushShortcut)), this->loaded(kIdle));
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty", "Btsdk_GetShortCutProperty"}))
        << "no class of the relation table";
    EXPECT_EQ(this->text(this->service(kHeadsetShortcut)), this->loaded(kIdle));
}

TYPED_TEST(StatusText, OfAShortcutIsConnectedFromTheOtherSide) {
    struct Row {
        const char* label;
        uint32_t shortcut, device;
        const char* incoming;
        bool connected;
    };
    const Row rows[] = {
        {"headset", kHeadsetShortcut, kHeadset, "0x1112", true},
        {"hands-free", kHandsFreeShortcut, kHeadset, "0x111F", true},
        {"audio sink", 209, 9, "0x110A", true},
        {"headset, another row's class", kHeadsetShortcut, kHeadset, "0x111F", false},
        {"headset, its own class", kHeadsetShortcut, kHeadset, "0x1108", false},
        {"another device", kHeadsetShortcut, kPhone, "0x1112", false},
        {"a class without relation", kPushShortcut, kPhone, "0x1105", false},
    };
    for_each_row(rows, [this](const Row& row) {
        set_incoming(row.device, row.incoming);
        EXPECT_EQ(this->text(this->service(row.shortcut)), this->loaded(row.connected ? kConnected : kIdle));
        EXPECT_EQ(support::trace_scopes().empty(), row.connected) << "the shortcut itself is asked second";
    });
}

TYPED_TEST(StatusText, OfAShortcutFindsItsDeviceByAddress) {
    set_incoming(kHeadset, "0x1112");
    VlSim_Set("/shortcuts/4/deviceValid", "false");
    EXPECT_EQ(this->text(this->service(kHeadsetShortcut)), this->loaded(kConnected));
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty", "Btsdk_GetRemoteDeviceHandle",
                     "Btsdk_GetAllIncomingConnections", "Btsdk_GetAllIncomingConnections",
                     "Btsdk_GetConnectionProperty"}));
    VlSim_Fail("Btsdk_GetRemoteDeviceHandle", 1, 0);
    EXPECT_EQ(this->text(this->service(kHeadsetShortcut)), this->loaded(kIdle));
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetAllIncomingConnections").empty());
}

TYPED_TEST(StatusText, OfAShortcutThatCannotBeReadIsIdleAndAskedOnce) {
    EXPECT_EQ(this->text(this->service(kUnknownHandle)), this->loaded(kIdle));
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_GetShortCutProperty"}));
    EXPECT_TRUE(support::trace_log().empty());
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, 1);
    EXPECT_EQ(this->text(this->service(kHandsFreeShortcut)), this->loaded(kIdle));
}

TYPED_TEST(StatusText, OfAShortcutWhoseIncomingConnectionsCannotBeReadIsItsOwn) {
    set_incoming(kHeadset, "0x1112");
    this->blocks().fail_from(1);
    EXPECT_EQ(this->text(this->service(kHeadsetShortcut)), this->loaded(kIdle));
    this->blocks().fail_nth(0);
    VlSim_Fail("Btsdk_GetConnectionProperty", 1, 1);
    EXPECT_EQ(this->text(this->service(kHeadsetShortcut)), this->loaded(kIdle));
}

TYPED_TEST(StatusText, OfAShortcutThatFailsTheSecondTimeIsIdle) {
    disconnect_all();
    VlSim_Fail("Btsdk_GetShortCutProperty", 2, 1);
    const auto found = this->outcome(this->service(kHandsFreeShortcut));
    EXPECT_EQ(found.text, this->loaded(kIdle));
    EXPECT_EQ(support::trace_lines(), Lines{"Fail to Btsdk_GetShortCutProperty\r\n"});
}

}  // namespace
