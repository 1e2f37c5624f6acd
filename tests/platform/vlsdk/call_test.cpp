// The call log, faults and hooks.
#include "stack_test.h"

#include <cstring>

namespace vlsim_test {
namespace {

using Lines = std::vector<std::string>;

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

// A table of the loaded DLL.
template <typename Table>
const Table* directory(const char* base, size_t entry) {
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    return reinterpret_cast<const Table*>(base + headers->OptionalHeader.DataDirectory[entry].VirtualAddress);
}

const char* stack_base() { return reinterpret_cast<const char*>(GetModuleHandleA("VlSDK.dll")); }

// All that the DLL exports under the stack's prefix.
Lines exported_operations() {
    const char* const base = stack_base();
    const auto* exports = directory<IMAGE_EXPORT_DIRECTORY>(base, IMAGE_DIRECTORY_ENTRY_EXPORT);
    const auto* names = reinterpret_cast<const DWORD*>(base + exports->AddressOfNames);
    Lines found;
    for (DWORD index = 0; index < exports->NumberOfNames; ++index) {
        const std::string name = base + names[index];
        if (name.starts_with("Btsdk_")) found.push_back(name);
    }
    return found;
}

TEST(Module, LoadsWithTheKernelAndTheRuntimeAlone) {
    const char* const base = stack_base();
    Lines imported;
    for (auto* module = directory<IMAGE_IMPORT_DESCRIPTOR>(base, IMAGE_DIRECTORY_ENTRY_IMPORT);
         module->Name != 0; ++module) {
        imported.emplace_back(base + module->Name);
    }
    EXPECT_EQ(imported, (Lines{"KERNEL32.dll", "msvcrt.dll"}));
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
    EXPECT_GT(reinterpret_cast<uint64_t (*)()>(reinterpret_cast<void*>(Btsdk_IsBluetoothReady))(), 0xFFu);
}

}  // namespace
}  // namespace vlsim_test
