// The kinds of remote devices by type and class.
#include "localctl_test.h"

#include "localctl/device_kind_table.h"

#include <sstream>

using namespace localctl_test;

namespace {

// The kinds in their order, each with its masks.
constexpr char kTable[] =
    "1: 100;"
    "3: 404 408 40C 410 418 41C 424;"
    "4: 580;"
    "5: 540;"
    "6: 414 428;"
    "7: 420;"
    "17: 200;"
    "18: 600 610 620;"
    "19: 640 680 5C0 504 508 50C 510 511;"
    "23: 42C 430 434 438 43C 440 448";

struct Row {
    unsigned kind;
    uint32_t mask;
};

std::vector<Row> rows_of_text() {
    std::vector<Row> rows;
    std::istringstream groups(kTable);
    for (std::string group; std::getline(groups, group, ';');) {
        std::istringstream words(group);
        unsigned kind = 0;
        char colon = 0;
        uint32_t mask = 0;
        words >> kind >> colon >> std::hex;
        while (words >> mask) rows.push_back({kind, mask});
    }
    return rows;
}

// A bit that the mask has and the class has not rules a row out.
unsigned expected_kind(const std::vector<Row>& rows, uint32_t device_class) {
    for (const Row& row : rows) {
        if ((~(device_class & 0x1FFF) & row.mask) == 0) return row.kind;
    }
    return 0;
}

struct ClassRow {
    const char* label;
    uint32_t device_class;
    unsigned kind;
};
constexpr ClassRow kClasses[] = {
    {"nothing", 0, 0},
    {"keyboard: bit 0x100 comes first", 0x000540, 1},
    {"computer", 0x000100, 1},
    {"headset", 0x000404, 3},
    {"phone", 0x000200, 17},
    {"phone with service bits", 0x5A020C, 17},
    {"service bits alone", 0xFFFFE000, 0},
    {"bits of a mask above the low 13", 0x404 << 13, 0},
    {"a part of a mask", 0x000400, 0},
    {"loudspeaker: a headset's bits come first", 0x000414, 3},
    {"portable audio: no mask before it", 0x000420, 7},
    {"printer", 0x000680, 17},
    {"all bits", 0xFFFFFFFF, 1},
};

uint32_t answered_class = 0;
uint32_t answer_class(BtHandle /*device*/, uint32_t* device_class) {
    *device_class = answered_class;
    return 0;
}
uint32_t answer_type(BtHandle /*device*/) { return 0; }

class DeviceKind : public LocalControlTest {
protected:
    static void set_class(unsigned device, uint32_t device_class) {
        VlSim_Set(("/devices/" + std::to_string(device - 1) + "/class").c_str(),
                  std::to_string(device_class).c_str());
    }
};

}  // namespace

TEST_F(DeviceKind, TheTableHolds32RowsInOrder) {
    const std::vector<Row> rows = rows_of_text();
    ASSERT_EQ(rows.size(), 32u);
    ASSERT_EQ(std::size(vl::localctl::kDeviceKinds), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(vl::localctl::kDeviceKinds[i].mask, rows[i].mask) << i;
        EXPECT_EQ(vl::localctl::kDeviceKinds[i].kind, rows[i].kind) << i;
    }
}

TEST_F(DeviceKind, IsThatOfTheFirstMaskInTheClass) {
    support::for_each_row(kClasses, [](const ClassRow& row) {
        set_class(kPhone, row.device_class);
        EXPECT_EQ(VlCm_GetRemoteDeviceTypeByDevHandle(kPhone), row.kind);
    });
}

TEST_F(DeviceKind, OfEveryLowClassIsTheFirstMasks) {
    const HMODULE library = support::library_under_test();
    const support::ImportPatch classes(library, "Btsdk_GetRemoteDeviceClass", answer_class);
    const support::ImportPatch types(library, "Btsdk_GetRemoteDeviceType", answer_type);
    ASSERT_NE(classes.slots() * types.slots(), 0u);
    const std::vector<Row> rows = rows_of_text();
    for (const uint32_t service_bits : {0U, 0x2000U, 0x5A0000U, 0xFFFFE000U}) {
        for (uint32_t low = 0; low < 1U << 13; ++low) {
            answered_class = service_bits | low;
            ASSERT_EQ(VlCm_GetRemoteDeviceTypeByDevHandle(kPhone), expected_kind(rows, low))
                << answered_class;
        }
    }
}

TEST_F(DeviceKind, OfType1Is22WhateverTheClass) {
    set_class(kBelt, 0x540);
    support::clear_sdk_log();
    EXPECT_EQ(VlCm_GetRemoteDeviceTypeByDevHandle(kBelt), 22u);
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetRemoteDeviceType(8) = 1"});
}

TEST_F(DeviceKind, OfOtherTypesIsThatOfTheClass) {
    for (const unsigned type : {0U, 2U, 0x101U, 0xFFFFFFFFU}) {
        set_type(kHeadset, type);
        EXPECT_EQ(VlCm_GetRemoteDeviceTypeByDevHandle(kHeadset), 3u) << type;
    }
    support::clear_sdk_log();
    VlCm_GetRemoteDeviceTypeByDevHandle(kHeadset);
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_GetRemoteDeviceType", "Btsdk_GetRemoteDeviceClass"}));
}

TEST_F(DeviceKind, WithoutAClassIsNone) {
    support::CallPatch read("Btsdk_GetRemoteDeviceClass", Btsdk_GetRemoteDeviceClass);
    read.answer([](BtHandle, uint32_t* device_class) {
        EXPECT_EQ(*device_class, 0u);
        return *device_class = 0x404, 1U;
    });
    EXPECT_EQ(VlCm_GetRemoteDeviceTypeByDevHandle(kHeadset), 0u);
    EXPECT_EQ(VlCm_GetRemoteDeviceTypeByDevHandle(0), 0u);
    EXPECT_EQ(read.count(), 2u) << "handle 0 is handed on";
}

TEST_F(DeviceKind, OpensNoScope) {
    VlCm_GetRemoteDeviceTypeByDevHandle(kPhone);
    VlCm_GetRemoteDeviceTypeByDevHandle(kBelt);
    EXPECT_TRUE(support::trace_log().empty());
}
