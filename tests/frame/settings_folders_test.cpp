// The folders that the settings name, and the files in them.
#include "vlcm/settings.h"

#include "profile_reads.h"
#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <shlobj.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

struct FolderRow {
    const char* label;
    void (*read)(char*, unsigned int);
    const char* key;
    const char* scope;
};
const FolderRow kFolders[] = {
    {"installation", VlCm_GetInstallDir, "InstallDir", "VlCm_GetInstallDir"},
    {"services", VlCm_GetCOMServiceDir, "COMServiceDir", "VlCm_GetCOMServiceDir"},
};

struct File {
    const char* label;
    void (*build)(char*, unsigned int);
    std::string end;
    std::string scope;
};
const File kFiles[] = {
    {"provider", VlCm_GetQVNProviderPath, "\\QVNProvider.ini", "VlCm_GetQVNProviderPath"},
    {"mobile", VlCm_GetQVNMobilePath, "\\QVNMobile.ini", "VlCm_GetQVNMobilePath"},
};

class FolderSetting : public support::SuiteTest {
protected:
    template <typename Function>
    static std::string text_of(Function function, unsigned size = 260, unsigned room = 260) {
        const support::GuardedBuffer buffer(room);
        function(buffer.as(), size);
        return buffer.as();
    }
    void set(const FolderRow& folder, const std::string& value) {
        settings().common("General", folder.key, value);
    }
};
class FileInInstallFolder : public FolderSetting {};

}  // namespace

TEST_F(FolderSetting, LosesOneClosingBackslash) {
    const struct {
        const char* label;
        const char *value, *expected;
    } rows[] = {
        {"closing backslash", "C:\\Program Files\\Veltrin\\", "C:\\Program Files\\Veltrin"},
        {"none", "C:\\Program Files\\Veltrin", "C:\\Program Files\\Veltrin"},
        {"two", "C:\\Veltrin\\\\", "C:\\Veltrin\\"},
        {"nothing else", "\\", ""},
        {"one character", "V", "V"},
        {"empty", "", ""},
        {"slash", "C:/Veltrin/", "C:/Veltrin/"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        for (const FolderRow& folder : kFolders) {
            set(folder, row.value);
            EXPECT_EQ(text_of(folder.read), row.expected) << folder.label;
        }
    });
}

TEST_F(FolderSetting, IsEmptyWhenItIsMissing) {
    for (const FolderRow& folder : kFolders) EXPECT_EQ(text_of(folder.read), "") << folder.label;
    settings().common("Other", "InstallDir", "C:\\x");
    EXPECT_EQ(text_of(VlCm_GetInstallDir), "");
}

TEST_F(FolderSetting, IsOneReadOfTheCommonFileWithTheCallersSize) {
    for (const FolderRow& folder : kFolders) {
        for (const unsigned size : {1U, 5U, 260U, 1000U}) {
            const std::string expected = text_read("General", folder.key, size);
            support::clear_sdk_log();
            text_of(folder.read, size, 1000);
            EXPECT_EQ(calls_made(), Lines{expected}) << folder.label << " " << size;
        }
    }
}

TEST_F(FolderSetting, IsCutToTheCallersSize) {
    for (const FolderRow& folder : kFolders) {
        set(folder, "C:\\Velt\\rin");
        EXPECT_EQ(text_of(folder.read, 1, 1), "") << folder.label;
        EXPECT_EQ(text_of(folder.read, 5, 5), "C:\\V") << folder.label;
        EXPECT_EQ(text_of(folder.read, 9, 9), "C:\\Velt")
            << folder.label;  // the cut text ends in a backslash
        EXPECT_EQ(text_of(folder.read, 12, 12), "C:\\Velt\\rin") << folder.label;
    }
}

TEST_F(FolderSetting, KeepsTheBackslashBeyond259Bytes) {
    for (const FolderRow& folder : kFolders) {
        for (const size_t length : {258U, 259U, 260U, 300U}) {
            const std::string stem(length - 1, 'f');
            set(folder, stem + "\\");
            EXPECT_EQ(text_of(folder.read, 400, 400), length <= 259 ? stem : stem + "\\")
                << folder.label << length;
        }
    }
}

TEST_F(FolderSetting, ThatCannotBeReadIsEmpty) {
    VlSim_Fail("Btsdk_GetPrivateProfileString", 0, 0);
    for (const FolderRow& folder : kFolders) {
        set(folder, "C:\\Veltrin");
        const support::GuardedBuffer buffer(260);
        memset(buffer.as(), 'x', 260);
        folder.read(buffer.as(), 260);
        EXPECT_STREQ(buffer.as(), "") << folder.label;
        EXPECT_EQ(std::string(buffer.as() + 1, 259), std::string(259, 'x')) << folder.label;
    }
}

TEST_F(FolderSetting, WithoutABufferTheScopeOpensAndNothingIsRead) {
    for (const FolderRow& folder : kFolders) {
        const support::GuardedBuffer buffer(260);
        support::clear_trace_log();
        folder.read(nullptr, 260);
        folder.read(buffer.as(), 0);
        EXPECT_TRUE(buffer.untouched_from(0)) << folder.label;
        const std::string in = std::string(">512 ") + folder.scope, out = std::string("<512 ") + folder.scope;
        EXPECT_EQ(support::trace_log(), (Lines{in, out, in, out})) << folder.label;
    }
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(FolderSetting, OpensItsScopeAndWritesNoLine) {
    for (const FolderRow& folder : kFolders) {
        support::clear_trace_log();
        text_of(folder.read);
        EXPECT_EQ(support::trace_log(),
                  (Lines{std::string(">512 ") + folder.scope, std::string("<512 ") + folder.scope}))
            << folder.label;
    }
}

TEST_F(FolderSetting, IsReadAgainAtEachCall) {
    for (const FolderRow& folder : kFolders) {
        set(folder, "C:\\one");
        EXPECT_EQ(text_of(folder.read), "C:\\one") << folder.label;
        set(folder, "C:\\two");
        EXPECT_EQ(text_of(folder.read), "C:\\two") << folder.label;
    }
}

TEST_F(FolderSetting, ThePathOfTheFileStartsFromAZeroedBuffer) {
    support::CallPatch<decltype(SHGetFolderPathA)> asking("SHGetFolderPathA", SHGetFolderPathA);
    asking.answer([](HWND, int, HANDLE, DWORD, char* path) {
        EXPECT_EQ(std::string(path, 260), std::string(260, '\0'));
        return E_FAIL;
    });
    for (const FolderRow& folder : kFolders) {
        support::clear_sdk_log();
        text_of(folder.read);
        EXPECT_EQ(calls_made(), Lines{text_read("General", folder.key, 260, "\\vlcs.ini")}) << folder.label;
    }
}

TEST_F(FileInInstallFolder, IsTheFolderBackslashAndName) {
    const struct {
        const char* label;
        const char *value, *folder;
    } rows[] = {{"plain", "C:\\Veltrin", "C:\\Veltrin"},
                {"closing backslash", "C:\\Veltrin\\", "C:\\Veltrin"},
                {"no folder", "", ""}};
    support::for_each_row(rows, [&](const auto& row) {
        set(kFolders[0], row.value);
        for (const File& file : kFiles) EXPECT_EQ(text_of(file.build), row.folder + file.end) << file.label;
    });
}

TEST_F(FileInInstallFolder, OpensItsScopeAndInItThatOfTheFolder) {
    for (const File& file : kFiles) {
        support::clear_trace_log();
        text_of(file.build);
        EXPECT_EQ(support::trace_log(), (Lines{">512 " + file.scope, ">512 VlCm_GetInstallDir",
                                               "<512 VlCm_GetInstallDir", "<512 " + file.scope}));
    }
}

TEST_F(FileInInstallFolder, WithoutABufferBothScopesOpenAndNothingIsWritten) {
    for (const File& file : kFiles) {
        for (const bool null : {true, false}) {
            const support::GuardedBuffer buffer(260);
            support::clear_trace_log();
            file.build(null ? nullptr : buffer.as(), null ? 260 : 0);
            EXPECT_TRUE(buffer.untouched_from(0)) << file.label;
            EXPECT_EQ(support::trace_scopes(), (Lines{"512 " + file.scope, "512 VlCm_GetInstallDir"}))
                << file.label;
        }
    }
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(FileInInstallFolder, HeedsTheSizeForTheFolderAlone) {
    set(kFolders[0], "C:\\Veltrin");
    for (const File& file : kFiles) {
        EXPECT_EQ(text_of(file.build, 5), "C:\\V" + file.end) << file.label;
        EXPECT_EQ(text_of(file.build, 1), file.end) << file.label;
    }
}

TEST_F(FileInInstallFolder, IsCutAt259Bytes) {
    for (const size_t length : {240U, 243U, 244U, 245U, 246U, 258U, 259U}) {
        const std::string folder(length, 'f');
        set(kFolders[0], folder);
        for (const File& file : kFiles) {
            EXPECT_EQ(text_of(file.build), (folder + file.end).substr(0, 259)) << file.label << length;
        }
    }
}

TEST_F(FileInInstallFolder, AFolderThatFillsTheBufferIsLeftWithoutAName) {
    const std::string folder(299, 'f');
    set(kFolders[0], folder);
    for (const File& file : kFiles) EXPECT_EQ(text_of(file.build, 400, 400), folder) << file.label;
}
