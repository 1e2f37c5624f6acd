#include "support/suite_test.h"

#include "support/sdk_log.h"
#include "support/trace_log.h"

#include "VlCommon.h"

#include <gtest/gtest-spi.h>

using support::has_in_order;
using support::has_line;
using support::SettingsFile;
using support::SettingsScope;
using support::SuiteTest;

namespace {

class Suite : public SuiteTest {};

// A test that leaves something behind, run by hand.
class LeakingTest : public SuiteTest {
public:
    void TestBody() override { leak = CreateEventA(nullptr, FALSE, FALSE, "SupportLeak"); }
    HANDLE leak = nullptr;
};
void run_leaking_test() {
    LeakingTest test;
    test.TestBody();
}

class ReadingTest : public SuiteTest {
public:
    void TestBody() override { seen = SettingsScope::get(SettingsFile::kCommon, "General", "Key"); }
    std::string seen = "not run";
};

class WrongNameTest : public SuiteTest {
public:
    void TestBody() override { allow_leak("no such row"); }
};
void run_wrong_name_test() {
    WrongNameTest test;
    test.TestBody();
}

struct Row {
    const char* label;
    int value;
};

}  // namespace

TEST_F(Suite, StartsWithCleanLogsAndSettings) {
    EXPECT_EQ(support::trace_log(), std::vector<std::string>());
    EXPECT_EQ(support::sdk_calls(), std::vector<std::string>());
    EXPECT_FALSE(support::read_file(support::settings_path(SettingsFile::kCommon)).has_value());
}

TEST_F(Suite, ShowsWhatTheLibraryTracedAndAsked) {
    settings().common("General", "InstallDir", "C:\\suite\\");
    char folder[MAX_PATH];
    VlCm_GetQVNMobilePath(folder, MAX_PATH);
    EXPECT_STREQ(folder, "C:\\suite\\QVNMobile.ini");
    EXPECT_EQ(support::trace_scopes(),
              (std::vector<std::string>{"512 VlCm_GetQVNMobilePath", "512 VlCm_GetInstallDir"}));
    EXPECT_EQ(support::trace_log().size(), 4u);
    EXPECT_EQ(support::sdk_operations(), std::vector<std::string>{"Btsdk_GetPrivateProfileString"});
    EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileString").size(), 1u);
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfile").empty());
    support::clear_trace_log();
    support::clear_sdk_log();
    EXPECT_TRUE(support::trace_log().empty());
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(Suite, PutsSettingsBack) {
    settings().common("General", "Key", "outer");
    {
        SettingsScope inner;
        inner.common("General", "Key", "inner");
    }
    EXPECT_EQ(SettingsScope::get(SettingsFile::kCommon, "General", "Key"), "outer");
}

TEST(SuiteTest, TakesSettingsOfBeforeAwayUntilItsEnd) {
    SettingsScope before;
    before.common("General", "Key", "left over");
    {
        ReadingTest test;
        test.TestBody();
        EXPECT_EQ(test.seen, "");
    }
    EXPECT_EQ(SettingsScope::get(SettingsFile::kCommon, "General", "Key"), "left over");
}

TEST(SuiteTest, FailsATestThatLeavesAHandleAndClosesIt) {
    EXPECT_NONFATAL_FAILURE(run_leaking_test(), "SupportLeak");
    EXPECT_EQ(OpenEventA(SYNCHRONIZE, FALSE, "SupportLeak"), nullptr);
}

TEST(SuiteTest, FailsATestThatAllowsAnUnlistedLeak) {
    EXPECT_NONFATAL_FAILURE(run_wrong_name_test(), "no row \"no such row\"");
}

TEST(ForEachRow, NamesTheRowThatFails) {
    static constexpr Row kRows[] = {{"first", 1}, {"second", 2}};
    int sum = 0;
    EXPECT_NONFATAL_FAILURE(support::for_each_row(kRows,
                                                  [&sum](const Row& row) {
                                                      sum += row.value;
                                                      EXPECT_EQ(row.value, 1);
                                                  }),
                            "second");
    EXPECT_EQ(sum, 3);
}

TEST(Matchers, FindLinesAndTheirOrder) {
    const std::vector<std::string> lines = {"a", "b", "c"};
    EXPECT_TRUE(has_line(lines, "b"));
    EXPECT_FALSE(has_line(lines, "d"));
    EXPECT_TRUE(has_in_order(lines, {"a", "c"}));
    EXPECT_FALSE(has_in_order(lines, {"c", "a"}));
    EXPECT_FALSE(has_in_order(lines, {"a", "a"}));
}
