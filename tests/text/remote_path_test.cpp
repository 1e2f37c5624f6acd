// Paths on remote devices. The program runs on several code pages.
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/text.h"

#include <limits>
#include <random>
#include <string>

using support::GuardedBuffer;

namespace {

class RemotePath : public support::SuiteTest {};

constexpr int kToRemote = 1, kToLocal = 2;

// The path ends with its terminator at a page that cannot be touched.
std::string formatted(const std::string& path, int direction) {
    const GuardedBuffer buffer(path.size() + 1);
    memcpy(buffer.as(), path.c_str(), path.size() + 1);
    VlCm_FormatFTPFilePath(buffer.as(), direction);
    return std::string(buffer.as(), path.size());
}

bool double_byte() { return GetACP() == 936 || GetACP() == 932; }

TEST_F(RemotePath, ReplacesEverySeparator) {
    const struct {
        const char* label;
        std::string local, remote;
    } rows[] = {
        {"folders", "a\\b\\c.txt", "a/b/c.txt"},
        {"only separators", "\\\\\\", "///"},
        {"one", "\\", "/"},
        {"none", "file.txt", "file.txt"},
        {"empty", "", ""},
    };
    support::for_each_row(rows, [](const auto& row) {
        EXPECT_EQ(formatted(row.local, kToRemote), row.remote);
        EXPECT_EQ(formatted(row.remote, kToLocal), row.local);
        EXPECT_EQ(formatted(row.local, kToLocal), row.local);
        EXPECT_EQ(formatted(row.remote, kToRemote), row.remote);
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(RemotePath, KeepsItForAnyOtherDirection) {
    for (const int direction : {0, 3, -1, 4, 257, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(formatted("a\\b/c", direction), "a\\b/c") << direction;
    }
}

TEST_F(RemotePath, DoesNothingWithoutAPath) {
    for (const int direction : {kToRemote, kToLocal, 3}) VlCm_FormatFTPFilePath(nullptr, direction);
    EXPECT_TRUE(support::trace_log().empty());
}

// 0x95 0x5C is one character of code pages 936 and 932, and a bullet and a backslash in 1252.
TEST_F(RemotePath, NeverSplitsADoubleByteCharacter) {
    EXPECT_EQ(formatted("\x95\x5C\\\x95\x5C", kToRemote),
              double_byte() ? "\x95\x5C/\x95\x5C" : "\x95//\x95/");
    EXPECT_EQ(formatted("\x95\x95\x5C", kToRemote), "\x95\x95/");
}

TEST_F(RemotePath, EndsAtALeadByteBeforeTheTerminator) {
    EXPECT_EQ(formatted("a\\b\x95", kToRemote), "a/b\x95");
    char path[] = "a\\\x95\0\\b";
    VlCm_FormatFTPFilePath(path, kToRemote);
    EXPECT_EQ(std::string(path, sizeof path - 1), std::string("a/\x95\0\\b", 6));
}

TEST_F(RemotePath, FollowsTheCodePageInAnyText) {
    std::mt19937 random(2555);
    const std::string alphabet = "\\/a\x41\x5C\x81\x95\xA1\xB0\xDF\xE0\xFC\xFE\x40\x7C";
    for (int round = 0; round < 20000; ++round) {
        std::string path(random() % 12, '\0');
        for (char& byte : path) byte = alphabet[random() % alphabet.size()];
        std::string expected = path;
        for (size_t i = 0; i < expected.size(); ++i) {
            if (IsDBCSLeadByte(static_cast<BYTE>(expected[i]))) {
                ++i;
            } else if (expected[i] == '\\') {
                expected[i] = '/';
            }
        }
        ASSERT_EQ(formatted(path, kToRemote), expected) << testing::PrintToString(path);
    }
}

}  // namespace
