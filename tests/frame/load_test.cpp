// Loading and unloading the built library.
#include "library_copy.h"
#include "support/handle_census.h"
#include "support/suite_test.h"

#include <string>
#include <vector>

namespace {

struct SemaphoreState {
    ULONG count, maximum;
};

template <typename Function>
Function* system_call(const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), name)));
}

// False for every object that is no semaphore.
bool read_semaphore(HANDLE handle, SemaphoreState& state) {
    static const auto query = system_call<LONG WINAPI(HANDLE, int, void*, ULONG, ULONG*)>("NtQuerySemaphore");
    return query(handle, 0, &state, sizeof state, nullptr) >= 0;
}

std::vector<HANDLE> semaphores(const support::HandleCensus& before) {
    std::vector<HANDLE> found;
    SemaphoreState state{};
    for (HANDLE handle : before.opened()) {
        if (read_semaphore(handle, state)) found.push_back(handle);
    }
    return found;
}

bool has_name(HANDLE handle) {
    static const auto query = system_call<LONG WINAPI(HANDLE, int, void*, ULONG, ULONG*)>("NtQueryObject");
    constexpr int kObjectName = 1;
    struct {
        USHORT length, room;
        wchar_t* text;
        wchar_t storage[300];
    } name{};
    query(handle, kObjectName, &name, sizeof name, nullptr);
    return name.length != 0;
}

class Load : public support::SuiteTest {
protected:
    Load() { LibraryCopy warm_up; }
};

}  // namespace

TEST_F(Load, CreatesOneUnnamedSemaphoreOfOneAndUnloadClosesIt) {
    const support::HandleCensus before;
    LibraryCopy library;
    ASSERT_NE(library.module(), nullptr);
    const std::vector<HANDLE> created = semaphores(before);
    ASSERT_EQ(created.size(), 1u);
    SemaphoreState state{};
    read_semaphore(created[0], state);
    EXPECT_EQ(state.count, 1u);
    EXPECT_EQ(state.maximum, 1u);
    EXPECT_FALSE(has_name(created[0]));
    library.unload();
    EXPECT_EQ(before.opened_since(), 0u);
}

TEST_F(Load, IsRepeatable) {
    const support::HandleCensus before;
    LibraryCopy library;
    for (int round = 0; round < 20; ++round) {
        ASSERT_EQ(semaphores(before).size(), 1u) << round;
        library.unload();
        ASSERT_EQ(before.opened_since(), 0u) << round;
        library.load();
        ASSERT_NE(library.module(), nullptr) << round;
    }
}

TEST_F(Load, ASecondReferenceCreatesNothing) {
    const LibraryCopy library;
    char path[MAX_PATH];
    GetModuleFileNameA(library.module(), path, MAX_PATH);
    const support::HandleCensus before;
    const HMODULE again = LoadLibraryA(path);
    EXPECT_EQ(again, library.module());
    EXPECT_EQ(before.opened_since(), 0u);
    FreeLibrary(again);
}

TEST_F(Load, ThreadsThatStartAndEndChangeNothing) {
    const LibraryCopy library;
    const support::HandleCensus before;
    const HANDLE thread = CreateThread(
        nullptr, 0, [](void*) -> DWORD { return 0; }, nullptr, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    EXPECT_TRUE(semaphores(before).empty());
}
