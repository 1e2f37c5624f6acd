// Whether a COM port is taken: by servers, then shortcuts, then virtual devices, up to the first yes.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <shlobj.h>
#include <string.h>

using namespace shortcuts_test;

namespace {

constexpr char kStart[] = "Btsdk_StartEnumLocalServer", kEnum[] = "Btsdk_EnumLocalServer",
               kEnd[] = "Btsdk_EndEnumLocalServer";

std::string server_read(uint32_t server) {
    return "Btsdk_GetServerAttributes(" + std::to_string(server) + ", {mask 8}) = 0";
}
std::string count_of(uint16_t service_class, size_t count) {
    return "Btsdk_GetShortCutByServiceClass(" + std::to_string(service_class) +
           ", null, 0) = " + std::to_string(count);
}
std::string fetch_of(uint16_t service_class, size_t count) {
    return "Btsdk_GetShortCutByServiceClass(" + std::to_string(service_class) + ", out, " +
           std::to_string(count) + ") = " + std::to_string(count);
}
std::string length_read(uint32_t shortcut) {
    return "Btsdk_GetShortCutProperty({shortcut " + std::to_string(shortcut) + ", mask 64}) = 0";
}
std::string bytes_read(uint32_t shortcut) {
    return "Btsdk_GetShortCutProperty({shortcut " + std::to_string(shortcut) +
           ", mask 64, parameterLength 10}) = 0";
}
std::string device_read(int number, uint32_t length) {
    return "Btsdk_GetPrivateProfileString(\"VirtualDevice" + std::to_string(number) +
           "\", \"VirtualDevice\", \"\", out, 20, \"" +
           support::settings_path(support::SettingsFile::kCommon) + "\") = " + std::to_string(length);
}
// The walk over the servers shows its handle, which differs each time.
Lines from_classes_on() {
    Lines calls = support::sdk_calls();
    while (!calls.empty() && calls.front().find("ServiceClass") == std::string::npos)
        calls.erase(calls.begin());
    return calls;
}

class PortUse : public support::SuiteTest {
protected:
    void SetUp() override {
        VlSim_Set("/servers", R"([
            {"handle": 301, "class": "0x1103", "port": 40},
            {"handle": 302, "class": "0x1101", "port": 5},
            {"handle": 303, "class": "0x1101"},
            {"handle": 304, "class": "0x1101", "port": 6}])");
        VlSim_Set("/shortcuts", R"([
            {"handle": 21, "class": "0x1111", "parameter": "0000000000 32 000000 14"},
            {"handle": 22, "class": "0x1127", "parameter": "0000000000 13 000000 32"},
            {"handle": 23, "class": "0x1126", "parameter": "0000000000 12 000000 32"},
            {"handle": 24, "class": "0x1103", "parameter": "0000000000 32 000000 11"},
            {"handle": 25, "class": "0x1101", "parameter": "0000000000 10 000000 32"},
            {"handle": 26, "class": "0x1101", "parameter": "0000000000 15 000000 32"},
            {"handle": 27, "class": "0x1105", "parameter": "0000000000 32 000000 32"}])");
        support::clear_sdk_log();
    }
    void virtual_devices(const char* count) {
        settings().common("LocalBluetooth", "VirtualDeviceNum", count);
    }
    void virtual_device(int number, const std::string& text) {
        settings().common(("VirtualDevice" + std::to_string(number)).c_str(), "VirtualDevice", text);
    }
    static BOOL ask(int port) {
        support::clear_sdk_log();
        return VlCm_IsComportBeenUsed(port);
    }
    static Lines without_matching_server() {
        return {kStart,
                kEnum,
                kEnum,
                "Btsdk_GetServerAttributes",
                "Btsdk_FreeMemory",
                kEnum,
                "Btsdk_GetServerAttributes",
                kEnum,
                "Btsdk_GetServerAttributes",
                "Btsdk_FreeMemory",
                kEnum,
                kEnd};
    }
};

}  // namespace

TEST_F(PortUse, ByASerialServerEndsTheWalkAndAsksNothingElse) {
    support::CallPatch number("GetPrivateProfileIntA", GetPrivateProfileIntA);
    support::CallPatch folder("SHGetFolderPathA", SHGetFolderPathA);
    EXPECT_EQ(ask(5), TRUE);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{kStart, kEnum, kEnum, "Btsdk_GetServerAttributes", "Btsdk_FreeMemory", kEnd}));
    EXPECT_TRUE(support::has_line(support::sdk_calls(), server_read(302)));
    EXPECT_EQ(ask(6), TRUE);
    EXPECT_EQ(support::sdk_operations(), (Lines{kStart, kEnum, kEnum, "Btsdk_GetServerAttributes",
                                                "Btsdk_FreeMemory", kEnum, "Btsdk_GetServerAttributes", kEnum,
                                                "Btsdk_GetServerAttributes", "Btsdk_FreeMemory", kEnd}));
    EXPECT_EQ(number.count() + folder.count(), 0u);
}

TEST_F(PortUse, ServersOfOtherClassesAreNotAsked) {
    EXPECT_EQ(ask(40), FALSE);
    EXPECT_FALSE(support::has_line(support::sdk_calls(), server_read(301)));
}

TEST_F(PortUse, ByAShortcutIsLookedForClassByClassUpToTheFirst) {
    const Lines serial{count_of(0x1101, 2), fetch_of(0x1101, 2), length_read(25), bytes_read(25)};
    const Lines second_serial{length_read(26), bytes_read(26)};
    const Lines dial_up{count_of(0x1103, 1), fetch_of(0x1103, 1), length_read(24), bytes_read(24)};
    const Lines print{count_of(0x1126, 1), fetch_of(0x1126, 1), length_read(23), bytes_read(23)};
    const Lines scan{count_of(0x1127, 1), fetch_of(0x1127, 1), length_read(22), bytes_read(22)};
    const Lines fax{count_of(0x1111, 1), fetch_of(0x1111, 1), length_read(21), bytes_read(21)};
    const struct {
        const char* label;
        int port;
        std::vector<Lines> calls;
    } rows[] = {
        {"serial port", 0x10, {serial}},
        {"second serial port", 0x15, {serial, second_serial}},
        {"dial-up", 0x11, {serial, second_serial, dial_up}},
        {"print", 0x12, {serial, second_serial, dial_up, print}},
        {"scan", 0x13, {serial, second_serial, dial_up, print, scan}},
        {"fax", 0x14, {serial, second_serial, dial_up, print, scan, fax}},
    };
    support::CallPatch number("GetPrivateProfileIntA", GetPrivateProfileIntA);
    support::CallPatch folder("SHGetFolderPathA", SHGetFolderPathA);
    support::for_each_row(rows, [](const auto& row) {
        EXPECT_EQ(ask(row.port), TRUE);
        Lines expected;
        for (const Lines& part : row.calls) expected.insert(expected.end(), part.begin(), part.end());
        EXPECT_EQ(from_classes_on(), expected);
        Lines operations = support::sdk_operations();
        operations.resize(without_matching_server().size());
        EXPECT_EQ(operations, without_matching_server());
    });
    EXPECT_EQ(number.count() + folder.count(), 0u);
}

TEST_F(PortUse, ThePlaceOfAShortcutsPortIsThatOfItsClass) {
    EXPECT_EQ(ask(0x32), FALSE);  // stands at the other place of each class
}

TEST_F(PortUse, ClassesWithoutShortcutsAreCountedOnly) {
    VlSim_Set("/shortcuts", "[]");
    EXPECT_EQ(ask(0x10), FALSE);
    EXPECT_EQ(from_classes_on(), (Lines{count_of(0x1101, 0), count_of(0x1103, 0), count_of(0x1126, 0),
                                        count_of(0x1127, 0), count_of(0x1111, 0)}));
}

TEST_F(PortUse, ZeroHandlesOfAListArePassedOver) {
    support::CallPatch list("Btsdk_GetShortCutByServiceClass", Btsdk_GetShortCutByServiceClass);
    list.answer([](uint16_t, BtHandle* handles, uint32_t) {
        if (handles != nullptr) handles[2] = 26;
        return 3U;
    });
    EXPECT_EQ(ask(0x15), TRUE);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetShortCutProperty"), (Lines{length_read(26), bytes_read(26)}));
}

TEST_F(PortUse, ListsAreReadNoFurtherThanTheyWereCounted) {
    support::CallPatch list("Btsdk_GetShortCutByServiceClass", Btsdk_GetShortCutByServiceClass);
    list.answer([](uint16_t, BtHandle* handles, uint32_t room) {
        if (handles == nullptr) return 1U;
        EXPECT_EQ(room, 1u);
        EXPECT_EQ(handles[0], 0u);
        handles[0] = 25;
        return 1000U;
    });
    EXPECT_EQ(ask(0x32), TRUE);  // of the classes with byte 9
    EXPECT_EQ(ask(0x15), FALSE);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetShortCutProperty").size(), 10u);
}

TEST_F(PortUse, AClassWithoutMemoryForItsListIsPassedOver) {
    blocks().fail_nth(1);
    EXPECT_EQ(ask(0x10), FALSE);
    EXPECT_TRUE(support::has_in_order(from_classes_on(), {count_of(0x1101, 2), count_of(0x1103, 1)}));
    blocks().fail_nth(2);  // the parameter of the first one
    EXPECT_EQ(ask(0x10), FALSE);
    blocks().fail_nth(1);
    EXPECT_EQ(ask(0x11), TRUE);
}

TEST_F(PortUse, MinusOneIsNobodys) {
    VlSim_Set("/shortcuts", R"([{"handle": 21, "class": "0x1111"}, {"handle": 22, "class": "0x1101"}])");
    virtual_devices("2");
    virtual_device(0, "COM-1");
    EXPECT_EQ(ask(-1), FALSE);
    EXPECT_TRUE(support::has_line(support::sdk_calls(), device_read(1, 0)));
}

TEST_F(PortUse, OfAPortThatFitsInNoByteIsNot) {
    for (const int port : {256 + 5, 256 + 0x10, -251, 0x10005}) EXPECT_EQ(ask(port), FALSE) << port;
}

TEST_F(PortUse, GoesOnWhenTheServersCannotBeWalked) {
    VlSim_Fail(kStart, 1, 0);
    EXPECT_EQ(ask(0x10), TRUE);
    EXPECT_TRUE(support::sdk_calls(kEnum).empty());
    EXPECT_TRUE(support::sdk_calls(kEnd).empty());
    VlSim_Fail(kEnum, 2, 0);
    EXPECT_EQ(ask(5), FALSE);
    EXPECT_EQ(support::sdk_calls(kEnd).size(), 1u);
    VlSim_Fail("Btsdk_GetServerAttributes", 1, kFailed);
    EXPECT_EQ(ask(5), FALSE);
    VlSim_Fail("Btsdk_GetServerAttributes", 1, kFailed);
    EXPECT_EQ(ask(6), TRUE);
}

TEST_F(PortUse, ServersAreWalkedWithZeroedRecords) {
    support::CallPatch walk("Btsdk_EnumLocalServer", Btsdk_EnumLocalServer);
    walk.answer([&](BtHandle, ServerAttributes* record) {
        const ServerAttributes zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0) << walk.count();
        memset(record, 0xAA, sizeof *record);
        record->serviceClass = walk.count() < 4 ? 0x1103 : 0x1101;
        return walk.count() < 4 ? 302U : 0U;  // what the last one left does not count
    });
    EXPECT_EQ(ask(5), FALSE);
    EXPECT_EQ(walk.count(), 4u);
}

TEST_F(PortUse, ByAVirtualDeviceOfTheCountedSections) {
    virtual_devices("2");
    virtual_device(0, "COM70");
    virtual_device(1, "COM71");
    virtual_device(2, "COM72");
    EXPECT_EQ(ask(70), TRUE);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileString"), Lines{device_read(0, 5)});
    EXPECT_EQ(ask(71), TRUE);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileString"),
              (Lines{device_read(0, 5), device_read(1, 5)}));
    EXPECT_EQ(ask(72), FALSE);
    EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileString").size(), 2u);
}

TEST_F(PortUse, NumberOfVirtualDevicesIsReadByWindowsAndNotByTheStack) {
    virtual_devices("1");
    virtual_device(0, "COM70");
    const std::string file = support::settings_path(support::SettingsFile::kCommon);
    support::CallPatch number("GetPrivateProfileIntA", GetPrivateProfileIntA);
    number.answer([&](LPCSTR section, LPCSTR key, INT fallback, LPCSTR path) {
        EXPECT_STREQ(section, "LocalBluetooth");
        EXPECT_STREQ(key, "VirtualDeviceNum");
        EXPECT_EQ(fallback, 0);
        EXPECT_EQ(path, file);
        return number.real(section, key, fallback, path);
    });
    EXPECT_EQ(ask(70), TRUE);
    EXPECT_EQ(number.count(), 1u);
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfileInt").empty());
    number.fail_from(2, 0);
    EXPECT_EQ(ask(70), FALSE);
}

TEST_F(PortUse, WithoutANumberOrWithANegativeOneThereAreNoVirtualDevices) {
    virtual_device(0, "COM70");
    EXPECT_EQ(ask(70), FALSE);
    for (const char* count : {"0", "-1", "-2147483648", "many"}) {
        virtual_devices(count);
        EXPECT_EQ(ask(70), FALSE) << count;
        EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfileString").empty()) << count;
    }
}

TEST_F(PortUse, VirtualDevicesPortIsTheDigitsBehindThreeCharacters) {
    virtual_devices("1");
    const struct {
        const char* label;
        const char* text;
        int port;
    } rows[] = {
        {"usual", "COM77", 77},
        {"nothing behind", "COM", 0},
        {"letter behind", "COM78x", 78},
        {"leading blank", "\" COM79\"", 0},
        {"blank between", "COM 79", 0},
        {"sign", "COM+79", 0},
        {"minus", "COM-79", 0},
        {"other letters", "xyz80", 80},
        {"zeros", "COM0081", 81},
        {"two characters", "CO", 0},
        {"empty", "", 0},
        {"digits alone", "12382", 82},
        {"beyond 32 bits", "COM4294967379", 0x7FFFFFFF},
        {"cut at 19 bytes", "COM000000000000008399", 83},
    };
    support::for_each_row(rows, [this](const auto& row) {
        virtual_device(0, row.text);
        const bool none = row.port == 0x7FFFFFFF;
        EXPECT_EQ(ask(row.port), none ? FALSE : TRUE);
        for (const int port : {0, 77, 78, 79, 80, 81, 82, 83, 8399}) {
            EXPECT_EQ(ask(port), port == row.port ? TRUE : FALSE) << port;
        }
    });
}

TEST_F(PortUse, AVirtualDeviceThatCannotBeReadHasPort0) {
    virtual_devices("3");
    support::CallPatch text("Btsdk_GetPrivateProfileString", Btsdk_GetPrivateProfileString);
    text.answer([&](const char*, const char*, const char*, char* buffer, uint32_t size, const char*) {
        for (uint32_t i = 0; i < size; ++i) EXPECT_EQ(buffer[i], 0) << text.count() << ' ' << i;
        memcpy(buffer, "COM77777", 9);
        if (text.count() == 2) memcpy(buffer, "C", 2);
        return text.count() == 2 ? 1U : 0U;
    });
    EXPECT_EQ(ask(77777), FALSE);
    EXPECT_EQ(text.count(), 3u);
}

TEST_F(PortUse, ScopesOfTheAskedFunctionsAreNested) {
    EXPECT_EQ(ask(0x11), TRUE);
    const Lines inner{">512 VlCm_GetComPortByShortcut", "<512 VlCm_GetComPortByShortcut"};
    Lines expected{">512 VlCm_IsComportBeenUsed"};
    for (int i = 0; i < 3; ++i) expected.insert(expected.end(), inner.begin(), inner.end());
    expected.emplace_back("<512 VlCm_IsComportBeenUsed");
    EXPECT_EQ(support::trace_log(), expected);
}

TEST_F(PortUse, NothingIsLeftOpenWhateverFails) {
    virtual_devices("1");
    virtual_device(0, "COM70");
    EXPECT_GT(fail_each_operation(0, [] { VlCm_IsComportBeenUsed(70); }), 20u);
}
