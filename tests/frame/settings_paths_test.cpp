// The paths of the settings files that the library builds.
#include "vlcm/settings.h"

#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <shlobj.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

struct Builder {
    const char* label;
    void (*build)(char*, unsigned int);
    std::string end;
};
const Builder kBesideTheSharedFolder[] = {
    {"common", VlCm_GetCommonSettingFilePath, "\\vlcs.ini"},
    {"remote devices", VlCm_GetRmoteDeviniPath, "\\REMOTEDEVICE.ini"},
    {"shortcuts", VlCm_GetShortCutPath, "\\SHORTCUT.ini"},
};
const Builder kAll[] = {
    kBesideTheSharedFolder[0],
    kBesideTheSharedFolder[1],
    kBesideTheSharedFolder[2],
    {"personal", VlCm_GetPersonalSettingFilePath, "\\veltrin\\vlps.ini"},
};

std::string cut(const std::string& text) { return text.substr(0, 259); }

class SettingsPath : public support::SuiteTest {
protected:
    SettingsPath() {
        folder_is("C:\\WINDOWS");
        making_folder_.fail_from(1, FALSE, ERROR_ALREADY_EXISTS);
        making_file_.fail_from(1, INVALID_HANDLE_VALUE, ERROR_FILE_EXISTS);
    }
    // The shell's answer to every folder query.
    void folder_is(const std::string& folder, HRESULT result = S_OK) {
        asking_.answer([=](HWND, int, HANDLE, DWORD, char* path) {
            memcpy(path, folder.c_str(), folder.size() + 1);
            return result;
        });
    }
    void folder_query_fails() {  // and leaves the buffer alone
        asking_.answer([](HWND, int, HANDLE, DWORD, char*) { return E_FAIL; });
    }
    // The path built into a buffer of exactly 260 bytes that holds `before`.
    static std::string built(const Builder& builder, const std::string& before = "", unsigned size = 260) {
        const support::GuardedBuffer buffer(260);
        memcpy(buffer.as(), before.c_str(), before.size() + 1);
        builder.build(buffer.as(), size);
        return buffer.as();
    }

    support::CallPatch<decltype(SHGetFolderPathA)> asking_{"SHGetFolderPathA", SHGetFolderPathA};
    support::CallPatch<decltype(CreateDirectoryA)> making_folder_{"CreateDirectoryA", CreateDirectoryA};
    support::CallPatch<decltype(CreateFileA)> making_file_{"CreateFileA", CreateFileA};
};

}  // namespace

TEST_F(SettingsPath, StandsInTheSharedFolderOfTheWindowsFolder) {
    const struct {
        const char* label;
        std::string windows, shared;
    } rows[] = {
        {"plain", "C:\\WINDOWS", "C:\\WINDOWS\\SysWOW64"},
        {"closing backslash", "C:\\WINDOWS\\", "C:\\WINDOWS\\SysWOW64"},
        {"root", "C:\\", "C:\\SysWOW64"},
        {"one character", "W", "W\\SysWOW64"},
        {"a single backslash", "\\", "\\SysWOW64"},
        {"empty", "", ""},
    };
    support::for_each_row(rows, [&](const auto& row) {
        folder_is(row.windows);
        for (const Builder& builder : kBesideTheSharedFolder) {
            EXPECT_EQ(built(builder), row.shared + builder.end) << builder.label;
        }
    });
}

TEST_F(SettingsPath, AsksTheShellOnceForTheDefaultFolder) {
    const struct {
        const Builder& builder;
        int folder;
    } rows[] = {{kAll[0], 0x24}, {kAll[1], 0x24}, {kAll[2], 0x24}, {kAll[3], 0x1C}};
    size_t calls = 0;
    for (const auto& row : rows) {
        built(row.builder);
        ASSERT_EQ(asking_.count(), ++calls) << row.builder.label;
        const auto [owner, folder, token, flags, path] = asking_.calls().back();
        EXPECT_EQ(owner, nullptr) << row.builder.label;
        EXPECT_EQ(folder, row.folder) << row.builder.label;
        EXPECT_EQ(token, nullptr) << row.builder.label;
        EXPECT_EQ(flags, 1u) << row.builder.label;
        EXPECT_NE(path, nullptr) << row.builder.label;
    }
}

TEST_F(SettingsPath, GoesStraightIntoTheCallersBuffer) {
    for (const Builder& builder : kAll) {
        char path[260] = {};
        builder.build(path, 260);
        EXPECT_EQ(std::get<4>(asking_.calls().back()), path) << builder.label;
    }
}

TEST_F(SettingsPath, WithoutABufferNothingIsDone) {
    for (const Builder& builder : kAll) {
        const support::GuardedBuffer buffer(260);
        builder.build(nullptr, 260);
        builder.build(nullptr, 0);
        builder.build(buffer.as(), 0);
        EXPECT_TRUE(buffer.untouched_from(0)) << builder.label;
    }
    EXPECT_EQ(asking_.count(), 0u);
    EXPECT_EQ(making_folder_.count(), 0u);
    EXPECT_EQ(making_file_.count(), 0u);
}

TEST_F(SettingsPath, HeedsNoOtherSize) {
    for (const Builder& builder : kAll) {
        const std::string whole = built(builder);
        for (const unsigned size : {1U, 10U, 259U, 261U, 0xFFFFFFFFU}) {
            EXPECT_EQ(built(builder, "", size), whole) << builder.label << " " << size;
        }
    }
}

TEST_F(SettingsPath, IsAppendedToWhatAFailedQueryLeft) {
    folder_query_fails();
    for (const Builder& builder : kBesideTheSharedFolder) {
        EXPECT_EQ(built(builder, "D:\\left"), "D:\\left\\SysWOW64" + builder.end) << builder.label;
        EXPECT_EQ(built(builder, ""), builder.end) << builder.label;
    }
    EXPECT_EQ(built(kAll[3], "D:\\left"), "D:\\left\\veltrin\\vlps.ini");
    folder_is("D:\\half", E_FAIL);
    for (const Builder& builder : kBesideTheSharedFolder) {
        EXPECT_EQ(built(builder), "D:\\half\\SysWOW64" + builder.end) << builder.label;
    }
}

TEST_F(SettingsPath, IsCutAt259Bytes) {
    for (size_t length = 235; length <= 259; ++length) {
        for (const char last : {'w', '\\'}) {
            const std::string folder = std::string(length - 1, 'w') + last;
            folder_is(folder);
            const std::string shared = cut(folder + (last == '\\' ? "SysWOW64" : "\\SysWOW64"));
            for (const Builder& builder : kBesideTheSharedFolder) {
                EXPECT_EQ(built(builder), cut(shared + builder.end))
                    << builder.label << " " << length << last;
            }
            EXPECT_EQ(built(kAll[3]), cut(folder + kAll[3].end)) << length << last;
        }
    }
}

TEST_F(SettingsPath, ATextWithoutTerminatorStaysAsItIs) {
    folder_query_fails();
    for (const Builder& builder : kAll) {
        const support::GuardedBuffer buffer(260);
        memset(buffer.as(), 'x', 260);
        builder.build(buffer.as(), 260);
        EXPECT_EQ(std::string(buffer.as(), 260), std::string(260, 'x')) << builder.label;
    }
    EXPECT_EQ(making_folder_.count() + making_file_.count(), 0u) << "calls that would read behind the buffer";
}

TEST_F(SettingsPath, OpensNoScopeAndAsksNoStack) {
    for (const Builder& builder : kAll) built(builder);
    EXPECT_TRUE(support::trace_log().empty());
    EXPECT_TRUE(support::sdk_calls().empty());
}

namespace {

class PersonalFile : public SettingsPath {
protected:
    static constexpr char kFolder[] = "D:\\data\\veltrin\\";
    static constexpr char kPath[] = "D:\\data\\veltrin\\vlps.ini";
    PersonalFile() { folder_is("D:\\data"); }
};

}  // namespace

TEST_F(PersonalFile, FolderIsMadeBeforeTheFileWithTheseArguments) {
    std::vector<std::string> steps;
    making_folder_.fail_from(SIZE_MAX, FALSE);
    making_folder_.answer([&](const char* path, SECURITY_ATTRIBUTES* security) {
        steps.push_back(std::string("folder ") + path);
        EXPECT_EQ(security, nullptr);
        return TRUE;
    });
    making_file_.fail_from(SIZE_MAX, INVALID_HANDLE_VALUE);
    making_file_.answer([&](const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                            DWORD disposition, DWORD attributes, HANDLE pattern) {
        steps.push_back(std::string("file ") + path);
        EXPECT_EQ(access, 0xC0000000u);
        EXPECT_EQ(share, 3u);
        EXPECT_EQ(security, nullptr);
        EXPECT_EQ(disposition, 1u);
        EXPECT_EQ(attributes, 0x80u);
        EXPECT_EQ(pattern, nullptr);
        return INVALID_HANDLE_VALUE;
    });
    EXPECT_EQ(built(kAll[3]), kPath);
    EXPECT_EQ(steps,
              (std::vector<std::string>{std::string("folder ") + kFolder, std::string("file ") + kPath}));
}

TEST_F(PersonalFile, AMadeFileIsClosedAtOnce) {
    const HANDLE made = reinterpret_cast<HANDLE>(0x7004);
    support::CallPatch<decltype(CloseHandle)> closing("CloseHandle", CloseHandle);
    closing.answer([](HANDLE) { return TRUE; });
    making_file_.fail_from(1, made);
    built(kAll[3]);
    ASSERT_EQ(closing.count(), 1u);
    EXPECT_EQ(std::get<0>(closing.calls()[0]), made);
}

TEST_F(PersonalFile, AnExistingFileIsNothingToClose) {
    support::CallPatch<decltype(CloseHandle)> closing("CloseHandle", CloseHandle);
    EXPECT_EQ(built(kAll[3]), kPath);  // creation of folder and file fails here
    EXPECT_EQ(closing.count(), 0u);
}

TEST_F(PersonalFile, EachCallTriesAgain) {
    built(kAll[3]);
    built(kAll[3]);
    EXPECT_EQ(making_folder_.count(), 2u);
    EXPECT_EQ(making_file_.count(), 2u);
}

TEST_F(PersonalFile, TheOtherBuildersMakeNothing) {
    for (const Builder& builder : kBesideTheSharedFolder) built(builder);
    EXPECT_EQ(making_folder_.count(), 0u);
    EXPECT_EQ(making_file_.count(), 0u);
}

namespace {

// The real folders of this Windows.
class RealSettingsPath : public support::SuiteTest {
protected:
    static std::string built(const Builder& builder) {
        const support::GuardedBuffer buffer(260);
        builder.build(buffer.as(), 260);
        return buffer.as();
    }
};

}  // namespace

TEST_F(RealSettingsPath, IsInTheFolderThatThe32BitComponentsFind) {
    char windows[MAX_PATH];
    GetWindowsDirectoryA(windows, MAX_PATH);
    for (const Builder& builder : kBesideTheSharedFolder) {
        EXPECT_EQ(built(builder), std::string(windows) + "\\SysWOW64" + builder.end) << builder.label;
    }
}

TEST_F(RealSettingsPath, PersonalFolderAndEmptyFileAreMadeOnceAndThenLeftAlone) {
    const std::string path = built(kAll[3]);
    const std::string folder = path.substr(0, path.rfind('\\'));
    DeleteFileA(path.c_str());
    RemoveDirectoryA(folder.c_str());

    EXPECT_EQ(built(kAll[3]), path);
    EXPECT_EQ(support::read_file(path), "");
    support::write_file(path, "[x]\r\n");
    EXPECT_EQ(built(kAll[3]), path);
    EXPECT_EQ(support::read_file(path), "[x]\r\n");
}
