// The operations that do the real thing: settings files, files and memory.
#include "stack_test.h"
#include "support/guarded_buffer.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vlsim_test {
namespace {

class Settings : public StackTest {
protected:
    Settings() : path_(home_folder() + "\\settings test.ini") { std::filesystem::remove(path_); }
    ~Settings() override { std::filesystem::remove(path_); }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    [[nodiscard]] const char* path() const { return path_.c_str(); }
    [[nodiscard]] std::string content() const {
        std::ifstream stream(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::string path_;
};

TEST_F(Settings, TextIsWrittenReadCutAndDeleted) {
    EXPECT_TRUE(Btsdk_WritePrivateProfileString("One", "Key", "text", path()));
    EXPECT_EQ(content(), "[One]\r\nKey=text\r\n");
    char text[10] = {};
    EXPECT_EQ(Btsdk_GetPrivateProfileString("one", "KEY", "fallback", text, sizeof text, path()), 4u);
    EXPECT_STREQ(text, "text");
    const support::GuardedBuffer small(3);
    EXPECT_EQ(Btsdk_GetPrivateProfileString("One", "Key", "", small.as<char>(), 3, path()), 2u);
    EXPECT_STREQ(small.as<char>(), "te");
    EXPECT_TRUE(Btsdk_WritePrivateProfileString("One", nullptr, nullptr, path()));
    EXPECT_EQ(Btsdk_GetPrivateProfileString("One", "Key", "fallback", text, sizeof text, path()), 8u);
    EXPECT_STREQ(text, "fallback");
}

TEST_F(Settings, NumberIsWrittenInDecimalAndRead) {
    EXPECT_TRUE(Btsdk_WritePrivateProfileInt("N", "Minus", -3, path()));
    EXPECT_EQ(content(), "[N]\r\nMinus=-3\r\n");
    EXPECT_EQ(Btsdk_GetPrivateProfileInt("N", "Minus", 0, path()), 0xFFFFFFFDu);
    EXPECT_EQ(Btsdk_GetPrivateProfileInt("N", "Missing", 12, path()), 12u);
}

TEST_F(Settings, SectionIsReadAsLines) {
    Btsdk_WritePrivateProfileString("S", "A", "1", path());
    Btsdk_WritePrivateProfileString("S", "B", "2", path());
    char lines[20];
    std::memset(lines, 'x', sizeof lines);
    EXPECT_EQ(Btsdk_GetPrivateProfileSection("S", lines, sizeof lines, path()), 8u);
    EXPECT_EQ(std::memcmp(lines, "A=1\0B=2\0\0x", 10), 0);
    EXPECT_EQ(Btsdk_GetPrivateProfileSection("T", lines, sizeof lines, path()), 0u);
}

TEST_F(Settings, RecordIsReadOnlyInItsSize) {
    uint8_t written[3] = {1, 2, 255};
    EXPECT_TRUE(Btsdk_WritePrivateProfileStruct("R", "Key", written, sizeof written, path()));
    uint8_t read[4] = {};
    EXPECT_FALSE(Btsdk_GetPrivateProfileStruct("R", "Key", read, sizeof read, path()));
    EXPECT_TRUE(Btsdk_GetPrivateProfileStruct("R", "Key", read, sizeof written, path()));
    EXPECT_EQ(std::memcmp(read, written, sizeof written), 0);
}

TEST_F(Settings, FileIsMadeWrittenSharedForReadingAndClosed) {
    const HANDLE file = Btsdk_CreateFile(path(), GENERIC_WRITE, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_FILES), 1u);
    uint32_t written = 0;
    EXPECT_TRUE(Btsdk_WriteFile(file, "content", 7, &written, nullptr));
    EXPECT_EQ(written, 7u);
    const HANDLE reader = CreateFileA(path(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(reader, INVALID_HANDLE_VALUE);
    CloseHandle(reader);
    EXPECT_TRUE(Btsdk_CloseHandle(file));
    EXPECT_EQ(content(), "content");
    EXPECT_EQ(VlSim_LiveCount(VLSIM_FILES), 0u);
}

TEST_F(Settings, FileThatIsNotOpenIsNotClosed) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(Btsdk_CloseHandle(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(take_misuse().size(), 1u);
}

TEST_F(Settings, FileThatCannotBeOpenedIsTheInvalidHandle) {
    EXPECT_EQ(Btsdk_CreateFile(path(), GENERIC_READ, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(VlSim_LiveCount(VLSIM_FILES), 0u);
}

using Memory = StackTest;

TEST_F(Memory, FreshBlockIsNotZero) {
    auto* const block = static_cast<uint8_t*>(Btsdk_MallocMemory(1632));
    ASSERT_NE(block, nullptr);
    EXPECT_NE(block[0], 0);
    EXPECT_NE(block[1631], 0);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 1u);
    Btsdk_FreeMemory(block);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
}

TEST_F(Memory, EmptyBlockIsABlockAndNullIsNone) {
    void* const block = Btsdk_MallocMemory(0);
    EXPECT_NE(block, nullptr);
    Btsdk_FreeMemory(block);
    Btsdk_FreeMemory(nullptr);
    EXPECT_EQ(VlSim_MisuseCount(), 0u);
}

}  // namespace
}  // namespace vlsim_test
