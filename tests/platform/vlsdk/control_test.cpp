// The control interface: scenario, log, faults, hooks.
#include "stack_test.h"

#include <cstring>
#include <filesystem>
#include <fstream>

namespace vlsim_test {
namespace {

using Lines = std::vector<std::string>;

class Scenario : public StackTest {};

TEST_F(Scenario, ThatIsNoneChangesNothing) {
    const std::string before = state_value("");
    struct Row {
        const char* label;
        const char* json;
    };
    constexpr Row kRows[] = {
        {"no JSON", "{"},
        {"no object", "[]"},
        {"list is none", R"({"devices": {}})"},
        {"item is no object", R"({"devices": [1]})"},
        {"handle twice", R"({"devices": [{"handle": 1}, {"handle": 1}]})"},
        {"handle of none", R"({"servers": [{"handle": 0}]})"},
        {"address too short", R"({"devices": [{"address": "11:22:33:44:55"}]})"},
        {"address of other letters", R"({"devices": [{"address": "11:22:33:44:55:GG"}]})"},
        {"class too large", R"({"servers": [{"class": 65536}]})"},
        {"negative number", R"({"servers": [{"status": -1}]})"},
        {"number with a tail", R"({"servers": [{"status": "12x"}]})"},
        {"flag is no flag", R"({"ready": 1})"},
        {"text is no text", R"({"servers": [{"name": 1}]})"},
        {"half a byte", R"({"servers": [{"extension": "0"}]})"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.label);
        EXPECT_NE(VlSim_LoadScenario(row.json), 0u);
        EXPECT_EQ(state_value(""), before);
    }
    EXPECT_NE(VlSim_LoadScenario(nullptr), 0u);
    EXPECT_NE(VlSim_LoadScenarioFile("no such file"), 0u);
    EXPECT_NE(VlSim_Patch("{"), 0u);
    EXPECT_NE(VlSim_Set("no pointer", "1"), 0u);
    EXPECT_EQ(state_value(""), before);
}

TEST_F(Scenario, OfNothingIsAStackThatIsNotReady) {
    ASSERT_EQ(VlSim_LoadScenario("{}"), 0u);
    EXPECT_EQ(Btsdk_IsBluetoothReady(), 0);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 0u);
    EXPECT_TRUE(walk_devices().empty());
}

TEST_F(Scenario, ComesFromAFileWithANameInAnyScript) {
    const std::filesystem::path path = std::filesystem::path(home_folder()) / u8"сцена.json";
    std::ofstream(path) << R"({"devices": [{"name": "one"}]})";
    const std::u8string name = path.u8string();
    EXPECT_EQ(VlSim_LoadScenarioFile(reinterpret_cast<const char*>(name.c_str())), 0u);
    EXPECT_EQ(walk_devices().size(), 1u);
}

TEST_F(Scenario, GivesHandlesThatWereNeverUsed) {
    ASSERT_EQ(VlSim_LoadScenario(R"({"devices": [{"handle": 7}, {"services": [{}]}], "servers": [{}]})"), 0u);
    const auto devices = walk_devices();
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[1].handle, 8u);
    EXPECT_EQ(walk_services(8)[0].handle, 9u);
    EXPECT_EQ(walk_servers()[0].handle, 10u);
    EXPECT_EQ(state_value("/nextHandle"), "11");
    ASSERT_EQ(VlSim_Patch(R"({"servers": [{}]})"), 0u);
    EXPECT_EQ(walk_servers()[0].handle, 11u);
}

TEST_F(Scenario, IsPatchedSetAndRead) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 0, "adFunction": null})"), 0u);
    EXPECT_EQ(state_value("/mobileActive"), "0");
    EXPECT_EQ(state_value("/adFunction"), "");
    EXPECT_EQ(Btsdk_IsSupportADFunction(), 0u);
    ASSERT_EQ(VlSim_Set("/devices/0/name", R"("Телефон")"), 0u);
    EXPECT_EQ(state_value("/devices/0/name"), "\"Телефон\"");
    EXPECT_EQ(VlSim_Get("/none/0", nullptr, 0), 0u);
    EXPECT_EQ(VlSim_Get("no pointer", nullptr, 0), 0u);
    char text[4] = {};
    EXPECT_EQ(VlSim_Get("/ready", text, sizeof text), 4u);
    EXPECT_STREQ(text, "tru");
}

TEST_F(Scenario, NumbersMayBeWrittenInHexadecimal) {
    ASSERT_EQ(VlSim_LoadScenario(R"({"mobileActive": "0x10", "adFunction": 17})"), 0u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 16u);
    EXPECT_EQ(Btsdk_IsSupportADFunction(), 17u);
}

TEST_F(Scenario, InboxIsAFolderNamedByTheAddress) {
    char path[MAX_PATH] = {};
    const uint32_t length = VlSim_GetInboxFolder(1, path, sizeof path);
    EXPECT_EQ(length, std::strlen(path));
    EXPECT_EQ(std::string(path), home_folder() + "\\inbox\\A4-C1-38-2D-5E-01");
    EXPECT_TRUE(std::filesystem::is_directory(path));
    EXPECT_EQ(VlSim_GetInboxFolder(9999, path, sizeof path), 0u);
}

TEST_F(Scenario, ResetBringsTheNeighbourhoodBack) {
    VlSim_LoadScenario("{}");
    VlSim_Fail("Btsdk_IsMobileActive", 0, 5);
    void* const block = Btsdk_MallocMemory(1);
    Btsdk_EndEnumConnection(1);
    VlSim_SetLogging(0);
    ASSERT_EQ(VlSim_Reset(), 0u);
    EXPECT_EQ(VlSim_CallCount(nullptr), 0u);
    EXPECT_EQ(VlSim_MisuseCount(), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 1u);
    EXPECT_EQ(VlSim_CallCount("Btsdk_IsMobileActive"), 1u);
    EXPECT_GE(walk_devices().size(), 8u);
    Btsdk_FreeMemory(block);  // taken before: no misuse
    EXPECT_EQ(VlSim_MisuseCount(), 0u);
}

class Log : public StackTest {};

TEST_F(Log, ShowsArgumentsAsGivenAndResults) {
    uint32_t length = 3;
    char name[3];
    uint8_t address[6] = {1, 2, 3, 4, 5, 6};
    ShortcutProperty record = shortcut_query(201, 16);
    Btsdk_GetRemoteDeviceName(1, name, &length);
    Btsdk_GetRemoteDeviceHandle(address);
    Btsdk_GetShortCutProperty(&record);
    Btsdk_GetAllShortCuts(nullptr, 0);
    Btsdk_GetPrivateProfileInt("General", "None", -7, "C:\\x.ini");
    Btsdk_WritePrivateProfileString("General", nullptr, nullptr, "?");
    Btsdk_CreateFile("?", 1, 3, 0, nullptr);
    Btsdk_FreeMemory(nullptr);
    Btsdk_RegCloseKey(HKEY_LOCAL_MACHINE);
    Btsdk_IsBluetoothReady();
    EXPECT_EQ(logged_calls(), (Lines{
                                  "Btsdk_GetRemoteDeviceName(1, out, {3}) = 0",
                                  "Btsdk_GetRemoteDeviceHandle(06:05:04:03:02:01) = 0",
                                  "Btsdk_GetShortCutProperty({shortcut 201, mask 16}) = 0",
                                  "Btsdk_GetAllShortCuts(null, 0) = 10",
                                  "Btsdk_GetPrivateProfileInt(\"General\", \"None\", -7, \"C:\\x.ini\") = "
                                  "4294967289",
                                  "Btsdk_WritePrivateProfileString(\"General\", null, null, \"?\") = 0",
                                  "Btsdk_CreateFile(\"?\", 1, 3, 0, null) = invalid",
                                  "Btsdk_FreeMemory(null)",
                                  "Btsdk_RegCloseKey(HKEY_LOCAL_MACHINE) = 0",
                                  "Btsdk_IsBluetoothReady() = 1",
                              }));
}

TEST_F(Log, CountsByOperationUntilCleared) {
    Btsdk_IsMobileActive();
    Btsdk_IsMobileActive();
    Btsdk_IsSupportADFunction();
    EXPECT_EQ(VlSim_CallCount("Btsdk_IsMobileActive"), 2u);
    EXPECT_EQ(VlSim_CallCount("Btsdk_IsBluetoothReady"), 0u);
    EXPECT_EQ(VlSim_CallCount(nullptr), 3u);
    char text[8] = "old";
    EXPECT_EQ(VlSim_GetCall(3, text, sizeof text), 0u);
    EXPECT_STREQ(text, "");
    VlSim_ClearLog();
    EXPECT_EQ(VlSim_CallCount(nullptr), 0u);
}

TEST_F(Log, KeepsNothingWhileItIsOff) {
    VlSim_SetLogging(0);
    Btsdk_IsMobileActive();
    EXPECT_EQ(VlSim_CallCount(nullptr), 0u);
    VlSim_SetLogging(1);
    Btsdk_IsMobileActive();
    EXPECT_EQ(VlSim_CallCount(nullptr), 1u);
}

class Fault : public StackTest {};

TEST_F(Fault, StrikesTheNthCallFromNowOnce) {
    Btsdk_IsMobileActive();
    VlSim_Fail("Btsdk_IsMobileActive", 2, 50);
    VlSim_Fail("Btsdk_IsMobileActive", 4, 51);
    std::vector<uint32_t> answers;
    for (int call = 0; call < 6; ++call) answers.push_back(Btsdk_IsMobileActive());
    EXPECT_EQ(answers, (std::vector<uint32_t>{1, 50, 1, 51, 1, 1}));
    EXPECT_EQ(logged_calls()[2], "Btsdk_IsMobileActive() = 50");
}

TEST_F(Fault, StrikesEveryCallUntilClearedAlsoWithoutTheLog) {
    VlSim_SetLogging(0);
    VlSim_Fail("Btsdk_IsMobileActive", 0, 50);
    EXPECT_EQ(Btsdk_IsMobileActive(), 50u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 50u);
    VlSim_ClearFaults();
    EXPECT_EQ(Btsdk_IsMobileActive(), 1u);
}

TEST_F(Fault, WritesNothing) {
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, 9);
    ShortcutProperty record = shortcut_query(201, 84);
    const ShortcutProperty before = record;
    EXPECT_EQ(Btsdk_GetShortCutProperty(&record), 9u);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
    VlSim_Fail("Btsdk_DeleteShortCut", 1, 9);
    EXPECT_EQ(Btsdk_DeleteShortCut(201), 9u);
    EXPECT_EQ(Btsdk_GetShortCutByServiceClass(0x1105, nullptr, 0), 1u);
}

TEST_F(Fault, ReachesEveryKindOfResult) {
    VlSim_Fail("Btsdk_MallocMemory", 1, 0);
    EXPECT_EQ(Btsdk_MallocMemory(10), nullptr);
    VlSim_Fail("Btsdk_CreateFile", 1, 0xFFFFFFFF);
    EXPECT_EQ(Btsdk_CreateFile("x", GENERIC_WRITE, CREATE_ALWAYS, 0, nullptr), INVALID_HANDLE_VALUE);
    VlSim_Fail("Btsdk_IsBluetoothReady", 1, 2);
    EXPECT_EQ(Btsdk_IsBluetoothReady(), 2);
    VlSim_Fail("Btsdk_GetAllIncomingConnections", 1, 0xFFFFFFFF);
    EXPECT_EQ(Btsdk_GetAllIncomingConnections(nullptr, 0), -1);
    void* const block = Btsdk_MallocMemory(10);
    VlSim_Fail("Btsdk_FreeMemory", 1, 0);
    Btsdk_FreeMemory(block);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 1u);
    Btsdk_FreeMemory(block);
}

// All that the DLL exports under the stack's prefix.
std::vector<std::string> exported_operations() {
    const auto* base = reinterpret_cast<const char*>(GetModuleHandleA("VlSDK.dll"));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(base + exports->AddressOfNames);
    std::vector<std::string> found;
    for (DWORD index = 0; index < exports->NumberOfNames; ++index) {
        const std::string name = base + names[index];
        if (name.starts_with("Btsdk_")) found.push_back(name);
    }
    return found;
}

TEST_F(Fault, AndHookAreKnownForEveryExportedOperation) {
    const auto names = exported_operations();
    EXPECT_EQ(names.size(), 74u);
    for (const std::string& name : names) {
        VlSim_Fail(name.c_str(), 1, 1);
        VlSim_Hook(name.c_str(), nullptr);
    }
    EXPECT_EQ(take_misuse(), Lines());
    VlSim_Fail("Btsdk_Unknown", 1, 1);
    VlSim_Hook(nullptr, nullptr);
    EXPECT_EQ(take_misuse(), (Lines{"VlSim_Fail: there is no operation Btsdk_Unknown",
                                    "VlSim_Hook: there is no operation null"}));
}

class Hook : public StackTest {};

TEST_F(Hook, AnswersInsteadOfTheStack) {
    VlSim_Hook("Btsdk_GetDefaultShortCut", reinterpret_cast<void*>(+[](uint16_t service_class) -> BtHandle {
                   return service_class + 1u;
               }));
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1105), 0x1106u);
    EXPECT_EQ(logged_calls().back(), "Btsdk_GetDefaultShortCut(4357) = 4358");
    VlSim_Hook("Btsdk_GetDefaultShortCut", nullptr);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1105), 201u);
}

uint32_t longer_name(BtHandle device, char* name, uint32_t* length) {
    const uint32_t result = Btsdk_GetRemoteDeviceName(device, name, length);
    name[0] = 'X';
    return result;
}

TEST_F(Hook, MayPassTheCallOn) {
    VlSim_SetLogging(0);
    VlSim_Hook("Btsdk_GetRemoteDeviceName", reinterpret_cast<void*>(longer_name));
    for (int again = 0; again < 2; ++again) {
        char name[100];
        uint32_t length = sizeof name;
        EXPECT_EQ(Btsdk_GetRemoteDeviceName(4, name, &length), 0u);
        EXPECT_STREQ(name, "Xeyboard K380");
    }
}

TEST_F(Hook, GivesWayToAFault) {
    VlSim_Hook("Btsdk_IsMobileActive", reinterpret_cast<void*>(+[]() -> uint32_t { return 70; }));
    VlSim_Fail("Btsdk_IsMobileActive", 1, 60);
    EXPECT_EQ(Btsdk_IsMobileActive(), 60u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 70u);
    VlSim_ClearFaults();
    EXPECT_EQ(Btsdk_IsMobileActive(), 1u);
}

TEST_F(Hook, KeepsTheRubbishAboveAYesNoAnswer) {
    VlSim_Hook("Btsdk_IsBluetoothReady", reinterpret_cast<void*>(+[]() -> uint8_t { return 1; }));
    EXPECT_GT(reinterpret_cast<uint64_t (*)()>(Btsdk_IsBluetoothReady)(), 0xFFu);
}

}  // namespace
}  // namespace vlsim_test
