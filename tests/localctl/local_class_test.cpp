// As what the local adapter presents itself.
#include "localctl_test.h"

#include <shlobj.h>

using namespace localctl_test;

namespace {

struct ReadRow {
    const char* label;
    uint32_t device_class;
    unsigned kind;
};
constexpr ReadRow kReadRows[] = {
    {"phone", 0x5A020C, 0},
    {"nothing", 0, 0},
    {"desktop", 0x104, 0},
    {"laptop", 0x10C, 1},
    {"laptop of any format", 0x10F, 1},
    {"laptop with service bits", 0x5A010C, 1},
    {"laptop with a top byte", 0xFF00010C, 1},
    {"palm-size computer", 0x114, 0},
    {"laptop's minor class, other major class", 0x20C, 0},
    {"laptop and one bit more", 0x11C, 0},
    {"headset", 0x24040C, 2},
    {"headset exactly", 0x240404, 2},
    {"headset without rendering", 0x200404, 0},
    {"headset without audio", 0x040404, 0},
    {"headset without its major class", 0x240004, 0},
    {"headset without its minor class", 0x240400, 0},
    {"headset before laptop", 0x24050C, 2},
    {"printer", 0x140680, 3},
    {"printer with more", 0x140683, 3},
    {"printer without object transfer", 0x040680, 0},
    {"headset before printer", 0x340684, 2},
    {"everything", 0xFFFFFFFF, 2},
};

struct WriteRow {
    const char* label;
    unsigned kind;
    uint32_t before, after;
    const char* stored;
};
constexpr WriteRow kWriteRows[] = {
    {"desktop", 0, 0x5A020C, 0x5A0104, "0"},
    {"laptop", 1, 0x5A020C, 0x5A010C, "1"},
    {"headset, written whole", 2, 0x5A020C, 0x240404, "2"},
    {"printer, written whole", 3, 0x5A020C, 0x140680, "3"},
    {"an unknown kind is a desktop", 4, 0x5A020C, 0x5A0104, "4"},
    {"the largest kind", 0xFFFFFFFF, 0x5A020C, 0x5A0104, "-1"},
    {"a kind in the second byte only", 0x102, 0x5A020C, 0x5A0104, "258"},
    {"desktop keeps all above the low 13 bits", 0, 0xFFFFFFFF, 0xFFFFE104, "0"},
    {"laptop keeps all above the low 13 bits", 1, 0xFFFFFFFF, 0xFFFFE10C, "1"},
    {"nothing of the low 13 bits is kept", 0, 0x1FFF, 0x104, "0"},
    {"the lowest bit kept", 1, 0x2000, 0x210C, "1"},
    {"the top bit kept", 0, 0x80000000, 0x80000104, "0"},
    {"headset keeps nothing", 2, 0xFFFFFFFF, 0x240404, "2"},
    {"printer keeps nothing", 3, 0xFFFFFFFF, 0x140680, "3"},
    {"from nothing", 1, 0, 0x10C, "1"},
};

class LocalClass : public support::SuiteTest {
protected:
    static void set_class(uint32_t device_class) {
        VlSim_Set("/local/class", std::to_string(device_class).c_str());
    }
    static uint32_t device_class() {
        uint32_t now = 0;
        EXPECT_EQ(Btsdk_GetLocalDeviceClass(&now), 0u);
        return now;
    }
    static std::string stored() {
        return support::SettingsScope::get(support::SettingsFile::kCommon, "LocalBluetooth",
                                           "DEFAULT_DEVCLASS");
    }
};

uint32_t answered_class = 0;
uint32_t answer_class(uint32_t* device_class) {
    *device_class = answered_class;
    return 0;
}

bool has_bits(uint32_t device_class, std::initializer_list<int> bits) {
    for (const int bit : bits) {
        if ((device_class >> bit & 1) == 0) return false;
    }
    return true;
}

// The rules bit by bit.
unsigned expected_kind(uint32_t device_class) {
    if (has_bits(device_class, {21, 18, 10, 2})) return 2;
    if (has_bits(device_class, {20, 18, 10, 9, 7})) return 3;
    return device_class << 19 >> 21 == 0x10C >> 2 ? 1 : 0;
}

}  // namespace

TEST_F(LocalClass, TellsTheKind) {
    support::for_each_row(kReadRows, [](const ReadRow& row) {
        set_class(row.device_class);
        EXPECT_EQ(VlCm_GetLocalDeviceClass(), row.kind);
    });
}

TEST_F(LocalClass, TellsTheKindOfEveryLowClass) {
    const support::ImportPatch patch(support::library_under_test(), "Btsdk_GetLocalDeviceClass",
                                     answer_class);
    ASSERT_NE(patch.slots(), 0u);
    for (const uint32_t service_bits : {0U, 1U << 13, 1U << 18, 5U << 18, 9U << 18, 0xDU << 18, 1U << 20,
                                        1U << 21, 0xFFFFFFFFU << 13, ~(0xDU << 18)}) {
        for (uint32_t low = 0; low < 1U << 13; ++low) {
            answered_class = (service_bits & 0xFFFFE000) | low;
            ASSERT_EQ(VlCm_GetLocalDeviceClass(), expected_kind(answered_class)) << answered_class;
        }
    }
}

TEST_F(LocalClass, ThatCannotBeReadIsOfKind0) {
    support::CallPatch read("Btsdk_GetLocalDeviceClass", Btsdk_GetLocalDeviceClass);
    read.answer([](uint32_t* device_class) { return *device_class = 0x240404, 1U; });
    EXPECT_EQ(VlCm_GetLocalDeviceClass(), 0u);
    read.answer([](uint32_t* device_class) {
        EXPECT_EQ(*device_class, 0u) << "a class that is not written is 0";
        return 0U;
    });
    EXPECT_EQ(VlCm_GetLocalDeviceClass(), 0u);
    EXPECT_EQ(read.count(), 2u);
}

TEST_F(LocalClass, TheKindIsSetAndStored) {
    support::for_each_row(kWriteRows, [](const WriteRow& row) {
        set_class(row.before);
        EXPECT_EQ(VlCm_SetLocalDeviceClass(row.kind), TRUE);
        EXPECT_EQ(device_class(), row.after);
        EXPECT_EQ(stored(), row.stored);
    });
}

TEST_F(LocalClass, IsReadThenSetThenStored) {
    set_class(0x5A020C);
    const std::string file = support::settings_path(support::SettingsFile::kCommon);
    support::clear_sdk_log();
    VlCm_SetLocalDeviceClass(1);
    EXPECT_EQ(support::sdk_calls(),
              (Lines{"Btsdk_GetLocalDeviceClass(out) = 0", "Btsdk_SetLocalDeviceClass(5898508) = 0",
                     R"(Btsdk_WritePrivateProfileInt("LocalBluetooth", "DEFAULT_DEVCLASS", 1, ")" + file +
                         "\") = 1"}));
}

TEST_F(LocalClass, ThePathComesFirst) {
    support::CallPatch folder("SHGetFolderPathA", SHGetFolderPathA);
    folder.answer([&](HWND owner, int id, HANDLE token, DWORD flags, LPSTR path) {
        EXPECT_TRUE(support::sdk_calls().empty());
        return folder.real(owner, id, token, flags, path);
    });
    VlCm_SetLocalDeviceClass(1);
    EXPECT_EQ(folder.count(), 1u);
}

TEST_F(LocalClass, ThatCannotBeReadKeepsNothing) {
    set_class(0x5A020C);
    VlSim_Fail("Btsdk_GetLocalDeviceClass", 1, 7);
    EXPECT_EQ(VlCm_SetLocalDeviceClass(1), TRUE);
    EXPECT_EQ(device_class(), 0x10Cu);
    support::CallPatch read("Btsdk_GetLocalDeviceClass", Btsdk_GetLocalDeviceClass);
    read.answer([](uint32_t* written) { return *written = 0x5A020C, 1U; });
    EXPECT_EQ(VlCm_SetLocalDeviceClass(0), TRUE);
    EXPECT_EQ(device_class(), 0x104u);
}

TEST_F(LocalClass, IsStoredAlsoWhenItCannotBeSet) {
    VlSim_Fail("Btsdk_SetLocalDeviceClass", 0, 7);
    EXPECT_EQ(VlCm_SetLocalDeviceClass(2), TRUE);
    EXPECT_EQ(stored(), "2");
}

TEST_F(LocalClass, TheResultOfStoringItIsHandedOn) {
    support::CallPatch write("Btsdk_WritePrivateProfileInt", Btsdk_WritePrivateProfileInt);
    for (const BOOL each : {FALSE, TRUE, 7, -1}) {
        write.answer([each](const char*, const char*, int32_t, const char*) { return each; });
        EXPECT_EQ(VlCm_SetLocalDeviceClass(3), each);
    }
    EXPECT_EQ(device_class(), 0x140680u) << "set before it is stored";
}

TEST_F(LocalClass, OpensNoScope) {
    VlCm_GetLocalDeviceClass();
    VlCm_SetLocalDeviceClass(1);
    EXPECT_TRUE(support::trace_log().empty());
}
