// Lists that are given out: the device's item, the item of its service or folder, every byte.
#include "shell_scene.h"

using namespace shell_test;

namespace {

const Bytes kOtherAddress{1, 2, 3, 4, 5, 6};

class ItemList : public ShellTest {
protected:
    using Property = uint32_t(BtHandle, RemoteDeviceProperty*);
    using Shortcut = uint32_t(ShortcutProperty*);

    static Bytes files_of(BtHandle device) {
        return taken(VlCm_GetAbsoluteFTPSvcPidlOf(device, as_list(kRoot)));
    }
    static Bytes folder_of(BtHandle device, uint32_t flags) {
        return taken(VlCm_GetAbsoluteMobileFolderPidlOf(device, as_list(kRoot), flags));
    }
    // The service's item when the shortcut is this one.
    Bytes service_item(const ShortcutProperty& shortcut) {
        shortcut_.answer([&shortcut](ShortcutProperty* record) {
            *record = shortcut;
            return 0U;
        });
        return item_at(files_of(kPhone), 2);
    }

    support::CallPatch<Property> property_{"Btsdk_GetRemoteDeviceProperty", Btsdk_GetRemoteDeviceProperty};
    support::CallPatch<Shortcut> shortcut_{"Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty};
};

using DeviceItem = ItemList;
using ServiceItem = ItemList;
using PhoneFolderItem = ItemList;

}  // namespace

TEST_F(ItemList, OfFileTransferHasEveryByteInItsPlace) {
    const Bytes expected_device = {
        114,  0,                             // size
        112,  0,    0,    0,                 // size of the payload
        0x66, 0x46, 0x44, 0xAA,              // signature
        0x12, 0x00, 0x00, 0x40,              // type
        0x0C, 0x02, 0x5A, 0x00,              // device class
        0x00, 0x00, 0x00, 0x00,              // service class
        0x01, 0x5E, 0x2D, 0x38, 0xC1, 0xA4,  // address
    };
    const Bytes expected_service = {
        114,  0,    112,  0,    0,    0,    0x66, 0x46, 0x44, 0xAA, 0x02, 0x03, 0x00, 0xC0,  // type
        0x0C, 0x02, 0x5A, 0x00, 0x06, 0x11, 0x00, 0x00,                                      // service class
        0x01, 0x5E, 0x2D, 0x38, 0xC1, 0xA4, 'O',  'B',  'E',  'X',  ' ',  'F',  'i',  'l',
        'e',  ' ',  'T',  'r',  'a',  'n',  's',  'f',  'e',  'r',
    };
    const Bytes list = files_of(kPhone);
    ASSERT_EQ(list.size(), kRootItem.size() + 114 + 114 + 2);
    Bytes expected = kRootItem;
    expected.insert(expected.end(), expected_device.begin(), expected_device.end());
    expected.resize(kRootItem.size() + 114, 0);
    expected.insert(expected.end(), expected_service.begin(), expected_service.end());
    expected.resize(list.size(), 0);
    EXPECT_EQ(list, expected);
}

TEST_F(ItemList, AsksTheStackForWhatItNeedsInOrder) {
    files_of(kPhone);
    const Lines files = {"Btsdk_GetRemoteDeviceProperty", "Btsdk_GetShortCutByDeviceHandle",
                         "Btsdk_GetShortCutProperty"};
    EXPECT_EQ(support::sdk_operations(), files);
    EXPECT_TRUE(support::trace_log().empty());
    support::clear_sdk_log();
    folder_of(kPhone, VLCM_PHONE_FOLDER_PHONEBOOK);
    const Lines folder = {"Btsdk_GetRemoteDeviceProperty", "Btsdk_GetRemoteDeviceClass",
                          "Btsdk_GetRemoteDeviceAddress"};
    EXPECT_EQ(support::sdk_operations(), folder);
    EXPECT_EQ(support::trace_log(), (Lines{">512 FillMobileItemPidlInfo", "<512 FillMobileItemPidlInfo"}));
}

TEST_F(ItemList, LeavesTheRootAloneAndOwnsItsOwn) {
    Bytes root = kRoot;
    LPITEMIDLIST list = VlCm_GetAbsoluteFTPSvcPidlOf(kPhone, as_list(root));
    EXPECT_EQ(root, kRoot);
    std::fill(root.begin(), root.end(), uint8_t{0xEE});
    EXPECT_EQ(taken(list), list_of({kRootItem, bytes_of(kPhoneItem), bytes_of(kFilesItem)}));
}

TEST_F(ItemList, GrowsBehindARootOfSeveralItems) {
    const Bytes root = list_of({kRootItem, bytes_of({}), kRootItem});
    EXPECT_EQ(taken(VlCm_GetAbsoluteFTPSvcPidlOf(kPhone, as_list(root))),
              list_of({kRootItem, bytes_of({}), kRootItem, bytes_of(kPhoneItem), bytes_of(kFilesItem)}));
    const Bytes empty = list_of({});
    EXPECT_EQ(taken(VlCm_GetAbsoluteMobileFolderPidlOf(kPhone, as_list(empty), VLCM_PHONE_FOLDER_PHONEBOOK)),
              list_of({bytes_of(kPhoneItem), bytes_of(kPhonebookItem)}));
}

TEST_F(ItemList, WithoutARootIsNoneAndAsksNothing) {
    EXPECT_EQ(VlCm_GetAbsoluteFTPSvcPidlOf(kPhone, nullptr), nullptr);
    EXPECT_EQ(VlCm_GetAbsoluteMobileFolderPidlOf(kPhone, nullptr, VLCM_PHONE_FOLDER_PHONEBOOK), nullptr);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(blocks().allocations(), 0U);
}

TEST_F(ItemList, OfADeviceThatTheStackDoesNotKnowIsNone) {
    for (const BtHandle device : {BtHandle{0}, BtHandle{4711}}) {
        EXPECT_EQ(files_of(device), Bytes{});
        EXPECT_EQ(folder_of(device, VLCM_PHONE_FOLDER_MESSAGES), Bytes{});
    }
    EXPECT_EQ(support::sdk_operations(), Lines(4, "Btsdk_GetRemoteDeviceProperty"));
}

TEST_F(ItemList, OfADeviceWithoutFileTransferIsNone) {
    EXPECT_EQ(VlCm_GetAbsoluteFTPSvcPidlOf(6, as_list(kRoot)), nullptr);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetRemoteDeviceProperty", "Btsdk_GetShortCutByDeviceHandle"}));
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DeviceItem, TypeFollowsTheBitsOfTheDeviceClass) {
    struct Row {
        const char* label;
        uint32_t device_class, type;
    };
    constexpr Row kRows[] = {
        {"peripheral", 0x000500, 0x12},
        {"keyboard", 0x002540, 0x12},
        {"imaging with printer", 0x000680, 0x12},
        {"printer among more bits", 0x0406A0, 0x12},
        {"major classes 5 and 7", 0x000700, 0x12},
        {"imaging without printer", 0x000640, 0x40000012},
        {"imaging alone", 0x000600, 0x40000012},
        {"printer's bit alone", 0x000080, 0x40000012},
        {"half of a peripheral, lower", 0x000100, 0x40000012},
        {"half of a peripheral, upper", 0x000400, 0x40000012},
        {"phone", 0x00020C, 0x40000012},
        {"nothing", 0, 0x40000012},
        {"uncategorised", 0x001F00, 0x40000012},
        {"uncategorised with every bit", 0xFFFFFF, 0x40000012},
        {"all major bits but one", 0x001D00, 0x12},
        {"bits above the major class", 0xFFE500, 0x12},
    };
    support::for_each_row(kRows, [&](const Row& row) {
        property_.answer([&](BtHandle, RemoteDeviceProperty* record) {
            record->deviceClass = row.device_class;
            return 0U;
        });
        EXPECT_EQ(item_at(files_of(kPhone), 1), bytes_of({row.type, row.device_class}));
    });
}

TEST_F(DeviceItem, TakesAddressAndWholeClassFromTheRecordAndNothingElse) {
    property_.answer([](BtHandle device, RemoteDeviceProperty* record) {
        EXPECT_EQ(device, kPhone);
        memset(record, 0x5A, sizeof *record);
        memcpy(record->address, kOtherAddress.data(), 6);
        record->deviceClass = 0xFEDCBA98;
        return 0U;
    });
    EXPECT_EQ(item_at(files_of(kPhone), 1), bytes_of({0x40000012, 0xFEDCBA98, 0, kOtherAddress, ""}));
}

TEST_F(ServiceItem, IsOfTheFirstShortcutAskedForAlone) {
    support::CallPatch asked("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    Lines masks;
    shortcut_.answer([&](ShortcutProperty* record) {
        masks.push_back(std::to_string(record->shortcut) + " mask " + std::to_string(record->mask));
        return shortcut_.real(record);
    });
    EXPECT_EQ(item_at(files_of(kPhone), 2), bytes_of(kFilesItem));
    EXPECT_EQ(masks, Lines{"23 mask 4"});
    ASSERT_EQ(asked.count(), 1U);
    const auto [device, service_class, handles, count] = asked.calls()[0];
    EXPECT_EQ(std::make_tuple(device, service_class, handles != nullptr, count),
              std::make_tuple(kPhone, uint16_t{0x1106}, true, 1U));
}

TEST_F(ServiceItem, AShortcutOfHandleZeroIsNone) {
    support::CallPatch asked("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    asked.answer([](BtHandle, uint16_t, BtHandle* handles, uint32_t) {
        handles[0] = 0;
        return 1U;
    });
    EXPECT_EQ(files_of(kPhone), Bytes{});
    EXPECT_EQ(shortcut_.count(), 0U);
}

TEST_F(ServiceItem, TypeFieldAndNameFollowTheRecordsClass) {
    struct Row {
        const char* label;
        uint16_t service_class;
        uint32_t type, field;
        bool named;
    };
    constexpr Row kRows[] = {
        {"file transfer", 0x1106, 0xC0000302, 0x1106, true},
        {"object push", 0x1105, 0x102, 0x1105, true},
        {"below the network classes", 0x1114, 0x102, 0x1114, true},
        {"PANU", 0x1115, 0x102, 0x2001, false},
        {"NAP", 0x1116, 0x102, 0x2001, false},
        {"GN", 0x1117, 0x102, 0x2001, false},
        {"above the network classes", 0x1118, 0x102, 0x1118, true},
        {"phonebook", 0x112F, 0x102, 0x112F, true},
        {"messages", 0x1132, 0x102, 0x1132, true},
        {"0x2001 itself", 0x2001, 0x102, 0x2001, true},
        {"highest", 0xFFFF, 0x102, 0xFFFF, true},
    };
    support::for_each_row(kRows, [&](const Row& row) {
        ShortcutProperty shortcut{};
        shortcut.serviceClass = row.service_class;
        strcpy(shortcut.serviceName, "Service");
        EXPECT_EQ(service_item(shortcut),
                  bytes_of({row.type, 0, row.field, Bytes(6, 0), row.named ? "Service" : ""}));
    });
}

TEST_F(ServiceItem, TakesAddressAndWholeClassFromTheRecordAndNothingElse) {
    ShortcutProperty shortcut;
    memset(&shortcut, 0x5A, sizeof shortcut);
    shortcut.deviceValid = 1;
    memcpy(shortcut.address, kOtherAddress.data(), 6);
    shortcut.serviceClass = 0x1101;
    shortcut.deviceClass = 0xFEDCBA98;
    strcpy(shortcut.serviceName, "Serial");
    EXPECT_EQ(service_item(shortcut), bytes_of({0x102, 0xFEDCBA98, 0x1101, kOtherAddress, "Serial"}));
}

TEST_F(ServiceItem, NameIsCutAt79Bytes) {
    for (const size_t length : {size_t{0}, size_t{1}, size_t{78}, size_t{79}, size_t{80}}) {
        ShortcutProperty shortcut{};
        shortcut.serviceClass = 0x1106;
        shortcut.parameterLength = 0x4141;
        shortcut.deviceClass = 0x41414141;  // what follows a name without terminator
        memset(shortcut.serviceName, 'n', length);
        const std::string name(length < 79 ? length : 79, 'n');
        EXPECT_EQ(service_item(shortcut), bytes_of({0xC0000302, 0x41414141, 0x1106, Bytes(6, 0), name}))
            << length;
    }
}

TEST_F(ServiceItem, NameIsCopiedByteForByteAlsoWithinACharacter) {
    ShortcutProperty shortcut{};
    shortcut.serviceClass = 0x1106;
    std::string name(78, 'n');
    name += "\xC3\xBC";  // its second byte is the 80th
    memcpy(shortcut.serviceName, name.data(), 80);
    EXPECT_EQ(service_item(shortcut), bytes_of({0xC0000302, 0, 0x1106, Bytes(6, 0), name.substr(0, 79)}));
    memset(shortcut.serviceName, 'x', 80);
    memcpy(shortcut.serviceName, "\xE7\x85\xA7\xFF\0", 5);
    EXPECT_EQ(service_item(shortcut), bytes_of({0xC0000302, 0, 0x1106, Bytes(6, 0), "\xE7\x85\xA7\xFF"}));
}

TEST_F(ServiceItem, AShortcutThatCannotBeReadIsTracedUnderTheShellsModule) {
    shortcut_.fail_nth(1, 0x0555U);
    EXPECT_EQ(files_of(kPhone), Bytes{});
    EXPECT_EQ(support::trace_log(),
              Lines{"=1024 error!!! Can not get shortcut property in FillRmtSvcPidlInfo.\r\n"});
}

TEST_F(PhoneFolderItem, TypeFollowsTheFlags) {
    struct Row {
        const char* label;
        uint32_t flags, type;
    };
    constexpr Row kRows[] = {
        {"none", 0, 0},
        {"phonebook", 0x00080000, 0xC0080002},
        {"messages", 0x01000000, 0xC1000002},
        {"both", 0x01080000, 0xC0080002},
        {"other bits", 0xFEF7FFFF, 0},
        {"messages and other bits", 0xFFF7FFFF, 0xC1000002},
        {"all", 0xFFFFFFFF, 0xC0080002},
    };
    support::for_each_row(kRows, [&](const Row& row) {
        EXPECT_EQ(folder_of(kPhone, row.flags),
                  list_of({kRootItem, bytes_of(kPhoneItem),
                           bytes_of({row.type, kPhoneClass, 0, kPhoneAddress, ""})}));
    });
}

TEST_F(PhoneFolderItem, TakesClassAndAddressFromTheirOwnQuestions) {
    support::CallPatch device_class("Btsdk_GetRemoteDeviceClass", Btsdk_GetRemoteDeviceClass);
    device_class.answer([](BtHandle device, uint32_t* value) {
        EXPECT_EQ(device, kPhone);
        *value = 0xFEDCBA98;
        return 0U;
    });
    support::CallPatch address("Btsdk_GetRemoteDeviceAddress", Btsdk_GetRemoteDeviceAddress);
    address.answer([](BtHandle device, uint8_t* value) {
        EXPECT_EQ(device, kPhone);
        memcpy(value, kOtherAddress.data(), 6);
        return 0U;
    });
    EXPECT_EQ(item_at(folder_of(kPhone, VLCM_PHONE_FOLDER_MESSAGES), 2),
              bytes_of({0xC1000002, 0xFEDCBA98, 0, kOtherAddress, ""}));
}
