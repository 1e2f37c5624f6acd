// Bounded text in buffers that end at a no-access page.
#include "frame/bounded_text.h"

#include "support/guarded_buffer.h"

#include <gtest/gtest.h>

#include <string>

using vl::append_bounded;
using vl::bounded_length;
using vl::copy_bounded;
using vl::format_bounded;
using vl::PathBuffer;

TEST(BoundedLength, StopsAtTheTerminatorOrAtTheLimit) {
    const struct {
        const char* label;
        std::string text;  // its terminator is part of what may be read
        size_t limit, expected;
    } rows[] = {
        {"limit 0", "abc", 0, 0},      {"empty", "", 5, 0},          {"before the limit", "abc", 10, 3},
        {"at the limit", "abc", 3, 3}, {"limit first", "abc", 2, 2}, {"terminator last", "abc", 4, 3},
    };
    for (const auto& row : rows)
        EXPECT_EQ(bounded_length(row.text.c_str(), row.limit), row.expected) << row.label;
}

TEST(BoundedLength, ReadsNothingBehindTheLimit) {
    const support::GuardedBuffer unterminated(4);
    memset(unterminated.as(), 'x', 4);
    EXPECT_EQ(bounded_length(unterminated.as(), 4), 4u);
}

TEST(CopyBounded, CutsAndTerminates) {
    const struct {
        const char* label;
        size_t size;
        std::string expected;
    } rows[] = {
        {"room for the terminator only", 1, ""},
        {"one short", 3, "ab"},
        {"exact", 4, "abc"},
        {"roomy", 9, "abc"},
    };
    for (const auto& row : rows) {
        const support::GuardedBuffer buffer(row.size);
        copy_bounded(buffer.as(), row.size, "abc");
        EXPECT_EQ(buffer.as(), row.expected) << row.label;
        EXPECT_TRUE(buffer.untouched_from(row.expected.size() + 1)) << row.label;
    }
}

TEST(CopyBounded, WritesNothingIntoNoRoom) {
    const support::GuardedBuffer buffer(4);
    copy_bounded(buffer.as() + 4, 0, "abc");
    EXPECT_TRUE(buffer.untouched_from(0));
}

TEST(CopyBounded, ReadsNoSourceBeyondItsRoom) {
    const support::GuardedBuffer source(3);  // no terminator: the page behind must not be read
    memcpy(source.as(), "abc", 3);
    const support::GuardedBuffer buffer(4);
    copy_bounded(buffer.as(), 4, source.as());
    EXPECT_STREQ(buffer.as(), "abc");
}

TEST(AppendBounded, CutsAtTheEndOfTheBuffer) {
    const struct {
        const char* label;
        std::string held;
        size_t size;
        std::string expected;
    } rows[] = {
        {"fits", "ab", 8, "abcde"},      {"exact", "ab", 6, "abcde"},    {"one short", "ab", 5, "abcd"},
        {"no room left", "ab", 3, "ab"}, {"empty before", "", 4, "cde"},
    };
    for (const auto& row : rows) {
        const support::GuardedBuffer buffer(row.size);
        memcpy(buffer.as(), row.held.c_str(), row.held.size() + 1);
        append_bounded(buffer.as(), row.size, "cde");
        EXPECT_EQ(buffer.as(), row.expected) << row.label;
    }
}

TEST(AppendBounded, LeavesABufferWithoutTerminatorAsItIs) {
    const support::GuardedBuffer buffer(5);
    append_bounded(buffer.as(), 5, "cde");
    EXPECT_TRUE(buffer.untouched_from(0));
}

TEST(FormatBounded, CutsAndTerminates) {
    const struct {
        const char* label;
        size_t size;
        std::string expected;
    } rows[] = {
        {"room for the terminator only", 1, ""},
        {"one short", 5, "n=12"},
        {"exact", 6, "n=123"},
        {"roomy", 20, "n=123"},
    };
    for (const auto& row : rows) {
        const support::GuardedBuffer buffer(row.size);
        format_bounded(buffer.as(), row.size, "n=%d", 123);
        EXPECT_EQ(buffer.as(), row.expected) << row.label;
    }
}

TEST(PathBuffer, StartsZeroedAndHolds259Bytes) {
    PathBuffer path;
    for (unsigned i = 0; i < PathBuffer::size(); ++i) ASSERT_EQ(path.data()[i], 0) << i;
    EXPECT_EQ(PathBuffer::size(), 260u);
    path.append(std::string(258, 'a').c_str()).append("bc");
    EXPECT_EQ(path.text(), std::string(258, 'a') + "b");
    path.append("d");
    EXPECT_EQ(strlen(path.text()), 259u);
}
