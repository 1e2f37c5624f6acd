#include "stack_test.h"
#include "support/guarded_buffer.h"

#include <algorithm>
#include <cstring>

namespace vlsim_test {
namespace {

class Shortcut : public StackTest {};

constexpr BtHandle kPush = 201;    // of the phone, default, no parameter
constexpr BtHandle kDialUp = 203;  // of the phone, port 7
constexpr BtHandle kHandsFree = 204, kHandsFreeConnection = 401;
constexpr BtHandle kByAddress = 208;  // its device is to be looked up
constexpr BtHandle kNone = 9999;
constexpr BtHandle kPhone = 1, kHeadset = 2, kLaptop = 5;

TEST_F(Shortcut, PlainFieldsAreFilledWithoutAMask) {
    ShortcutProperty record = shortcut_query(kHandsFree);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    constexpr uint8_t kAddress[6] = {0x02, 0x21, 0x8B, 0x70, 0xF3, 0x5C};
    EXPECT_EQ(record.connection, kHandsFreeConnection);
    EXPECT_EQ(record.device, kHeadset);
    EXPECT_EQ(record.service, 112u);
    EXPECT_EQ(record.deviceValid, 1);
    EXPECT_EQ(record.stackFlag, 1);
    EXPECT_EQ(std::memcmp(record.address, kAddress, sizeof kAddress), 0);
    EXPECT_EQ(record.serviceClass, 0x111E);
    EXPECT_STREQ(record.name, "5C:F3:70:8B:21:02 111e Hands-Free");
}

TEST_F(Shortcut, OtherFieldsAreFilledOnlyWhenTheMaskAsks) {
    struct Row {
        uint16_t mask;
        const char* service_name;
        uint32_t device_class;
        uint8_t is_default;
        uint16_t length;
    };
    constexpr Row kRows[] = {{0, "", 0, 0, 0},
                             {4, "Serial Port", 0x12010C, 0, 0},
                             {16, "", 0, 1, 0},
                             {64, "", 0, 0, 10},
                             {84, "Serial Port", 0x12010C, 1, 10}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.mask);
        ShortcutProperty record = shortcut_query(207, row.mask);
        ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
        EXPECT_STREQ(record.serviceName, row.service_name);
        EXPECT_EQ(record.deviceClass, row.device_class);
        EXPECT_EQ(record.isDefault, row.is_default);
        EXPECT_EQ(record.parameterLength, row.length);
    }
}

TEST_F(Shortcut, ParameterIsCopiedUpToTheGivenLengthAndItsTrueLengthTold) {
    constexpr uint16_t kRooms[] = {0, 1, 9, 10, 20};
    for (const uint16_t room : kRooms) {
        SCOPED_TRACE(room);
        const support::GuardedBuffer block(room);
        ShortcutProperty record = shortcut_query(kDialUp, kShortcutMaskParameter);
        record.parameter = block.as<void>();
        record.parameterLength = room;
        ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
        EXPECT_EQ(record.parameterLength, 10);
        EXPECT_TRUE(block.untouched_from(std::min<size_t>(room, 10)));
        if (room >= 10) {
            EXPECT_EQ(block.as<uint8_t>()[9], 7);
        }
    }
}

TEST_F(Shortcut, ParameterWithoutABlockGivesItsLengthAlone) {
    ShortcutProperty record = shortcut_query(kDialUp, kShortcutMaskParameter);
    record.parameterLength = 10;  // a length without a block
    EXPECT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    EXPECT_EQ(record.parameterLength, 10);
    EXPECT_EQ(record.parameter, nullptr);
}

TEST_F(Shortcut, UnknownHandleFailsAndWritesNothing) {
    ShortcutProperty record = shortcut_query(kNone, 84);
    const ShortcutProperty before = record;
    EXPECT_NE(Btsdk_GetShortCutProperty(&record), 0u);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
    EXPECT_NE(Btsdk_SetShortCutProperty(&record), 0u);
    EXPECT_NE(Btsdk_DeleteShortCut(kNone), 0u);
}

TEST_F(Shortcut, DeviceThatIsToBeLookedUpIsMarked) {
    ShortcutProperty record = shortcut_query(kByAddress);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    EXPECT_EQ(record.deviceValid, 0);
    EXPECT_EQ(Btsdk_GetRemoteDeviceHandle(record.address), kLaptop);
}

using List = std::vector<BtHandle>;

struct ListRow {
    const char* label;
    uint32_t (*ask)(BtHandle* out, uint32_t count);
    List expected;
};

const ListRow kLists[] = {
    {"all", Btsdk_GetAllShortCuts, {201, 202, 203, 204, 205, 206, 207, 208, 209, 210}},
    {"by device",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByDeviceHandle(kPhone, 0, out, n); },
     {201, 202, 203}},
    {"by device found by address",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByDeviceHandle(kLaptop, 0, out, n); },
     {207, 208}},
    {"by device and class",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByDeviceHandle(kPhone, 0x1106, out, n); },
     {202}},
    {"by unknown device",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByDeviceHandle(kNone, 0, out, n); },
     {}},
    {"by service",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByServiceHandle(kPhone, 107, out, n); },
     {203}},
    {"by service of another device",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByServiceHandle(kLaptop, 107, out, n); },
     {}},
    {"by class",
     [](BtHandle* out, uint32_t n) { return Btsdk_GetShortCutByServiceClass(0x1106, out, n); },
     {202, 208}},
};

TEST_F(Shortcut, ListsCountWithoutAnArrayAndFillNoMoreThanItsLength) {
    for (const ListRow& row : kLists) {
        SCOPED_TRACE(row.label);
        const size_t total = row.expected.size();
        EXPECT_EQ(row.ask(nullptr, 0), total);
        EXPECT_EQ(row.ask(nullptr, 1), total);  // an array decides, not its length
        for (size_t room = 0; room <= total + 1; ++room) {
            const support::GuardedBuffer array(room * sizeof(BtHandle));
            const size_t written = row.ask(array.as<BtHandle>(), static_cast<uint32_t>(room));
            ASSERT_EQ(written, std::min(room, total));
            EXPECT_TRUE(std::equal(row.expected.begin(),
                                   row.expected.begin() + static_cast<ptrdiff_t>(written),
                                   array.as<BtHandle>()));
            EXPECT_TRUE(array.untouched_from(written * sizeof(BtHandle)));
        }
    }
}

TEST_F(Shortcut, IsFoundByNameAndByClassOfWhichItIsTheDefault) {
    EXPECT_EQ(Btsdk_GetShortCutByName("A4:C1:38:2D:5E:01 1106 OBEX File Transfer"), 202u);
    EXPECT_EQ(Btsdk_GetShortCutByName("a4:c1:38:2d:5e:01 1106 OBEX File Transfer"), 0u);
    EXPECT_EQ(Btsdk_GetShortCutByName(""), 0u);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1105), kPush);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1108), 0u);
}

ShortcutProperty new_shortcut(const char* name) {
    ShortcutProperty record{};
    record.device = 6;
    record.service = 152;
    record.deviceValid = 1;
    record.stackFlag = 1;
    record.serviceClass = 0x1117;
    record.mask = kShortcutMaskCreate;
    strncpy(record.name, name, sizeof record.name - 1);
    strncpy(record.serviceName, "Group", sizeof record.serviceName - 1);
    record.deviceClass = 0x020300;
    return record;
}

TEST_F(Shortcut, CreatingWritesTheNewHandleAlone) {
    ShortcutProperty record = new_shortcut("mesh");
    ShortcutProperty expected = record;
    ASSERT_EQ(Btsdk_CreateShortCutEx(&record), 0u);
    EXPECT_NE(record.shortcut, 0u);
    expected.shortcut = record.shortcut;
    EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
    ShortcutProperty read = shortcut_query(record.shortcut, kShortcutMaskShellItem);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&read), 0u);
    EXPECT_STREQ(read.name, "mesh");
    EXPECT_STREQ(read.serviceName, "Group");
    EXPECT_EQ(read.address[0], 0x06);
    EXPECT_EQ(Btsdk_GetShortCutByName("mesh"), record.shortcut);
}

TEST_F(Shortcut, ANewHandleWasNeverUsedBefore) {
    ShortcutProperty first = new_shortcut("first");
    ASSERT_EQ(Btsdk_CreateShortCutEx(&first), 0u);
    ASSERT_EQ(Btsdk_DeleteShortCut(first.shortcut), 0u);
    ShortcutProperty second = new_shortcut("second");
    ASSERT_EQ(Btsdk_CreateShortCutEx(&second), 0u);
    EXPECT_GT(second.shortcut, first.shortcut);
}

TEST_F(Shortcut, CreatingForAnUnknownDeviceOrServiceWritesNothing) {
    for (const bool unknown_device : {true, false}) {
        ShortcutProperty record = new_shortcut("lost");
        (unknown_device ? record.device : record.service) = kNone;
        const ShortcutProperty before = record;
        EXPECT_NE(Btsdk_CreateShortCutEx(&record), 0u);
        EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
    }
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 10u);
}

TEST_F(Shortcut, NameCutWithinACharacterIsKeptByteForByte) {
    const char* const kCut = "Gr\xC3\xBC\xC3";  // ends in half a letter
    ShortcutProperty record = new_shortcut(kCut);
    ASSERT_EQ(Btsdk_CreateShortCutEx(&record), 0u);
    EXPECT_EQ(Btsdk_GetShortCutByName(kCut), record.shortcut);
    ShortcutProperty read = shortcut_query(record.shortcut);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&read), 0u);
    EXPECT_STREQ(read.name, kCut);
}

TEST_F(Shortcut, DeletedIsGoneFromEveryList) {
    ASSERT_EQ(Btsdk_DeleteShortCut(kPush), 0u);
    EXPECT_EQ(Btsdk_GetAllShortCuts(nullptr, 0), 9u);
    EXPECT_EQ(Btsdk_GetShortCutByDeviceHandle(kPhone, 0, nullptr, 0), 2u);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1105), 0u);
    EXPECT_NE(Btsdk_DeleteShortCut(kPush), 0u);
}

TEST_F(Shortcut, WriteBackChangesWhatItsMaskNames) {
    ShortcutProperty record = shortcut_query(kPush, 1);
    strncpy(record.name, "renamed", sizeof record.name - 1);
    strncpy(record.serviceName, "ignored", sizeof record.serviceName - 1);
    record.isDefault = 0;
    ASSERT_EQ(Btsdk_SetShortCutProperty(&record), 0u);
    ShortcutProperty read = shortcut_query(kPush, 20);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&read), 0u);
    EXPECT_STREQ(read.name, "renamed");
    EXPECT_STREQ(read.serviceName, "OBEX Object Push");
    EXPECT_EQ(read.isDefault, 1);
}

TEST_F(Shortcut, WriteBackStoresTheParameter) {
    uint8_t block[3] = {1, 2, 3};
    ShortcutProperty record = shortcut_query(kDialUp, kShortcutMaskParameter);
    record.parameter = block;
    record.parameterLength = sizeof block;
    ASSERT_EQ(Btsdk_SetShortCutProperty(&record), 0u);
    uint8_t stored[10] = {};
    record = shortcut_query(kDialUp, kShortcutMaskParameter);
    record.parameter = stored;
    record.parameterLength = sizeof stored;
    ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    EXPECT_EQ(record.parameterLength, 3);
    EXPECT_EQ(stored[2], 3);
}

// A bare record is enough, and the other shortcuts of the class, of any device, lose the flag.
TEST_F(Shortcut, BecomingDefaultTakesTheFlagFromTheOthersOfItsClass) {
    ShortcutProperty record = shortcut_query(kByAddress, kShortcutMaskDefault);
    record.isDefault = 1;
    ASSERT_EQ(Btsdk_SetShortCutProperty(&record), 0u);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1106), kByAddress);
    ShortcutProperty other = shortcut_query(202, kShortcutMaskDefault);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&other), 0u);
    EXPECT_EQ(other.isDefault, 0);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1105), kPush);  // of another class
    record = shortcut_query(kByAddress, kShortcutMaskDefault);
    ASSERT_EQ(Btsdk_SetShortCutProperty(&record), 0u);
    EXPECT_EQ(Btsdk_GetDefaultShortCut(0x1106), 0u);
}

}  // namespace
}  // namespace vlsim_test
