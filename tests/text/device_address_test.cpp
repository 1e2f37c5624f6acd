// Printed Bluetooth device addresses.
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/text.h"

#include <ctype.h>
#include <stdio.h>

#include <array>
#include <string>

using support::GuardedBuffer;

namespace {

class DeviceAddress : public support::SuiteTest {};

using Bytes = std::array<unsigned char, 6>;

// The text ends at a page that cannot be read, the address at one that cannot be written.
Bytes parse(const std::string& text) {
    const GuardedBuffer source(text.size() + 1);
    memcpy(source.as(), text.c_str(), text.size() + 1);
    const GuardedBuffer address(6);
    EXPECT_EQ(VlCm_ParseDeviceAddressFromString(source.as(), address.as<unsigned char>(), 6), TRUE);
    Bytes bytes{};
    memcpy(bytes.data(), address.as(), 6);
    return bytes;
}

TEST_F(DeviceAddress, StoresTheFirstPairLast) {
    const struct {
        const char* label;
        std::string text;
        Bytes bytes;
    } rows[] = {
        {"capital digits", "00:11:22:33:44:AB", {0xAB, 0x44, 0x33, 0x22, 0x11, 0x00}},
        {"small digits", "fe:dc:ba:98:76:54", {0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE}},
        {"other separators",
         "01-23 45x67a89\xFF"
         "CD",
         {0xCD, 0x89, 0x67, 0x45, 0x23, 0x01}},
        {"text behind", "01:02:03:04:05:06:07", {6, 5, 4, 3, 2, 1}},
        {"empty", "", {0, 0, 0, 0, 0, 0}},
        {"one digit", "A", {0, 0, 0, 0, 0, 0xA0}},
        {"a pair", "A1", {0, 0, 0, 0, 0, 0xA1}},
        {"ends at a separator", "A1:", {0, 0, 0, 0, 0, 0xA1}},
        {"last digit missing", "11:22:33:44:55:6", {0x60, 0x55, 0x44, 0x33, 0x22, 0x11}},
    };
    support::for_each_row(rows, [](const auto& row) { EXPECT_EQ(parse(row.text), row.bytes); });
    EXPECT_TRUE(support::trace_log().empty());
}

// A character that is no digit counts with its code, to 8 bits.
TEST_F(DeviceAddress, TakesOtherCharactersByTheirCode) {
    for (unsigned code = 1; code < 256; ++code) {
        if (code < 128 && isxdigit(static_cast<int>(code)) != 0) continue;
        SCOPED_TRACE(code);
        const std::string other(1, static_cast<char>(code));
        EXPECT_EQ(parse("1" + other)[5], static_cast<unsigned char>(16 + code));
        EXPECT_EQ(parse(other + "1")[5], static_cast<unsigned char>(code * 16 + 1));
    }
}

TEST_F(DeviceAddress, ReadsEveryDigit) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        char small[3], capital[3];
        snprintf(small, sizeof small, "%02x", byte);
        snprintf(capital, sizeof capital, "%02X", byte);
        EXPECT_EQ(parse(small)[5], byte);
        EXPECT_EQ(parse(capital)[5], byte);
    }
}

TEST_F(DeviceAddress, TakesTextsLongerThanAPath) {
    EXPECT_EQ(parse("01:02:03:04:05:06" + std::string(5000, 'x')), (Bytes{6, 5, 4, 3, 2, 1}));
}

TEST_F(DeviceAddress, NeedsTextAddressAndASizeOf6) {
    unsigned char address[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(VlCm_ParseDeviceAddressFromString(nullptr, address, 6), FALSE);
    EXPECT_EQ(VlCm_ParseDeviceAddressFromString("00:11:22:33:44:55", nullptr, 6), FALSE);
    for (const unsigned size : {0U, 1U, 5U, 7U, 17U, 0xFFFFFFFFU}) {
        EXPECT_EQ(VlCm_ParseDeviceAddressFromString("00:11:22:33:44:55", address, size), FALSE) << size;
    }
    for (const unsigned char byte : address) EXPECT_EQ(byte, 9);
}

}  // namespace
