// Whether the user is an administrator.
#include "printers_test.h"

using namespace printers_test;

namespace {

constexpr BOOL kUntouched = 0x5A5A;

class Administrator : public PrinterTest {
protected:
    support::CallPatch<decltype(AllocateAndInitializeSid)> group{"AllocateAndInitializeSid",
                                                                 AllocateAndInitializeSid};
    support::CallPatch<decltype(CheckTokenMembership)> token{"CheckTokenMembership", CheckTokenMembership};
    support::CallPatch<decltype(FreeSid)> freed{"FreeSid", FreeSid};
};

}  // namespace

TEST_F(Administrator, IsAMemberOfTheBuiltInGroup) {
    for (const BOOL member : {TRUE, FALSE}) {
        support::clear_trace_log();
        token.answer([&](HANDLE caller, PSID sid, BOOL* answer) {
            EXPECT_EQ(caller, nullptr);
            SID_IDENTIFIER_AUTHORITY authority = {SECURITY_NT_AUTHORITY};
            PSID expected = nullptr;
            EXPECT_TRUE(AllocateAndInitializeSid(&authority, 2, 32, 544, 0, 0, 0, 0, 0, 0, &expected));
            EXPECT_TRUE(EqualSid(sid, expected));
            FreeSid(expected);
            *answer = member;
            return TRUE;
        });
        BOOL answer = kUntouched;
        EXPECT_EQ(VlCm_IsCurrentUserAdmin(&answer), TRUE);
        EXPECT_EQ(answer, member);
        EXPECT_EQ(support::trace_log(), Lines{line("check token correctly\r\n")});
    }
    EXPECT_EQ(freed.count(), 2u);
}

TEST_F(Administrator, IsTestedWithTheRealToken) {
    BOOL answer = kUntouched;
    EXPECT_EQ(VlCm_IsCurrentUserAdmin(&answer), TRUE);
    EXPECT_TRUE(answer == TRUE || answer == FALSE);
    ASSERT_EQ(freed.count(), 1u);
    EXPECT_EQ(std::get<0>(freed.calls()[0]), std::get<1>(token.calls()[0]));
}

TEST_F(Administrator, WithoutAnOutputIsAnError) {
    EXPECT_EQ(VlCm_IsCurrentUserAdmin(nullptr), FALSE);
    EXPECT_EQ(support::trace_log(), Lines{line("parameter error!\r\n")});
    EXPECT_EQ(group.count() + token.count(), 0u);
}

TEST_F(Administrator, CannotBeTestedWithoutTheGroup) {
    group.answer([](auto, auto, auto, auto, auto, auto, auto, auto, auto, auto, PSID* sid) {
        *sid = reinterpret_cast<PSID>(uintptr_t{0x1234});
        return FALSE;
    });
    BOOL answer = kUntouched;
    EXPECT_EQ(VlCm_IsCurrentUserAdmin(&answer), FALSE);
    EXPECT_EQ(answer, kUntouched);
    EXPECT_EQ(support::trace_log(), Lines{line("can not initialize SID\r\n")});
    EXPECT_EQ(token.count() + freed.count(), 0u);
}

TEST_F(Administrator, CannotBeTestedWithoutTheToken) {
    token.answer([](HANDLE, PSID, BOOL* answer) {
        *answer = TRUE;
        return FALSE;
    });
    BOOL answer = kUntouched;
    EXPECT_EQ(VlCm_IsCurrentUserAdmin(&answer), FALSE);
    EXPECT_EQ(answer, kUntouched);
    EXPECT_EQ(support::trace_log(), Lines{line("can not check token membership\r\n")});
    EXPECT_EQ(freed.count(), 1u);
}
