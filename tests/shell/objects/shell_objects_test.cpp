// What no export shows: items of other services, the Send-To target, and the rules of single steps.
#include "shell/folder_class.h"
#include "shell/items.h"

#include "../shell_scene.h"

#include <shlobj.h>

using namespace shell_test;
using namespace vl::shell;

namespace {

constexpr char kCache[] = "Software\\VLShellFolderCache";
constexpr char kClassName[] = "{8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6}";
constexpr CLSID kClass = {0x8E3F1A02, 0x9B4C, 0x4D5E, {0x8F, 0x60, 0x71, 0x82, 0x93, 0xA4, 0xB5, 0xC6}};
constexpr CLSID kUntouched = {0xCDCDCDCD, 0xCDCD, 0xCDCD, {}};

Bytes bytes(const UniqueItemList& list) { return copy_of(list.get()); }

// Blocks are counted here: the program is the library itself, which the fixture does not watch.
class ShellObjects : public ShellTest {
protected:
    // The first text that is no identifier makes the system keep a key open: it is no leak.
    static void SetUpTestSuite() {
        CLSID id;
        EXPECT_NE(CLSIDFromString(L"no class", &id), S_OK);
    }

    ShellObjects() {
        join_.answer([this](LPCITEMIDLIST parent, LPCITEMIDLIST child) {
            ++live_;
            return join_.real(parent, child);
        });
        alloc_.answer([this](SIZE_T size) {
            ++live_;
            return alloc_.real(size);
        });
        free_.answer([this](LPVOID block) {
            live_ -= block != nullptr ? 1 : 0;
            free_.real(block);
        });
    }
    ~ShellObjects() override { EXPECT_EQ(live_, 0); }

    void fail_allocations() { alloc_.fail_from(1, static_cast<void*>(nullptr)); }
    void cache(const char* name, const Bytes& data) {
        registry_.set(HKEY_LOCAL_MACHINE, kCache, name, REG_BINARY, data);
    }

private:
    int live_ = 0;
    support::RegistryScope registry_;
    support::CallPatch<LPITEMIDLIST(LPCITEMIDLIST, LPCITEMIDLIST)> join_{"ILCombine", ILCombine};
    support::CallPatch<LPVOID(SIZE_T)> alloc_{"CoTaskMemAlloc", CoTaskMemAlloc};
    support::CallPatch<void(LPVOID)> free_{"CoTaskMemFree", CoTaskMemFree};
};

using ServiceOfDevice = ShellObjects;
using ServiceByAddress = ShellObjects;
using SendToItem = ShellObjects;
using FolderClass = ShellObjects;
using DeviceFolder = ShellObjects;
using JoinedLists = ShellObjects;

}  // namespace

TEST_F(ServiceOfDevice, TypeAndFieldFollowTheClassThatIsAskedFor) {
    struct Row {
        const char* label;
        uint16_t service_class;
        uint32_t type;
    };
    constexpr Row kRows[] = {
        {"object push", 0x1105, 0x6},
        {"file transfer", 0x1106, 0xC0000016},
        {"PANU", 0x1115, 0x6},
        {"NAP", 0x1116, 0x6},
        {"GN", 0x1117, 0x6},
        {"below the phonebook", 0x112E, 0x6},
        {"phonebook", 0x112F, 0xC0080006},
        {"above the phonebook", 0x1130, 0x6},
        {"messages", 0x1132, 0xC1000006},
        {"highest", 0xFFFF, 0x6},
    };
    support::CallPatch asked("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    asked.answer([](BtHandle, uint16_t, BtHandle* handles, uint32_t) {
        handles[0] = 23;
        return 1U;
    });
    support::for_each_row(kRows, [&](const Row& row) {
        // The shortcut's own class is 0x1106 throughout.
        const Item expected{row.type, kPhoneClass, row.service_class, kPhoneAddress, "OBEX File Transfer"};
        EXPECT_EQ(bytes(FillRmtSvcPidlInfo(kPhone, row.service_class)), list_of({bytes_of(expected)}));
        EXPECT_EQ(asked.calls().back(),
                  (std::make_tuple(kPhone, row.service_class, std::get<2>(asked.calls().back()), 1U)));
    });
}

TEST_F(ServiceOfDevice, NetworkServiceKeepsClassAndName) {
    const UniqueItemList item = FillRmtSvcPidlInfo(6, 0x1116);
    const Bytes address{0x06, 0x71, 0xDA, 0x7D, 0x1A, 0x00};
    EXPECT_EQ(bytes(item), list_of({bytes_of({0x6, 0x020300, 0x1116, address, "Network Access Point"})}));
}

TEST_F(ServiceOfDevice, NameIsCutAt79Bytes) {
    support::CallPatch read("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
    read.answer([](ShortcutProperty* record) {
        EXPECT_EQ(record->mask, 4);
        memset(record->serviceName, 'n', sizeof record->serviceName);
        record->deviceClass = 0x41414141;
        return 0U;
    });
    EXPECT_EQ(bytes(FillRmtSvcPidlInfo(kPhone, 0x1106)),
              list_of({bytes_of({0xC0000016, 0x41414141, 0x1106, Bytes(6, 0), std::string(79, 'n')})}));
}

TEST_F(ServiceOfDevice, IsNoneWithoutShortcutRecordOrMemory) {
    EXPECT_FALSE(FillRmtSvcPidlInfo(kPhone, 0x1132));
    EXPECT_TRUE(support::trace_log().empty());
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, 0x0555);
    EXPECT_FALSE(FillRmtSvcPidlInfo(kPhone, 0x1106));
    const Lines line{"=1024 error!!! Can not get shortcut property in FillRmtSvcPidlInfo.\r\n"};
    EXPECT_EQ(support::trace_log(), line);
    fail_allocations();
    EXPECT_FALSE(FillRmtSvcPidlInfo(kPhone, 0x1106));
    EXPECT_EQ(support::trace_log(), line);
}

TEST_F(ServiceByAddress, NeedsAddressDeviceAndClass) {
    EXPECT_FALSE(GetSvcPidlByAddress(nullptr, 6, 0x1106));
    EXPECT_FALSE(GetSvcPidlByAddress(kPhoneAddress.data(), 5, 0x1106));
    EXPECT_FALSE(GetSvcPidlByAddress(kPhoneAddress.data(), 7, 0x1106));
    EXPECT_FALSE(GetSvcPidlByAddress(kPhoneAddress.data(), 6, 0));
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetShortCutByDeviceHandle").empty());
    const Bytes unknown(6, 0xEE);
    EXPECT_FALSE(GetSvcPidlByAddress(unknown.data(), 6, 0x1106));
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetShortCutByDeviceHandle").empty());
    const Item expected{0xC0080006, kPhoneClass, 0x112F, kPhoneAddress, "Phonebook Access"};
    EXPECT_EQ(bytes(GetSvcPidlByAddress(kPhoneAddress.data(), 6, 0x112F)), list_of({bytes_of(expected)}));
}

TEST_F(SendToItem, HasItsTypeAndNothingElse) {
    EXPECT_EQ(bytes(send_to_item()), list_of({bytes_of({0x1002})}));
    EXPECT_TRUE(support::sdk_calls().empty());
    fail_allocations();
    EXPECT_FALSE(send_to_item());
}

TEST_F(FolderClass, NeedsAnAddressOfSixBytes) {
    CLSID found = kUntouched;
    cache(kClassName, kPhoneAddress);
    EXPECT_EQ(FindShellFolderClsid(nullptr, 6, &found), FALSE);
    for (const uint32_t length : {0U, 5U, 7U, 0xFFFFFFFFU}) {
        EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), length, &found), FALSE) << length;
    }
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(found == kUntouched);
    EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), 6, &found), TRUE);
    EXPECT_TRUE(found == kClass);
}

TEST_F(FolderClass, OutputMayBeNull) {
    cache(kClassName, kPhoneAddress);
    EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), 6, nullptr), TRUE);
}

TEST_F(FolderClass, NotFoundLeavesTheOutputAlone) {
    CLSID found = kUntouched;
    cache(kClassName, Bytes(6, 0xEE));
    EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), 6, &found), FALSE);
    EXPECT_TRUE(found == kUntouched);
}

TEST_F(FolderClass, ANameThatIsNoIdentifierIsFoundAsNone) {
    CLSID found = kUntouched;
    cache("no class", kPhoneAddress);
    EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), 6, &found), TRUE);
    EXPECT_TRUE(found == CLSID{});
}

TEST_F(FolderClass, ACacheThatCannotBeOpenedOrReadIsNotFound) {
    cache(kClassName, kPhoneAddress);
    CLSID found = kUntouched;
    for (const char* operation : {"Btsdk_RegCreateKeyForX64Reg", "Btsdk_RegEnumValueForX64Reg"}) {
        VlSim_Fail(operation, 1, ERROR_ACCESS_DENIED);
        EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), 6, &found), FALSE) << operation;
    }
    EXPECT_TRUE(found == kUntouched);
    VlSim_Fail("Btsdk_RegEnumValueForX64Reg", 1, ERROR_MORE_DATA);
    EXPECT_EQ(FindShellFolderClsid(kPhoneAddress.data(), 6, &found), FALSE);
    EXPECT_EQ(support::sdk_calls("Btsdk_RegEnumValueForX64Reg").size(), 3U);
}

TEST_F(DeviceFolder, HasTwoItemsOfTwentyBytes) {
    const Bytes expected = {20,   0,    0x1F, 0x50, 0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A, 0x69,
                            0x10, 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D, 20,   0,
                            0x2E, 0x80, 0x02, 0x1A, 0x3F, 0x8E, 0x4C, 0x9B, 0x5E, 0x4D, 0x8F,
                            0x60, 0x71, 0x82, 0x93, 0xA4, 0xB5, 0xC6, 0,    0};
    cache(kClassName, kPhoneAddress);
    EXPECT_EQ(bytes(GetDeviceFolderPidl(kPhoneAddress.data(), 6)), expected);
    EXPECT_EQ(expected.size(), 42U);
}

TEST_F(DeviceFolder, NeedsAnAddressOfSixBytesAndMemory) {
    EXPECT_FALSE(GetDeviceFolderPidl(nullptr, 6));
    EXPECT_FALSE(GetDeviceFolderPidl(kPhoneAddress.data(), 5));
    EXPECT_FALSE(GetDeviceFolderPidl(kPhoneAddress.data(), 7));
    EXPECT_TRUE(support::sdk_calls().empty());
    cache("not opened", {});
    fail_allocations();
    EXPECT_FALSE(GetDeviceFolderPidl(kPhoneAddress.data(), 6));
}

TEST_F(JoinedLists, AreNoneWhenAPartIsMissing) {
    EXPECT_FALSE(combine(nullptr, send_to_item()));
    EXPECT_FALSE(combine(as_list(kRoot), UniqueItemList()));
    EXPECT_EQ(bytes(combine(as_list(kRoot), send_to_item())), list_of({kRootItem, bytes_of({0x1002})}));
}
