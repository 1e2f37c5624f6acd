// Message access, a switch that no export shows.
#include "frame/switches.h"

#include "support/call_patch.h"

#include "VlSDK.h"

#include <gtest/gtest.h>

#include <string.h>

namespace {

struct Row {
    const char* label;
    uint32_t mobile, setting;
    BOOL expected;
    size_t reads;
};
constexpr Row kRows[] = {
    {"mobile support active", 1, 0, TRUE, 0}, {"any answer of the stack but 0", 0x80000000, 0, TRUE, 0},
    {"switched off", 0, 0, FALSE, 1},         {"switched on", 0, 1, TRUE, 1},
    {"another value", 0, 7, TRUE, 1},         {"a negative value", 0, 0xFFFFFFFF, TRUE, 1},
};

}  // namespace

TEST(IsMobileMAPActive, IsTrueAtOnceWhenMobileSupportIsActiveElseAsItsSettingSays) {
    support::CallPatch mobile("Btsdk_IsMobileActive", Btsdk_IsMobileActive);
    for (const Row& row : kRows) {
        support::CallPatch setting("Btsdk_GetPrivateProfileInt", Btsdk_GetPrivateProfileInt);
        mobile.answer([&] { return row.mobile; });
        setting.answer([&](const char* section, const char* key, int32_t fallback, const char* path) {
            EXPECT_STREQ(section, "VlConfig");
            EXPECT_STREQ(key, "IsSupportMAPFunc");
            EXPECT_EQ(fallback, 0);
            EXPECT_STREQ(strrchr(path, '\\'), "\\vlcs.ini");
            return row.setting;
        });
        EXPECT_EQ(vl::switches::IsMobileMAPActive(), row.expected) << row.label;
        EXPECT_EQ(setting.count(), row.reads) << row.label;
    }
}
