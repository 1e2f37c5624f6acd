#include "stack_test.h"
#include "support/guarded_buffer.h"

#include <cstring>

namespace vlsim_test {
namespace {

constexpr char kPath[] = "Software\\vlsim-test";

// A fresh key with a text, a number and a row of bytes, and two sub-keys.
class Registry : public StackTest {
protected:
    Registry() {
        RegDeleteTreeA(HKEY_CURRENT_USER, kPath);
        EXPECT_EQ(Btsdk_RegCreateKey(HKEY_CURRENT_USER, kPath, &key_), 0u);
        constexpr DWORD kNumber = 0x12345678;
        constexpr BYTE kBytes[] = {1, 0, 2};
        RegSetValueExA(key_, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>("default"), 8);
        RegSetValueExA(key_, "Number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&kNumber), 4);
        RegSetValueExA(key_, "Bytes", 0, REG_BINARY, kBytes, sizeof kBytes);
        for (const char* name : {"Alpha", "Beta"}) {
            HKEY sub = nullptr;
            EXPECT_EQ(Btsdk_RegCreateKey(key_, name, &sub), 0u);
            Btsdk_RegCloseKey(sub);
        }
    }
    ~Registry() override {
        EXPECT_EQ(Btsdk_RegCloseKey(key_), 0u);
        RegDeleteTreeA(HKEY_CURRENT_USER, kPath);
    }
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    HKEY key_ = nullptr;
};

TEST_F(Registry, KeyIsOpenedAndCountedAndClosed) {
    HKEY opened = nullptr;
    ASSERT_EQ(Btsdk_RegOpenKey(HKEY_CURRENT_USER, kPath, &opened), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_KEYS), 2u);
    uint32_t sub_keys = 0;
    uint32_t values = 0;
    EXPECT_EQ(Btsdk_RegQueryInfoKey(opened, &sub_keys, &values), 0u);
    EXPECT_EQ(sub_keys, 2u);
    EXPECT_EQ(values, 3u);
    EXPECT_EQ(Btsdk_RegQueryInfoKey(opened, nullptr, nullptr), 0u);
    EXPECT_EQ(Btsdk_RegCloseKey(opened), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_KEYS), 1u);
}

TEST_F(Registry, MissingKeyWritesNothing) {
    HKEY opened = nullptr;
    EXPECT_EQ(Btsdk_RegOpenKey(HKEY_CURRENT_USER, "Software\\vlsim-test\\None", &opened),
              static_cast<uint32_t>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(opened, nullptr);
}

TEST_F(Registry, SubKeysAreNamedUntilThereAreNoMore) {
    char name[20] = {};
    EXPECT_EQ(Btsdk_RegEnumKey(key_, 1, name, sizeof name), 0u);
    EXPECT_STREQ(name, "Beta");
    EXPECT_EQ(Btsdk_RegEnumKey(key_, 2, name, sizeof name), static_cast<uint32_t>(ERROR_NO_MORE_ITEMS));
    const support::GuardedBuffer small(4);
    EXPECT_EQ(Btsdk_RegEnumKey(key_, 1, small.as<char>(), 4), static_cast<uint32_t>(ERROR_MORE_DATA));
    EXPECT_TRUE(small.untouched_from(0));
}

TEST_F(Registry, TextNeedsRoomForItsTerminator) {
    const support::GuardedBuffer exact(8);
    EXPECT_EQ(Btsdk_RegQueryStringValue(key_, nullptr, exact.as<char>(), 8), 0u);
    EXPECT_STREQ(exact.as<char>(), "default");
    const support::GuardedBuffer small(7);
    EXPECT_EQ(Btsdk_RegQueryStringValue(key_, nullptr, small.as<char>(), 7),
              static_cast<uint32_t>(ERROR_MORE_DATA));
    EXPECT_TRUE(small.untouched_from(0));
    EXPECT_EQ(Btsdk_RegQueryStringValue(key_, "Number", exact.as<char>(), 8),
              static_cast<uint32_t>(ERROR_INVALID_DATATYPE));
    EXPECT_STREQ(exact.as<char>(), "default");
}

TEST_F(Registry, TextWithoutTerminatorIsTerminated) {
    RegSetValueExA(key_, "Open", 0, REG_SZ, reinterpret_cast<const BYTE*>("open"), 4);
    char text[10];
    std::memset(text, 'x', sizeof text);
    EXPECT_EQ(Btsdk_RegQueryStringValue(key_, "Open", text, sizeof text), 0u);
    EXPECT_STREQ(text, "open");
}

TEST_F(Registry, NumberIsReadOnlyFromANumber) {
    uint32_t number = 0;
    EXPECT_EQ(Btsdk_RegQueryIntValue(key_, "Bytes", &number), static_cast<uint32_t>(ERROR_INVALID_DATATYPE));
    EXPECT_EQ(number, 0u);
    EXPECT_EQ(Btsdk_RegQueryIntValue(key_, "Number", &number), 0u);
    EXPECT_EQ(number, 0x12345678u);
}

TEST_F(Registry, BytesNeedTheirRoom) {
    uint32_t size = 2;
    const support::GuardedBuffer data(3);
    EXPECT_EQ(Btsdk_RegQueryBinaryValue(key_, "Bytes", data.as<void>(), &size),
              static_cast<uint32_t>(ERROR_MORE_DATA));
    EXPECT_EQ(size, 2u);
    EXPECT_TRUE(data.untouched_from(0));
    size = 3;
    EXPECT_EQ(Btsdk_RegQueryBinaryValue(key_, "Bytes", data.as<void>(), &size), 0u);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(std::memcmp(data.as<void>(), "\1\0\2", 3), 0);
}

struct ValueQuery {
    char name[20] = "unchanged";
    uint32_t name_length = sizeof name;
    uint32_t type = 0;
    uint8_t data[20] = {};
    uint32_t data_length = sizeof data;
};

TEST_F(Registry, ValuesComeWithNameTypeAndData) {
    bool seen = false;
    for (uint32_t index = 0; index < 3; ++index) {
        ValueQuery value;
        ASSERT_EQ(Btsdk_RegEnumValue(key_, index, value.name, &value.name_length, &value.type, value.data,
                                     &value.data_length),
                  0u);
        if (std::strcmp(value.name, "Bytes") != 0) continue;
        seen = true;
        EXPECT_EQ(value.name_length, 5u);
        EXPECT_EQ(value.type, static_cast<uint32_t>(REG_BINARY));
        EXPECT_EQ(value.data_length, 3u);
    }
    EXPECT_TRUE(seen);
    ValueQuery none;
    EXPECT_EQ(Btsdk_RegEnumValue(key_, 3, none.name, &none.name_length, nullptr, nullptr, nullptr),
              static_cast<uint32_t>(ERROR_NO_MORE_ITEMS));
    EXPECT_STREQ(none.name, "unchanged");
}

TEST_F(Registry, ValueWithoutRoomWritesNothing) {
    for (const bool short_name : {true, false}) {
        SCOPED_TRACE(short_name);
        ValueQuery value;
        (short_name ? value.name_length : value.data_length) = 0;
        EXPECT_EQ(Btsdk_RegEnumValue(key_, 0, value.name, &value.name_length, &value.type, value.data,
                                     &value.data_length),
                  static_cast<uint32_t>(ERROR_MORE_DATA));
        EXPECT_STREQ(value.name, "unchanged");
        EXPECT_EQ(value.type, 0u);
        EXPECT_EQ(value.name_length, short_name ? 0u : 20u);
    }
}

TEST_F(Registry, SixtyFourBitViewIsTheProgramsOwn) {
    HKEY wide = nullptr;
    ASSERT_EQ(Btsdk_RegCreateKeyForX64Reg(HKEY_CURRENT_USER, kPath, &wide), 0u);
    ValueQuery value;
    EXPECT_EQ(Btsdk_RegEnumValueForX64Reg(wide, 0, value.name, &value.name_length, nullptr, nullptr, nullptr),
              0u);
    EXPECT_STRNE(value.name, "unchanged");
    EXPECT_EQ(VlSim_LiveCount(VLSIM_KEYS), 2u);
    EXPECT_EQ(Btsdk_RegCloseKeyForX64Reg(wide), 0u);
}

TEST_F(Registry, RootKeysAreClosedAsOftenAsOneLikes) {
    EXPECT_EQ(Btsdk_RegCloseKey(HKEY_LOCAL_MACHINE), 0u);
    EXPECT_EQ(Btsdk_RegCloseKey(HKEY_LOCAL_MACHINE), 0u);
    EXPECT_EQ(VlSim_MisuseCount(), 0u);
}

}  // namespace
}  // namespace vlsim_test
