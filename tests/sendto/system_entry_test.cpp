// The system's own Bluetooth entry in the Send-To menu, which the suite hides.
#include "send_to_test.h"
#include "watched_link.h"

using namespace sendto_test;

namespace {

class SystemEntry : public SendToTest {
protected:
    void add_entry(const std::string& name, const std::string& target) const {
        write_link(menu() + L"\\" + wide(name), {target, "", "", "", 0});
    }
    [[nodiscard]] DWORD attributes_of(const std::string& name) const {
        return GetFileAttributesW((menu() + L"\\" + wide(name)).c_str());
    }
    [[nodiscard]] bool hidden(const std::string& name) const {
        return (attributes_of(name) & FILE_ATTRIBUTE_HIDDEN) != 0;
    }
    static void pass() { remove(kStranger); }
    const std::string program_ = system_folder() + "\\fsquirt.exe";
    support::CallPatch<BOOL(LPCSTR, DWORD)> set_attributes_{"SetFileAttributesA", SetFileAttributesA};
};

}  // namespace

TEST_F(SystemEntry, IsHiddenByItsTarget) {
    add_entry("Bluetooth File Transfer.lnk", program_);
    add_entry("Notes.lnk", system_folder() + "\\notepad.exe");
    pass();
    EXPECT_TRUE(hidden("Bluetooth File Transfer.lnk"));
    EXPECT_FALSE(hidden("Notes.lnk"));
    EXPECT_EQ(set_attributes_.count(), 1u);
}

TEST_F(SystemEntry, TargetIsComparedWithoutLetterCase) {
    std::string upper = program_;
    CharUpperA(upper.data());
    add_entry("upper.lnk", upper);
    pass();
    EXPECT_TRUE(hidden("upper.lnk"));
}

TEST_F(SystemEntry, OtherTargetsAreNone) {
    const struct {
        const char* label;
        std::string target;
    } rows[] = {
        {"another folder", "C:\\fsquirt.exe"},
        {"longer", program_ + ".exe"},
        {"shorter", program_.substr(0, program_.size() - 1)},
        {"none", ""},
    };
    support::for_each_row(rows, [&](const auto& row) {
        add_entry("entry.lnk", row.target);
        pass();
        EXPECT_FALSE(hidden("entry.lnk"));
    });
}

TEST_F(SystemEntry, KeepsItsOtherAttributes) {
    add_entry("entry.lnk", program_);
    const std::wstring path = menu() + L"\\entry.lnk";
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE));
    pass();
    EXPECT_EQ(attributes_of("entry.lnk"),
              DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE});
}

TEST_F(SystemEntry, OnlyTheFirstOneIsHidden) {
    add_entry("a.lnk", program_);
    add_entry("b.lnk", program_);
    LinkWatch watch;
    pass();
    EXPECT_EQ(hidden("a.lnk") + hidden("b.lnk"), 1);
    EXPECT_EQ(watch.count("GetPath"), 1u);
}

TEST_F(SystemEntry, IsSoughtInTheMenuAloneAndNotInTheSuitesFolder) {
    make_folder();
    write_link(in_folder("inside.lnk"), {program_, "", "", "", 0});
    CreateDirectoryW((menu() + L"\\Other").c_str(), nullptr);
    write_link(menu() + L"\\Other\\there.lnk", {program_, "", "", "", 0});
    pass();
    EXPECT_EQ(GetFileAttributesW(in_folder("inside.lnk").c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_EQ(attributes_of("Other\\there.lnk") & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_EQ(set_attributes_.count(), 0u);
}

TEST_F(SystemEntry, FilesThatAreNoLinksArePassedOver) {
    write_content(menu() + L"\\a broken one.lnk", program_);
    write_content(menu() + L"\\b empty.lnk", "");
    CreateDirectoryW((menu() + L"\\c folder.lnk").c_str(), nullptr);
    write_link(menu() + L"\\d entry.txt", {program_, "", "", "", 0});
    add_entry("e entry.lnk", program_);
    pass();
    EXPECT_TRUE(hidden("e entry.lnk"));
    EXPECT_EQ(set_attributes_.count(), 1u);
}

TEST_F(SystemEntry, LinkIsReadAsStored) {
    add_entry("entry.lnk", program_);
    LinkWatch watch;
    pass();
    const Lines expected{"create", "QueryInterface file", "Load entry.lnk, 0", "GetPath 260, 4"};
    ASSERT_GE(watch.calls().size(), expected.size());
    EXPECT_EQ(Lines(watch.calls().begin(), watch.calls().begin() + 4), expected);
}

TEST_F(SystemEntry, IsHiddenBeforeTheFolderIsMade) {
    add_entry("entry.lnk", program_);
    set_attributes_.answer([this](LPCSTR path, DWORD attributes) {
        EXPECT_FALSE(exists(folder()));
        return set_attributes_.real(path, attributes);
    });
    pass();
    EXPECT_EQ(set_attributes_.count(), 1u);
    EXPECT_TRUE(exists(folder()));
}

TEST_F(SystemEntry, SystemFolderIsTheCurrentOne) {
    add_entry("entry.lnk", "C:\\elsewhere\\fsquirt.exe");
    shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD which, LPSTR path) {
        if (id == CSIDL_SENDTO) lstrcpynA(path, utf8(menu()).c_str(), MAX_PATH);
        if (id == CSIDL_SENDTO) return S_OK;
        if (id != CSIDL_SYSTEM) return shell_folder_.real(owner, id, token, which, path);
        EXPECT_EQ(which, DWORD{SHGFP_TYPE_CURRENT});
        lstrcpyA(path, "C:\\Elsewhere");
        return S_OK;
    });
    pass();
    EXPECT_TRUE(hidden("entry.lnk"));
}

TEST_F(SystemEntry, EachFailingCallLeavesItShownAndTheRestIsDone) {
    const struct {
        const char* label;
        const char* method;
    } rows[] = {
        {"no object", "create"},
        {"no file side", "QueryInterface"},
        {"not loaded", "Load"},
        {"no path", "GetPath"},
    };
    add_entry("entry.lnk", program_);
    support::for_each_row(rows, [&](const auto& row) {
        LinkWatch watch;
        watch.fail(row.method, 1, E_FAIL);
        pass();
        EXPECT_FALSE(hidden("entry.lnk"));
        EXPECT_TRUE(read_link(generic_link()).has_value());
    });
    set_attributes_.fail_nth(1, FALSE, ERROR_ACCESS_DENIED);
    pass();
    EXPECT_FALSE(hidden("entry.lnk"));
    EXPECT_EQ(set_attributes_.count(), 1u);
}

TEST_F(SystemEntry, ListingThatCannotBeOpenedIsPassedOver) {
    support::CallPatch<HANDLE(LPCSTR, LPWIN32_FIND_DATAA)> list("FindFirstFileA", FindFirstFileA);
    list.fail_nth(1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    add_entry("entry.lnk", program_);
    pass();
    EXPECT_FALSE(hidden("entry.lnk"));
    EXPECT_TRUE(exists(generic_link()));
}
