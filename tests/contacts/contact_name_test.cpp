// A contact's display name.
#include "contact_use.h"

#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <vector>

namespace {

using Lines = std::vector<std::string>;

class ContactName : public support::SuiteTest {
protected:
    VlContactName name_{};
    void put_all(const std::string& family, const std::string& given, const std::string& additional) {
        put(name_.family, family);
        put(name_.given, given);
        put(name_.additional, additional);
    }
};

}  // namespace

TEST_F(ContactName, IsFamilyGivenAdditionalWithBlanksBetween) {
    const struct {
        const char* label;
        const char *family, *given, *additional;
        const char* expected;
    } rows[] = {
        {"all", "Li", "Lei", "X", "Li Lei X"},
        {"family and given", "Li", "Lei", "", "Li Lei"},
        {"family and additional", "Li", "", "X", "Li X"},
        {"given and additional", "", "Lei", "X", "Lei X"},
        {"family alone", "Li", "", "", "Li"},
        {"given alone has no leading blank", "", "Lei", "", "Lei"},
        {"additional alone has no leading blank", "", "", "X", "X"},
        {"none", "", "", "", ""},
        {"as they stand", " a ", "\xE6\x9D\x8E", "\xFF;", " a  \xE6\x9D\x8E \xFF;"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        put_all(row.family, row.given, row.additional);
        const support::GuardedBuffer buffer(strlen(row.expected) + 1);
        ASSERT_EQ(VlCm_GetContactName(&name_, buffer.as(), static_cast<uint32_t>(buffer.size())), 1u);
        EXPECT_STREQ(buffer.as(), row.expected);
        EXPECT_TRUE(buffer.untouched_from(buffer.size()));
    });
}

TEST_F(ContactName, IsNotCutToTheSize) {
    put_all("Wang", "Fang", "");
    char buffer[10] = "";
    EXPECT_EQ(VlCm_GetContactName(&name_, buffer, 1), 1u);
    EXPECT_STREQ(buffer, "Wang Fang");
}

TEST_F(ContactName, EndsAtTheEndsOfFieldsWithoutTerminator) {
    const std::string a(256, 'a'), b(256, 'b'), c(256, 'c');
    put_all(a, b, c);
    const support::GuardedBuffer buffer(771);
    ASSERT_EQ(VlCm_GetContactName(&name_, buffer.as(), 771), 1u);
    EXPECT_EQ(buffer.as(), a + " " + b + " " + c);
}

TEST_F(ContactName, IsRefusedForNullOrSizeZeroAndNothingIsWritten) {
    put_all("Li", "", "");
    char buffer[4] = "##";
    EXPECT_EQ(VlCm_GetContactName(nullptr, buffer, sizeof buffer), 0u);
    EXPECT_EQ(VlCm_GetContactName(&name_, nullptr, sizeof buffer), 0u);
    EXPECT_EQ(VlCm_GetContactName(&name_, buffer, 0), 0u);
    EXPECT_STREQ(buffer, "##");
}

TEST_F(ContactName, OpensItsScopeAndWritesNoLine) {
    char buffer[4];
    const Lines scope{">512 VlCm_GetContactName", "<512 VlCm_GetContactName"};
    VlCm_GetContactName(&name_, buffer, sizeof buffer);
    EXPECT_EQ(support::trace_log(), scope);
    VlCm_GetContactName(nullptr, buffer, 0);
    EXPECT_EQ(support::trace_log(), (Lines{scope[0], scope[1], scope[0], scope[1]}));
}
