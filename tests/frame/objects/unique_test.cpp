// The owner types: what they close, when, and that nothing is closed twice.
#include "frame/unique.h"

#include "frame/unique_com.h"
#include "frame/unique_printer.h"

#include "support/import_patch.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace {

std::vector<int> g_closed;

struct NumberTraits {
    using value = int;
    static constexpr int none() { return -1; }
    static void close(int number) {
        g_closed.push_back(number);
        SetLastError(99);
    }
};
using Number = vl::Unique<NumberTraits>;

// Two owners of one resource, or a resource that slips out unnoticed, do not compile.
template <typename Owner>
constexpr bool kMoveOnly =
    !std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner> &&
    std::is_nothrow_move_constructible_v<Owner> && std::is_nothrow_move_assignable_v<Owner> &&
    !std::is_convertible_v<Owner, typename Owner::value> &&
    !std::is_convertible_v<typename Owner::value, Owner>;
static_assert(kMoveOnly<Number>);
static_assert(kMoveOnly<vl::UniqueHandle> && kMoveOnly<vl::UniqueFile> && kMoveOnly<vl::UniqueView>);
static_assert(kMoveOnly<vl::UniqueModule> && kMoveOnly<vl::UniqueRegistryKey>);
static_assert(kMoveOnly<vl::UniqueSdkMemory> && kMoveOnly<vl::ConnectionEnum>);
static_assert(!std::is_copy_constructible_v<vl::ComApartment>);

class Unique : public testing::Test {
protected:
    Unique() { g_closed.clear(); }
    static std::vector<int> closed() { return g_closed; }
};
using Numbers = std::vector<int>;

}  // namespace

TEST_F(Unique, ClosesWhatItHoldsAtTheEndOfTheScope) {
    {
        const Number number(4);
        EXPECT_EQ(number.get(), 4);
        EXPECT_TRUE(number);
        EXPECT_EQ(closed(), Numbers{});
    }
    EXPECT_EQ(closed(), Numbers{4});
}

TEST_F(Unique, ClosesNothingWhenItHoldsNone) {
    {
        const Number empty;
        const Number none(-1);
        EXPECT_FALSE(empty);
        EXPECT_FALSE(none);
        EXPECT_EQ(empty.get(), -1);
    }
    EXPECT_EQ(closed(), Numbers{});
}

TEST_F(Unique, ZeroIsAResourceWhereNoneIsAnotherValue) {
    { const Number zero(0); }
    EXPECT_EQ(closed(), Numbers{0});
}

TEST_F(Unique, MovingHandsTheResourceOn) {
    {
        Number from(4);
        const Number to(std::move(from));
        EXPECT_FALSE(from);  // NOLINT(bugprone-use-after-move): a moved owner is empty, by contract
        EXPECT_EQ(to.get(), 4);
    }
    EXPECT_EQ(closed(), Numbers{4});
}

TEST_F(Unique, MoveAssignmentClosesTheOldOneFirst) {
    {
        Number from(4);
        Number to(5);
        to = std::move(from);
        EXPECT_EQ(closed(), Numbers{5});
        EXPECT_EQ(to.get(), 4);
    }
    EXPECT_EQ(closed(), (Numbers{5, 4}));
}

TEST_F(Unique, SelfMoveKeepsTheResource) {
    {
        Number number(4);
        Number& same = number;
        number = std::move(same);
        EXPECT_EQ(number.get(), 4);
        EXPECT_EQ(closed(), Numbers{});
    }
    EXPECT_EQ(closed(), Numbers{4});
}

TEST_F(Unique, ReleaseGivesTheResourceAway) {
    {
        Number number(4);
        EXPECT_EQ(number.release(), 4);
        EXPECT_FALSE(number);
        EXPECT_EQ(number.release(), -1);
    }
    EXPECT_EQ(closed(), Numbers{});
}

TEST_F(Unique, ResetClosesAndTakesAnother) {
    Number number(4);
    number.reset(5);
    EXPECT_EQ(closed(), Numbers{4});
    number.reset();
    EXPECT_EQ(closed(), (Numbers{4, 5}));
    number.reset();
    EXPECT_EQ(closed(), (Numbers{4, 5}));
}

TEST_F(Unique, ReceiveClosesBeforeTheNewOneArrives) {
    Number number(4);
    int* slot = number.receive();
    EXPECT_EQ(closed(), Numbers{4});
    EXPECT_EQ(*slot, -1);
    *slot = 6;
    EXPECT_EQ(number.release(), 6);
}

TEST_F(Unique, ClosingKeepsTheLastError) {
    SetLastError(5);
    { const Number number(4); }
    EXPECT_EQ(GetLastError(), 5u);
}

namespace {

// The values that one closing call was given, seen at the program's own import table.
std::vector<uintptr_t> g_values;

uintptr_t WINAPI note_value(uintptr_t value) {
    g_values.push_back(value);
    return 0;
}

template <typename Owner, typename Value = typename Owner::value>
Value as_value(uintptr_t number) {
    if constexpr (std::is_pointer_v<Value>)
        return reinterpret_cast<Value>(number);
    else
        return static_cast<Value>(number);
}

template <typename Owner>
void expect_closed_by(const char* call, uintptr_t none) {
    const support::ImportPatch patch(GetModuleHandleA(nullptr), call, reinterpret_cast<void*>(note_value));
    ASSERT_NE(patch.slots(), 0u) << call;
    g_values.clear();
    { const Owner held(as_value<Owner>(0x1234)); }
    EXPECT_EQ(g_values, std::vector<uintptr_t>{0x1234}) << call;
    { const Owner nothing(as_value<Owner>(none)); }
    { const Owner empty; }
    EXPECT_EQ(g_values.size(), 1u) << call << " for no resource";
}

constexpr uintptr_t kNull = 0;
const auto kInvalid = reinterpret_cast<uintptr_t>(INVALID_HANDLE_VALUE);

}  // namespace

TEST(Owners, CloseTheirKindByItsOwnCall) {
    expect_closed_by<vl::UniqueHandle>("CloseHandle", kNull);
    expect_closed_by<vl::UniqueFile>("CloseHandle", kInvalid);
    expect_closed_by<vl::UniqueView>("UnmapViewOfFile", kNull);
    expect_closed_by<vl::UniqueModule>("FreeLibrary", kNull);
    expect_closed_by<vl::UniqueRegistryKey>("RegCloseKey", kNull);
    expect_closed_by<vl::UniqueTaskMemory>("CoTaskMemFree", kNull);
    expect_closed_by<vl::UniquePrinter>("ClosePrinter", kNull);
}

TEST(Owners, GiveTheStackItsOwnBack) {
    expect_closed_by<vl::UniqueSdkRegistryKey>("Btsdk_RegCloseKey", kNull);
    expect_closed_by<vl::UniqueSdkRegistryKey64>("Btsdk_RegCloseKeyForX64Reg", kNull);
    expect_closed_by<vl::UniqueSdkFile>("Btsdk_CloseHandle", kInvalid);
    expect_closed_by<vl::UniqueSdkMemory>("Btsdk_FreeMemory", kNull);
    expect_closed_by<vl::LocalServerEnum>("Btsdk_EndEnumLocalServer", kNull);
    expect_closed_by<vl::ConnectionEnum>("Btsdk_EndEnumConnection", kNull);
    expect_closed_by<vl::RemoteServiceEnum>("Btsdk_EndEnumRemoteService", kNull);
    expect_closed_by<vl::RemoteDeviceEnum>("Btsdk_EndEnumRemoteDevice", kNull);
}

TEST(Owners, AFileOwnerClosesANullHandle) {  // only the invalid handle stands for no file
    const support::ImportPatch patch(GetModuleHandleA(nullptr), "CloseHandle",
                                     reinterpret_cast<void*>(note_value));
    g_values.clear();
    { const vl::UniqueFile file(nullptr); }
    EXPECT_EQ(g_values, std::vector<uintptr_t>{0});
}

namespace {

struct CountedObject {
    int references = 1;
    void Release() { --references; }
};

HRESULT g_joined = S_OK;
int g_left = 0;

HRESULT WINAPI join(void* /*reserved*/) { return g_joined; }
void WINAPI leave() { ++g_left; }

}  // namespace

TEST(Owners, AnInterfaceIsReleasedOnce) {
    CountedObject object;
    { const vl::UniqueInterface<CountedObject> held(&object); }
    EXPECT_EQ(object.references, 0);
}

TEST(ComApartment, IsLeftOnlyWhenItWasJoined) {
    const HMODULE self = GetModuleHandleA(nullptr);
    const support::ImportPatch joining(self, "CoInitialize", reinterpret_cast<void*>(join));
    const support::ImportPatch leaving(self, "CoUninitialize", reinterpret_cast<void*>(leave));
    ASSERT_NE(joining.slots() * leaving.slots(), 0u);
    const struct {
        const char* label;
        HRESULT answer;
        int left;
    } rows[] = {
        {"joined", S_OK, 1}, {"joined before", S_FALSE, 1}, {"the other kind", RPC_E_CHANGED_MODE, 0}};
    for (const auto& row : rows) {
        g_joined = row.answer;
        g_left = 0;
        { const vl::ComApartment apartment; }
        EXPECT_EQ(g_left, row.left) << row.label;
    }
}
