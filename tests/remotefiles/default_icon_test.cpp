// The icon of a remote file, by the file associations of the real registry.
#include "icon_test.h"
#include "support/call_patch.h"

#include "VlSDK.h"

#include <shellapi.h>
#include <shlwapi.h>

namespace {

using Names = std::vector<std::string>;

class FileIcon : public IconTest {
protected:
    FileIcon() {
        opened_.answer([this](HKEY root, const char* path, HKEY* key) {
            keys_.emplace_back((root == HKEY_CLASSES_ROOT    ? "classes:"
                                : root == HKEY_LOCAL_MACHINE ? "machine:"
                                                             : "?:") +
                               std::string(path));
            return opened_.real(root, path, key);
        });
        read_.answer([this](HKEY key, const char* name, char* text, uint32_t size) {
            EXPECT_EQ(name, nullptr);
            EXPECT_EQ(size, 260u);
            return read_.real(key, name, text, size);
        });
    }
    // Where the icon is by a class's own DefaultIcon.
    Icon ask_located(const std::string& location) {
        set_class();
        set_class_icon(location);
        return ask(kFile);
    }

    Names keys_;  // as they were opened
    support::CallPatch<uint32_t(HKEY, const char*, HKEY*)> opened_{"Btsdk_RegOpenKey", Btsdk_RegOpenKey};
    support::CallPatch<uint32_t(HKEY, const char*, char*, uint32_t)> read_{"Btsdk_RegQueryStringValue",
                                                                           Btsdk_RegQueryStringValue};
};

TEST_F(FileIcon, NeedsEveryArgument) {
    char file[VLCM_PATH_SIZE] = "untouched";
    int32_t index = 7;
    EXPECT_EQ(VlCm_GetFTPFileDefaultIcon(nullptr, 0, file, &index), E_INVALIDARG);
    EXPECT_EQ(VlCm_GetFTPFileDefaultIcon(kFile, 0, nullptr, &index), E_INVALIDARG);
    EXPECT_EQ(VlCm_GetFTPFileDefaultIcon(kFile, 0, file, nullptr), E_INVALIDARG);
    EXPECT_EQ(VlCm_GetFTPFileDefaultIcon(kFile, 0x10, file, nullptr), E_INVALIDARG);
    EXPECT_EQ(static_cast<uint32_t>(E_INVALIDARG), 0x80070057u);
    EXPECT_STREQ(file, "untouched");
    EXPECT_EQ(index, 7);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(FileIcon, WithoutADotIsTheGenericOne) {
    for (const char* name : {"", "README", "folder\\file", "a,b"}) {
        EXPECT_EQ(ask(name), found("shell32.dll", 0)) << name;
    }
    EXPECT_TRUE(keys_.empty());
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(FileIcon, OfAProgramIsThatOfPrograms) {
    for (const char* name : {"setup.exe", "SETUP.EXE", ".exe", "a.txt.exe"}) {
        EXPECT_EQ(ask(name), found("shell32.dll", 2)) << name;
    }
    EXPECT_TRUE(keys_.empty());
}

TEST_F(FileIcon, OfAProgramInAnotherSpellingIsThatOfTheRegistry) {
    registry().set(HKEY_CLASSES_ROOT, ".exe", nullptr, std::string(kClass));
    set_class_icon("program.dll,5");
    for (const char* name : {"setup.Exe", "setup.eXE", "setup.exE"}) {
        keys_.clear();
        EXPECT_EQ(ask(name), found("program.dll", 5)) << name;
        EXPECT_EQ(keys_, (Names{"classes:" + std::string(name + 5), "classes:VlTest.File\\DefaultIcon"}));
    }
    keys_.clear();
    ask("setup.exe ");
    EXPECT_EQ(keys_.at(0), "classes:.exe ");
}

TEST_F(FileIcon, IsThatOfTheClassOfItsExtension) {
    EXPECT_EQ(ask_located("C:\\icons.dll,3"), found("C:\\icons.dll", 3));
    EXPECT_EQ(keys_, (Names{"classes:.vltest", "classes:VlTest.File\\DefaultIcon"}));
    EXPECT_EQ(ask(kFile, 0x27), found("C:\\icons.dll", 3)) << "attributes of a file";
    EXPECT_EQ(ask("PHOTO.VLTEST"), found("C:\\icons.dll", 3));
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(FileIcon, GoesByTheLastDot) {
    set_class();
    set_class_icon("icons.dll,3");
    EXPECT_EQ(ask("a.exe.vltest"), found("icons.dll", 3));
    EXPECT_EQ(ask(".vltest"), found("icons.dll", 3));
    keys_.clear();
    EXPECT_EQ(ask("folder.vltest/file"), not_found()) << "a dot of the folder's name";
    EXPECT_EQ(ask("file.vltest."), not_found());
    EXPECT_EQ(keys_, (Names{"classes:.vltest/file", "classes:."}));
}

TEST_F(FileIcon, GoesByTheExtensionInTheAnsiCodePage) {
    registry().set(HKEY_CLASSES_ROOT, ".vl\xFC", nullptr, std::string(kClass));
    set_class_icon("icons.dll,3");
    EXPECT_EQ(ask("photo.vl\xC3\xBC"), found("icons.dll", 3));
    EXPECT_EQ(keys_.at(0), "classes:.vl\xFC");
    EXPECT_EQ(ask("photo.vl\xFC"), not_found()) << "not UTF-8";
}

TEST_F(FileIcon, OfAnExtensionWithoutAClassIsTheGenericOneAndFails) {
    EXPECT_EQ(static_cast<uint32_t>(E_FAIL), 0x80004005u);
    EXPECT_EQ(ask(kFile), not_found()) << "no key";
    registry().make_key(HKEY_CLASSES_ROOT, ".vltest");
    EXPECT_EQ(ask(kFile), not_found()) << "no default value";
    registry().set(HKEY_CLASSES_ROOT, ".vltest", nullptr, DWORD{5});
    EXPECT_EQ(ask(kFile), not_found()) << "a number";
    EXPECT_EQ(keys_, Names(3, "classes:.vltest"));
}

TEST_F(FileIcon, TakesAnEmptyClassNameAsItStands) {
    set_class("");
    EXPECT_EQ(ask(kFile), not_found());
    keys_.resize(3);  // a platform that takes such a path goes on to a fourth key
    EXPECT_EQ(keys_, (Names{"classes:.vltest", "classes:\\DefaultIcon", "classes:\\CLSID"}));
}

TEST_F(FileIcon, IsThatOfTheClassIdWhenTheClassHasNone) {
    set_class();
    set_class_id();
    set_class_id_icon("server.dll,-4");
    EXPECT_EQ(ask(kFile), found("server.dll", -4)) << "no key";
    EXPECT_EQ(keys_, (Names{"classes:.vltest", "classes:VlTest.File\\DefaultIcon",
                            "classes:VlTest.File\\CLSID", "machine:" + class_id_key()}));
    registry().make_key(HKEY_CLASSES_ROOT, "VlTest.File\\DefaultIcon");
    EXPECT_EQ(ask(kFile), found("server.dll", -4)) << "no default value";
    registry().set(HKEY_CLASSES_ROOT, "VlTest.File\\DefaultIcon", nullptr, DWORD{5});
    EXPECT_EQ(ask(kFile), found("server.dll", -4)) << "a number";
    set_class_icon(std::string(260, 'i'));
    EXPECT_EQ(ask(kFile), found("server.dll", -4)) << "a text that is too long";
    set_class_icon("\"%1\"");
    EXPECT_EQ(ask(kFile), found("server.dll", -4)) << "the file itself";
    set_class_icon("own.dll,1");
    EXPECT_EQ(ask(kFile), found("own.dll", 1));
}

TEST_F(FileIcon, OfTheFileItselfIsOnlyTheQuotedMark) {
    set_class_id();
    set_class_id_icon("server.dll,1");
    const struct {
        const char* label;
        const char* location;
        Icon expected;
    } rows[] = {
        {"the mark", "\"%1\"", found("server.dll", 1)},    {"without quotation marks", "%1", found("%1", 0)},
        {"with an index", "\"%1\",0", found("\"%1\"", 0)}, {"with a blank", "\"%1\" ", found("\"%1\" ", 0)},
        {"another number", "\"%2\"", found("\"%2\"", 0)},  {"with a capital", "\"%L\"", found("\"%L\"", 0)},
    };
    support::for_each_row(rows, [&](const auto& row) { EXPECT_EQ(ask_located(row.location), row.expected); });
}

TEST_F(FileIcon, OfTheClassIdMayBeTheMark) {
    set_class();
    set_class_id();
    set_class_id_icon("\"%1\"");
    EXPECT_EQ(ask(kFile), found("\"%1\"", 0));
}

TEST_F(FileIcon, FailsWhenTheClassIdLeadsNowhere) {
    set_class();
    EXPECT_EQ(ask(kFile), not_found()) << "no key";
    registry().make_key(HKEY_CLASSES_ROOT, "VlTest.File\\CLSID");
    EXPECT_EQ(ask(kFile), not_found()) << "no default value";
    EXPECT_EQ(keys_.size(), 6u);
    set_class_id();
    EXPECT_EQ(ask(kFile), not_found()) << "no icon key";
    EXPECT_EQ(keys_.back(), "machine:" + class_id_key());
    registry().make_key(HKEY_LOCAL_MACHINE, class_id_key().c_str());
    EXPECT_EQ(ask(kFile), not_found()) << "no default value there";
    set_class_icon("\"%1\"");
    EXPECT_EQ(ask(kFile), not_found()) << "nor behind the mark";
}

TEST_F(FileIcon, IsCutAtTheLastComma) {
    const struct {
        const char* label;
        const char* location;
        Icon expected;
    } rows[] = {
        {"no comma", "icon.ico", found("icon.ico", 0)},
        {"an index", "a.dll,17", found("a.dll", 17)},
        {"an identifier", "a.dll,-101", found("a.dll", -101)},
        {"several commas", "a,b,c.dll,4", found("a,b,c.dll", 4)},
        {"nothing behind it", "a.dll,", found("a.dll", 0)},
        {"words behind it", "a.dll,b", found("a.dll", 0)},
        {"digits and words", "a.dll,5b", found("a.dll", 5)},
        {"hexadecimal is none", "a.dll,0x10", found("a.dll", 0)},
        {"nothing before it", ",3", found("", 3)},
        {"nothing at all", "", found("", 0)},
        {"in quotation marks", "\"C:\\a b.dll\",3", found("\"C:\\a b.dll\"", 3)},
        {"blanks stay", " a.dll ,3", found(" a.dll ", 3)},
    };
    support::for_each_row(rows, [&](const auto& row) { EXPECT_EQ(ask_located(row.location), row.expected); });
}

TEST_F(FileIcon, ReadsTheIndexAsTheShellDoes) {
    support::CallPatch read("StrToIntA", StrToIntA);
    std::string asked;
    read.answer([&](const char* text) { return asked = text, -77; });
    EXPECT_EQ(ask_located("a,b, 12 "), found("a,b", -77));
    EXPECT_EQ(asked, " 12 ");
    EXPECT_EQ(ask_located("a"), found("a", 0));
    EXPECT_EQ(read.count(), 1u);
}

TEST_F(FileIcon, ExpandsNothing) {
    const std::string location = "%SystemRoot%\\a.dll,3";
    const std::vector<BYTE> bytes(location.c_str(), location.c_str() + location.size() + 1);
    set_class();
    registry().set(HKEY_CLASSES_ROOT, "VlTest.File\\DefaultIcon", nullptr, REG_EXPAND_SZ, bytes);
    EXPECT_EQ(ask(kFile), found("%SystemRoot%\\a.dll", 3));
}

TEST_F(FileIcon, HoldsNamesOf259Bytes) {
    const std::string longest = std::string(259, 'i');
    EXPECT_EQ(ask_located(longest), found(longest, 0));
    // Names of this length are no keys, but all of them must be asked for.
    set_class(std::string(259, 'c'));
    keys_.clear();
    EXPECT_EQ(ask(kFile), not_found());
    EXPECT_EQ(keys_, (Names{"classes:.vltest", "classes:" + std::string(259, 'c') + "\\DefaultIcon",
                            "classes:" + std::string(259, 'c') + "\\CLSID"}));
    set_class();
    registry().remove_value(HKEY_CLASSES_ROOT, "VlTest.File\\DefaultIcon", nullptr);
    set_class_id(std::string(259, 'd'));
    EXPECT_EQ(ask(kFile), not_found());
    EXPECT_EQ(keys_.back(), "machine:SOFTWARE\\Classes\\CLSID\\" + std::string(259, 'd') + "\\DefaultIcon");
}

TEST_F(FileIcon, GoesByANameCutTo259Characters) {
    set_class();
    set_class_icon("icons.dll,3");
    const std::string extension = ".vltest";
    EXPECT_EQ(ask(std::string(252, 'n') + extension), found("icons.dll", 3));
    EXPECT_EQ(ask(std::string(253, 'n') + extension), not_found());
    EXPECT_EQ(keys_.back(), "classes:.vltes");
    EXPECT_EQ(ask(std::string(259, 'n') + extension), found("shell32.dll", 0)) << "no dot is left";
}

TEST_F(FileIcon, SurvivesNamesThatAreNotUtf8) {
    for (const char* name : {"a\xE5\xAD", "a.\xF0\x9F", "\x80.\x80", ".\xC3"}) ask(name);
    EXPECT_EQ(ask("a\xE5\xAD"), found("shell32.dll", 0));
}

class FolderIcon : public IconTest {
protected:
    FolderIcon() {
        shell_.answer([this](LPCWSTR name, DWORD attributes, SHFILEINFOW* info, UINT size, UINT flags) {
            EXPECT_EQ(size, sizeof *info);
            EXPECT_EQ(flags, UINT{SHGFI_ICONLOCATION | SHGFI_USEFILEATTRIBUTES});
            name_ = name;
            attributes_ = attributes;
            std::copy_n(path_.c_str(), path_.size() + 1, info->szDisplayName);
            info->iIcon = -9;
            return answer_;
        });
    }

    DWORD_PTR answer_ = 1;
    DWORD attributes_ = 0;
    std::wstring name_, path_ = L"C:\\windows\\folders.dll";
    support::CallPatch<DWORD_PTR(LPCWSTR, DWORD, SHFILEINFOW*, UINT, UINT)> shell_{"SHGetFileInfoW",
                                                                                   SHGetFileInfoW};
};

TEST_F(FolderIcon, IsThatOfTheShell) {
    for (const uint32_t attributes : {0x10u, 0x11u, 0x32u, 0xFFFFFFFFu}) {
        EXPECT_EQ(ask("Photos.exe", attributes), found("C:\\windows\\folders.dll", -9));
        EXPECT_EQ(attributes_, attributes) << "as they are given";
        EXPECT_EQ(name_, L"Photos.exe");
    }
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(FolderIcon, OfAFileIsNotAskedOfTheShell) {
    for (const uint32_t attributes : {0u, 0x1u, 0xFFFFFFEFu}) ask("Photos.exe", attributes);
    EXPECT_EQ(shell_.count(), 0u);
}

TEST_F(FolderIcon, IsEmptyWhenTheShellDoesNotTell) {
    answer_ = 0;
    EXPECT_EQ(ask("Photos", 0x10), found("", 0));
}

TEST_F(FolderIcon, ComesInTheAnsiCodePage) {
    path_ =
        L"C:\\Gr\xFC\xDF"
        L"e\\a.dll";
    EXPECT_EQ(ask("Gr\xC3\xBC\xC3\x9F"
                  "e",
                  0x10),
              found("C:\\Gr\xFC\xDF"
                    "e\\a.dll",
                    -9));
    EXPECT_EQ(name_,
              L"Gr\xFC\xDF"
              L"e");
    path_.assign(259, L'\xFC');
    EXPECT_EQ(ask("a", 0x10), found(std::string(259, '\xFC'), -9));
}

TEST_F(FolderIcon, IsReallyAsked) {
    shell_.answer([this](LPCWSTR name, DWORD attributes, SHFILEINFOW* info, UINT size, UINT flags) {
        answer_ = shell_.real(name, attributes, info, size, flags);
        path_ = info->szDisplayName;
        return answer_;
    });
    const Icon icon = ask("Photos", 0x10);
    EXPECT_EQ(icon.result, S_OK);
    EXPECT_EQ(icon.file, answer_ != 0 ? std::string(path_.begin(), path_.end()) : "");
}

}  // namespace
