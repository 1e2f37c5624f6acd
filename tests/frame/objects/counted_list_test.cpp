// Lists of the stack that change between the counting and the reading call, and lists without memory.
#include "frame/counted_list.h"

#include "support/import_patch.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <vector>

namespace {

using Handles = std::vector<BtHandle>;

// A list operation that counts `counted` handles and then holds `held`.
struct ListOperation {
    uint32_t counted;
    Handles held;
    int calls = 0;
    uint32_t length_given = 0;

    uint32_t operator()(BtHandle* out, uint32_t length) {
        ++calls;
        if (out == nullptr) {
            EXPECT_EQ(length, 0u);
            return counted;
        }
        length_given = length;
        for (uint32_t i = 0; i < length; ++i) EXPECT_EQ(out[i], 0u) << "not zeroed at " << i;
        std::copy_n(held.begin(), std::min<size_t>(length, held.size()), out);
        return static_cast<uint32_t>(held.size());
    }
};

Handles read(ListOperation& operation) {
    const vl::HandleList list =
        vl::read_handles([&](BtHandle* out, uint32_t n) { return operation(out, n); });
    EXPECT_FALSE(list.out_of_memory);
    return {list.begin(), list.end()};
}

bool g_memory = true;
void* malloc_or_not(size_t bytes) { return g_memory ? calloc(1, bytes) : nullptr; }

}  // namespace

TEST(CountedList, ReadsWhatWasCounted) {
    ListOperation operation{3, {7, 8, 9}};
    EXPECT_EQ(read(operation), (Handles{7, 8, 9}));
    EXPECT_EQ(operation.calls, 2);
    EXPECT_EQ(operation.length_given, 3u);
}

TEST(CountedList, AsksOnceWhenThereIsNothing) {
    ListOperation operation{0, {7}};
    EXPECT_EQ(read(operation), Handles{});
    EXPECT_EQ(operation.calls, 1);
}

TEST(CountedList, AListThatGrewIsCutAtTheCount) {
    ListOperation operation{2, {7, 8, 9, 10}};
    EXPECT_EQ(read(operation), (Handles{7, 8}));
}

TEST(CountedList, AListThatShrankGivesWhatIsLeft) {
    ListOperation operation{3, {7}};
    EXPECT_EQ(read(operation), Handles{7});
    ListOperation emptied{3, {}};
    EXPECT_EQ(read(emptied), Handles{});
}

TEST(CountedList, WithoutMemoryItIsEmptyAndSaysSo) {
    const support::ImportPatch patch(GetModuleHandleA(nullptr), "malloc",
                                     reinterpret_cast<void*>(malloc_or_not));
    ASSERT_NE(patch.slots(), 0u);
    ListOperation operation{3, {7, 8, 9}};
    auto query = [&](BtHandle* out, uint32_t n) { return operation(out, n); };
    g_memory = false;
    const vl::HandleList list = vl::read_handles(query);
    g_memory = true;
    EXPECT_TRUE(list.out_of_memory);
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_EQ(operation.calls, 1);
}
