// Size, type, name and time stamp of an attachment.
#include "image_test.h"
#include "support/guarded_buffer.h"
#include "support/trace_log.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>
#include <io.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <time.h>

namespace {

constexpr uint32_t kFill = 0xCDCDCDCD;
constexpr char kFile[] = "image_test\\letter.txt";
constexpr uint64_t kSecond = 10'000'000;                  // of a file time
constexpr uint64_t kUnixEpoch = 116'444'736'000'000'000;  // as a file time
constexpr size_t kName = offsetof(VlAttachmentProperty, name);
constexpr size_t kTime = offsetof(VlAttachmentProperty, time);
constexpr size_t kTimeLength = sizeof "YYYYMMDDThhmmssZ";

// The time zone of this run.
int64_t minutes_east() {
    const char* named = getenv("VLCM_TEST_MINUTES_EAST");
    return named == nullptr ? 0 : strtol(named, nullptr, 10);
}

// Calendar arithmetic of our own: the runtime's is what is tested.
std::string stamp(int64_t utc) {
    const int64_t local = utc + minutes_east() * 60;
    const auto time = static_cast<uint64_t>(local) * kSecond + kUnixEpoch;
    const FILETIME file_time = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    SYSTEMTIME t;
    FileTimeToSystemTime(&file_time, &t);
    char text[32];
    snprintf(text, sizeof text, "%04u%02u%02uT%02u%02u%02uZ", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
             t.wSecond);
    return text;
}

class Attachment : public ImageTest {
protected:
    Attachment() { support::write_file(kFile, "four words of text"); }

    // The record's bytes; nothing behind the time's terminator is written.
    [[nodiscard]] static std::string tell(const std::string& path, const std::string& name) {
        const support::GuardedBuffer record(sizeof(VlAttachmentProperty));
        VlCm_GetAttachmentProp(path.c_str(), name.c_str(), record.as<VlAttachmentProperty>());
        EXPECT_TRUE(record.untouched_from(kTime + kTimeLength));
        return {record.as<char>(), record.size()};
    }
    [[nodiscard]] static VlAttachmentProperty told(const std::string& path, const std::string& name) {
        VlAttachmentProperty property;
        memcpy(&property, tell(path, name).data(), sizeof property);
        return property;
    }
    static bool untouched(const std::string& bytes, size_t from, size_t length) {
        return bytes.substr(from, length) == std::string(length, '\xCD');
    }
    // Creation and last change, so that any system takes the one or the other for the creation time.
    static void set_time(const char* path, int64_t utc) {
        const auto time = static_cast<uint64_t>(utc) * kSecond + kUnixEpoch;
        const FILETIME file_time = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
        const HANDLE file = CreateFileA(path, FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_TRUE(SetFileTime(file, &file_time, &file_time, &file_time));
        CloseHandle(file);
    }
};

const struct Moment {
    const char* label;
    int64_t utc;
} kMoments[] = {{"a second before the new year, here or elsewhere", 1262303999},
                {"leap day", 951782400},
                {"every field of two digits", 1292325305},
                {"every field of one digit", 978401045},
                {"beyond 32 bits", 4294967296 + int64_t{86400} * 100}};

// Status as the runtime would give it, with three different times.
class PatchedStatus {
public:
    explicit PatchedStatus(int64_t creation) {
        asked_.answer([creation](const char*, struct _stat64* status) {
            memset(status, 0, sizeof *status);
            status->st_atime = 1;
            status->st_mtime = 2;
            status->st_ctime = creation;
            return 0;
        });
    }

private:
    support::CallPatch<int(const char*, struct _stat64*)> asked_{"_stat64", _stat64};
};

}  // namespace

TEST_F(Attachment, HasSizeTypeNameAndTime) {
    constexpr int64_t kMoment = 1234567890;
    set_time(kFile, kMoment);
    const VlAttachmentProperty property = told(kFile, "notes.txt.zip");
    EXPECT_EQ(property.size, 18u);
    EXPECT_STREQ(property.mimeType, "text/plain");
    EXPECT_STREQ(property.name, "notes.txt.zip");
    EXPECT_EQ(property.time, stamp(kMoment));
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>{"8 GetAttachmentProp"});
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(Attachment, LeavesTheTypeOfAnyOtherName) {
    for (const char* name : {"a.TXT", "letter", "letter.jpg", ""}) {
        const std::string bytes = tell(kFile, name);
        EXPECT_TRUE(untouched(bytes, offsetof(VlAttachmentProperty, mimeType), 40)) << name;
        EXPECT_STREQ(bytes.data() + kName, name);
    }
    EXPECT_STREQ(told(kFile, "a.wav").mimeType, "audio/basic");
}

TEST_F(Attachment, TypeIsThatOfTheNameNotOfTheFile) {
    EXPECT_TRUE(untouched(tell(kFile, "letter.bin"), offsetof(VlAttachmentProperty, mimeType), 40));
}

TEST_F(Attachment, WritesNoByteThatIsNotNeeded) {
    const std::string bytes = tell(kFile, "a.txt");
    EXPECT_TRUE(untouched(bytes, 4 + sizeof "text/plain", 40 - sizeof "text/plain"));
    EXPECT_TRUE(untouched(bytes, kName + sizeof "a.txt", 256 - sizeof "a.txt"));
}

TEST_F(Attachment, TimeIsLocalAlthoughMarkedOtherwise) {
    support::for_each_row(kMoments, [](const Moment& row) {
        const PatchedStatus status(row.utc);
        EXPECT_EQ(told(kFile, "a.txt").time, stamp(row.utc));
    });
}

TEST_F(Attachment, TimeOfARealFileIsLocalToo) {
    for (int64_t utc : {int64_t{1262303999}, int64_t{978401045}}) {
        set_time(kFile, utc);
        EXPECT_EQ(told(kFile, "a.txt").time, stamp(utc));
    }
}

TEST_F(Attachment, OfAMissingFileHasNameAndType) {
    const std::string bytes = tell("image_test\\missing.txt", "a.txt");
    EXPECT_TRUE(untouched(bytes, 0, 4));
    EXPECT_STREQ(bytes.data() + 4, "text/plain");
    EXPECT_STREQ(bytes.data() + kName, "a.txt");
    EXPECT_TRUE(untouched(bytes, kTime, kTimeLength));
}

TEST_F(Attachment, OfAnEmptyFileHasSizeZero) {
    support::write_file(kFile, "");
    EXPECT_EQ(told(kFile, "a.txt").size, 0u);
}

// Line ends count as they are.
TEST_F(Attachment, SizeIsThatOfTheBytes) {
    support::write_file(kFile, "a\r\nb\r\n\x1A after the end of a text");
    EXPECT_EQ(told(kFile, "a.txt").size, 31u);
}

TEST_F(Attachment, SizeIsTheLowHalfOfAHugeFilesLength) {
    const struct {
        const char* label;
        LONGLONG length;
        uint32_t size;
    } rows[] = {{"over 2 GiB", (LONGLONG{2} << 30) + 5, 0x80000005},
                {"over 4 GiB", (LONGLONG{4} << 30) + 9, 9}};
    support::for_each_row(rows, [](const auto& row) {
        const HANDLE file = CreateFileA(kFile, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        LARGE_INTEGER end;
        end.QuadPart = row.length;
        EXPECT_TRUE(SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file));
        CloseHandle(file);
        const VlAttachmentProperty property = told(kFile, "a.txt");
        EXPECT_EQ(property.size, row.size);
        EXPECT_STREQ(property.name, "a.txt");
    });
}

TEST_F(Attachment, PathIsInTheAnsiCodePage) {
    const std::wstring path = copy_of("text.jpg", national_name(L".txt"));
    EXPECT_EQ(told(ansi(path), "a.txt").size, length_of(picture("text.jpg")));
    EXPECT_EQ(told(utf8(path), "a.txt").size, kFill);
}

TEST_F(Attachment, NameFillsItsField) {
    const std::string name(255, 'n');
    const VlAttachmentProperty property = told(kFile, name);
    EXPECT_EQ(property.name, name);
    EXPECT_EQ(strlen(property.time), kTimeLength - 1);
}

// The name's length is not checked; the time comes later and is whole.
TEST_F(Attachment, LongNameRunsOnUntilTheTimeIsWritten) {
    const std::string name = std::string(260, 'n') + ".txt";
    const std::string without_time = tell("image_test\\missing.txt", name);
    EXPECT_EQ(std::string(without_time.data() + kName), name);
    const std::string bytes = tell(kFile, name);
    EXPECT_EQ(bytes.substr(kName, 256), std::string(256, 'n'));
    EXPECT_EQ(strlen(bytes.data() + kTime), kTimeLength - 1);
    EXPECT_EQ(bytes[kTime + 8], 'T');
}

TEST_F(Attachment, SizeIsLeftWhenTheFileCannotBeOpenedOrMeasured) {
    support::CallPatch closed("fclose", fclose);
    {
        support::CallPatch opened("fopen", fopen);
        opened.fail_from(1, nullptr);
        const VlAttachmentProperty property = told(kFile, "a.txt");
        EXPECT_EQ(property.size, kFill);
        EXPECT_EQ(strlen(property.time), kTimeLength - 1);
        EXPECT_EQ(closed.count(), 0u);
    }
    support::CallPatch measured("_filelengthi64", _filelengthi64);
    measured.fail_from(1, -1);
    EXPECT_EQ(told(kFile, "a.txt").size, kFill);
    EXPECT_EQ(closed.count(), 1u);
}

TEST_F(Attachment, TimeIsLeftWhenItCannotBeToldOrConverted) {
    {
        support::CallPatch asked("_stat64", _stat64);
        asked.fail_from(1, -1);
        EXPECT_TRUE(untouched(tell(kFile, "a.txt"), kTime, kTimeLength));
    }
    support::CallPatch converted("_localtime64", _localtime64);
    converted.fail_from(1, nullptr);
    EXPECT_TRUE(untouched(tell(kFile, "a.txt"), kTime, kTimeLength));
    EXPECT_EQ(told(kFile, "a.txt").size, 18u);
}

TEST_F(Attachment, OpensTheFileForReadingAndClosesItBeforeTheNameIsCopied) {
    support::CallPatch opened("fopen", fopen);
    support::CallPatch closed("fclose", fclose);
    const support::GuardedBuffer record(sizeof(VlAttachmentProperty));
    opened.answer([&](const char* path, const char* mode) {
        EXPECT_STREQ(path, kFile);
        EXPECT_STREQ(mode, "r");
        EXPECT_TRUE(record.untouched_from(0));
        return opened.real(path, mode);
    });
    closed.answer([&](FILE* file) {
        EXPECT_EQ(record.as<VlAttachmentProperty>()->size, 18u);
        EXPECT_TRUE(record.untouched_from(4));
        return closed.real(file);
    });
    VlCm_GetAttachmentProp(kFile, "a.txt", record.as<VlAttachmentProperty>());
    EXPECT_EQ(opened.count(), 1u);
    EXPECT_EQ(closed.count(), 1u);
}

TEST_F(Attachment, NeedsPathNameAndRecord) {
    const support::GuardedBuffer record(sizeof(VlAttachmentProperty));
    auto* const property = record.as<VlAttachmentProperty>();
    VlCm_GetAttachmentProp(nullptr, "a.txt", property);
    VlCm_GetAttachmentProp(kFile, nullptr, property);
    VlCm_GetAttachmentProp(kFile, "a.txt", nullptr);
    EXPECT_TRUE(record.untouched_from(0));
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(3, "8 GetAttachmentProp"));
}
