// Mobile devices by their class.
#include "vlcm/switches.h"

#include "support/suite_test.h"

namespace {

class MobileDevice : public support::SuiteTest {};

// Said in another way than the library says it: by ranges of the class instead of masks.
bool is_mobile(unsigned device_class) {
    const unsigned major = device_class / 256 % 32;
    const unsigned minor = device_class / 4 % 64;
    return major == 2 || minor == 5;
}

}  // namespace

TEST_F(MobileDevice, IsAPhoneOrHasMinorClass5) {
    const struct {
        const char* label;
        unsigned device_class;
        BOOL expected;
    } rows[] = {
        {"phone with services", 0x5A020C, TRUE},      {"computer, minor 5", 0x000114, TRUE},
        {"computer, minor 1", 0x000104, FALSE},       {"nothing", 0, FALSE},
        {"phone, minor 0", 0x000200, TRUE},           {"major 3", 0x000300, FALSE},
        {"major 2 of a wider field", 0x002200, TRUE}, {"format bits alone", 0x000003, FALSE},
        {"minor 5 with format bits", 0x000017, TRUE}, {"minor 5 and major 31", 0x001F14, TRUE},
        {"beyond 24 bits", 0xFF000000, FALSE},
    };
    support::for_each_row(
        rows, [](const auto& row) { EXPECT_EQ(VlCm_IsMobileDevice(row.device_class), row.expected); });
}

TEST_F(MobileDevice, EveryMajorAndMinorClassUnderAnyUpperBits) {
    for (const unsigned upper : {0U, 0x5A0000U, 0xFFFFE000U}) {
        for (unsigned low = 0; low < 0x2000; ++low) {
            const unsigned device_class = upper | low;
            ASSERT_EQ(VlCm_IsMobileDevice(device_class), is_mobile(device_class) ? TRUE : FALSE)
                << std::hex << device_class;
        }
    }
}
