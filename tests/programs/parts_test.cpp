// The parts that the programs share.
#include "suite_programs.h"

#include "event_log.h"
#include "file_hash.h"
#include "file_watch.h"
#include "frame/unique.h"
#include "send_list.h"
#include "text.h"

#include <regex>

using namespace programs;
using namespace suite;

namespace {

class EventLogFile : public SuitePrograms {};
class FileHash : public SuitePrograms {};
class FolderWatch : public SuitePrograms {};
class RecordPath : public SuitePrograms {};

// A file whose path is longer than a send record takes. The prefix lifts the system's own limit.
class DeepFile {
public:
    explicit DeepFile(const std::wstring& folder) : folders_{kPrefix + folder} {
        for (int i = 0; i < 3; ++i) {
            folders_.push_back(folders_.back() + L"\\" + std::wstring(70, L'd') + L".folder");
            EXPECT_TRUE(CreateDirectoryW(folders_.back().c_str(), nullptr));
        }
        path_ = folders_.back() + L"\\" + std::wstring(40, L'f') + L".text";
        const vl::UniqueFile made(CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                              FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_TRUE(static_cast<bool>(made));
    }
    ~DeepFile() {
        DeleteFileW(path_.c_str());
        for (size_t i = folders_.size() - 1; i > 0; --i) RemoveDirectoryW(folders_[i].c_str());
    }
    DeepFile(const DeepFile&) = delete;
    DeepFile& operator=(const DeepFile&) = delete;
    [[nodiscard]] std::wstring path() const { return path_.substr(kPrefix.size()); }

private:
    static inline const std::wstring kPrefix = L"\\\\?\\";
    std::vector<std::wstring> folders_;
    std::wstring path_;
};

}  // namespace

TEST_F(EventLogFile, HasOneLinePerEventWithTimeAndProcess) {
    { EventLog().line("first\r\nsecond"); }
    const std::string text = content_of(log_path(L"programs_test"));
    const std::string stamp =
        "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z " + std::to_string(GetCurrentProcessId()) + " ";
    const std::regex whole(stamp + "started .*programs_test.*\r\n" + stamp + "first  second\r\n" + stamp +
                           "ended\r\n");
    EXPECT_TRUE(std::regex_match(text, whole)) << text;
}

TEST_F(EventLogFile, GrowsWithEachRun) {
    for (int i = 0; i < 2; ++i) EventLog().line("once more");
    EXPECT_EQ(count_lines(L"programs_test", "once more"), 2u);
}

TEST_F(FileHash, IsSha256) {
    const char* const kEmpty = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
    const char* const kAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    EXPECT_EQ(sha256_of_bytes("", 0), kEmpty);
    EXPECT_EQ(sha256_of_bytes("abc", 3), kAbc);
    EXPECT_EQ(sha256_of_file(make_file(L"empty", "")), kEmpty);
    EXPECT_EQ(sha256_of_file(make_file(L"abc", "abc")), kAbc);
}

TEST_F(FileHash, CoversFilesOfMoreThanOneBlock) {
    const std::string large(200001, 'x');
    EXPECT_EQ(sha256_of_file(make_file(L"large", large)), sha256_of_bytes(large.data(), large.size()));
}

TEST_F(FileHash, OfAMissingFileIsEmpty) { EXPECT_EQ(sha256_of_file(work_folder() + L"\\gone"), ""); }

TEST_F(FolderWatch, LooksBeforeItWaits) {
    int looks = 0;
    EXPECT_TRUE(wait_in_folder(work_folder(), 0, [&looks] { return ++looks == 1; }));
    EXPECT_EQ(looks, 1);
}

TEST_F(FolderWatch, GivesUpAtItsDeadline) {
    int looks = 0;
    EXPECT_FALSE(wait_in_folder(work_folder(), 1, [&looks] { return ++looks < 0; }));
    EXPECT_GE(looks, 2);
}

TEST_F(FolderWatch, LooksAgainWhenTheFolderChanges) {
    int looks = 0;
    EXPECT_TRUE(wait_in_folder(work_folder(), kDeadline_ms, [&] {
        if (++looks == 1) (void)make_file(L"new", "");
        return looks == 2;
    }));
}

TEST_F(RecordPath, IsTheShortFormOfAPathThatIsTooLong) {
    const DeepFile file(work_folder());
    ASSERT_GT(file.path().size(), static_cast<size_t>(VLCM_PATH_SIZE));
    const std::string text = record_path(file.path());
    EXPECT_FALSE(text.empty());
    EXPECT_LT(text.size(), static_cast<size_t>(VLCM_PATH_SIZE));
    EXPECT_NE(GetFileAttributesA(text.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(RecordPath, OfAFileThatIsNotThereAndTooLongIsEmpty) {
    EXPECT_EQ(record_path(L"C:\\" + std::wstring(300, L'x')), "");
}
