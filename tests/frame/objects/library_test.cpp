// Attach and detach: the library's entry point, called as the system calls it.
#include "support/call_patch.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <vector>

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void* reserved);

namespace {

const HANDLE kFirst = reinterpret_cast<HANDLE>(0x7001);
const HANDLE kSecond = reinterpret_cast<HANDLE>(0x7002);

class LibrarySemaphore : public testing::Test {
protected:
    LibrarySemaphore() {
        answer_with(kFirst);
        closing_.answer([](HANDLE) { return TRUE; });
    }
    ~LibrarySemaphore() override { call(DLL_PROCESS_DETACH); }

    static BOOL call(DWORD reason, void* reserved = nullptr) { return DllMain(nullptr, reason, reserved); }
    void answer_with(HANDLE semaphore) {
        creating_.answer([=](SECURITY_ATTRIBUTES*, LONG, LONG, const char*) { return semaphore; });
    }
    [[nodiscard]] size_t created() const { return creating_.count(); }
    [[nodiscard]] std::vector<HANDLE> closed() const {
        std::vector<HANDLE> handles;
        for (const auto& [handle] : closing_.calls()) handles.push_back(handle);
        return handles;
    }
    [[nodiscard]] auto creation(size_t index) const { return creating_.calls().at(index); }

private:
    support::CallPatch<decltype(CreateSemaphoreA)> creating_{"CreateSemaphoreA", CreateSemaphoreA};
    support::CallPatch<decltype(CloseHandle)> closing_{"CloseHandle", CloseHandle};
};

using Handles = std::vector<HANDLE>;

}  // namespace

TEST_F(LibrarySemaphore, IsCreatedAtAttachUnnamedWithOneOfOne) {
    EXPECT_EQ(call(DLL_PROCESS_ATTACH), TRUE);
    ASSERT_EQ(created(), 1u);
    const auto [security, initial, maximum, name] = creation(0);
    EXPECT_EQ(security, nullptr);
    EXPECT_EQ(initial, 1);
    EXPECT_EQ(maximum, 1);
    EXPECT_EQ(name, nullptr);
    EXPECT_EQ(closed(), Handles{});
}

TEST_F(LibrarySemaphore, IsClosedAtDetachOnce) {
    call(DLL_PROCESS_ATTACH);
    EXPECT_EQ(call(DLL_PROCESS_DETACH), TRUE);
    EXPECT_EQ(closed(), Handles{kFirst});
    EXPECT_EQ(call(DLL_PROCESS_DETACH), TRUE);
    EXPECT_EQ(closed(), Handles{kFirst}) << "the handle was not set to null";
}

TEST_F(LibrarySemaphore, IsClosedWhenTheProcessEndsToo) {
    call(DLL_PROCESS_ATTACH);
    int process_ends = 0;  // the system passes an address then
    EXPECT_EQ(call(DLL_PROCESS_DETACH, &process_ends), TRUE);
    EXPECT_EQ(closed(), Handles{kFirst});
}

TEST_F(LibrarySemaphore, IsMadeAnewAtEachAttach) {
    call(DLL_PROCESS_ATTACH);
    call(DLL_PROCESS_DETACH);
    answer_with(kSecond);
    call(DLL_PROCESS_ATTACH);
    call(DLL_PROCESS_DETACH);
    EXPECT_EQ(created(), 2u);
    EXPECT_EQ(closed(), (Handles{kFirst, kSecond}));
}

TEST_F(LibrarySemaphore, ThreadsChangeNothing) {
    call(DLL_PROCESS_ATTACH);
    EXPECT_EQ(call(DLL_THREAD_ATTACH), TRUE);
    EXPECT_EQ(call(DLL_THREAD_DETACH), TRUE);
    EXPECT_EQ(created(), 1u);
    EXPECT_EQ(closed(), Handles{});
}

TEST_F(LibrarySemaphore, AFailedCreationIsNoFailureAndNothingIsClosed) {
    answer_with(nullptr);
    EXPECT_EQ(call(DLL_PROCESS_ATTACH), TRUE);
    EXPECT_EQ(call(DLL_PROCESS_DETACH), TRUE);
    EXPECT_EQ(created(), 1u);
    EXPECT_EQ(closed(), Handles{});
}

TEST_F(LibrarySemaphore, AnUnknownReasonIsAnsweredTrue) {
    EXPECT_EQ(call(17), TRUE);
    EXPECT_EQ(created(), 0u);
    EXPECT_EQ(closed(), Handles{});
}
