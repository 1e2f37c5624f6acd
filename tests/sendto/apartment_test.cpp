// COM on the caller's thread: joined and left by each call, whatever the thread was before.
#include "send_to_test.h"
#include "support/new_thread.h"

#include <functional>

using namespace sendto_test;

namespace {

constexpr struct {
    const char* label;
    void (*call)();
} kCalls[] = {
    {"add", [] { VlCm_SyncSend2btShc(address_of(kPhone).data(), TRUE); }},
    {"remove", [] { VlCm_SyncSend2btShc(address_of(kPhone).data(), FALSE); }},
    {"all", [] { VlCm_SyncSend2btShcForMultiUser(); }},
    {"namespace link", [] { VlCm_CreateVistaSend2btShc(); }},
};

class Apartment : public SendToTest {
protected:
    support::CallPatch<HRESULT(LPVOID)> join_{"CoInitialize", CoInitialize};
    support::CallPatch<void()> leave_{"CoUninitialize", CoUninitialize};
};

}  // namespace

TEST_F(Apartment, IsLeftAsOftenAsItWasJoined) {
    support::for_each_row(kCalls, [&](const auto& row) {
        const size_t joined = join_.count(), left = leave_.count();
        support::on_new_thread([&] {
            row.call();
            EXPECT_EQ(CoInitialize(nullptr), S_OK);  // nothing was left behind
            row.call();
            EXPECT_EQ(CoInitialize(nullptr), S_FALSE);  // still joined
            CoUninitialize();
            CoUninitialize();
        });
        EXPECT_GT(join_.count(), joined);
        EXPECT_EQ(join_.count() - joined, leave_.count() - left);
        for (const auto& [reserved] : join_.calls()) EXPECT_EQ(reserved, nullptr);
    });
}

TEST_F(Apartment, OfTheOtherKindIsUsedAndNotLeft) {
    support::for_each_row(kCalls, [&](const auto& row) {
        support::on_new_thread([&] {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            row.call();
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
            CoUninitialize();
            CoUninitialize();
        });
    });
    EXPECT_GT(join_.count(), 0u);
    EXPECT_EQ(leave_.count(), 0u);
    EXPECT_TRUE(exists(generic_link()));
}

TEST_F(Apartment, ThatCannotBeJoinedIsNotLeft) {
    support::for_each_row(kCalls, [&](const auto& row) {
        join_.fail_from(1, E_OUTOFMEMORY);
        support::on_new_thread([&] { row.call(); });
    });
    EXPECT_GT(join_.count(), 0u);
    EXPECT_EQ(leave_.count(), 0u);
}
