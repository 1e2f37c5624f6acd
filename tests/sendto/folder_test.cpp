// The suite's folder in the Send-To menu: what every pass over it puts right.
#include "send_to_test.h"

#include "support/sdk_log.h"
#include "support/trace_log.h"

#include "VlSim.h"

using namespace sendto_test;

namespace {

constexpr DWORD kXp = 5, kVista = 6;

struct Attributes {
    std::string path;
    DWORD attributes;
    bool operator==(const Attributes&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Attributes& set) {
    return out << set.path << ' ' << set.attributes;
}

class SendToFolder : public SendToTest {
protected:
    SendToFolder() {
        set_attributes_.answer([this](LPCWSTR path, DWORD attributes) {
            attributes_.push_back({utf8(path), attributes});
            return set_attributes_.real(path, attributes);
        });
        text_.answer([this](HINSTANCE library, UINT id, LPSTR buffer, int size) {
            sizes_.emplace_back(id, size);
            if (id != replaced_id_) return text_.real(library, id, buffer, size);
            if (!replacement_.empty()) lstrcpynA(buffer, replacement_.c_str(), size);
            return static_cast<int>(replacement_.size());
        });
    }
    void replace_text(unsigned id, const std::string& text) {
        replaced_id_ = id;
        replacement_ = text;
    }
    // A pass that neither adds nor removes a link.
    static void pass() { remove(kStranger); }
    void expect_nothing_done() {
        EXPECT_EQ(outside(), Lines{"SendTo"});
        EXPECT_FALSE(exists(folder()));
        EXPECT_EQ(start_.count(), 0u);
        EXPECT_EQ(create_.count(), 0u);
    }
    [[nodiscard]] std::string settings_text() const {
        return "[.ShellClassInfo]\r\nInfoTip=bluetooth send folder\r\nIconFile=" + system_folder() +
               "\\vlshell.dll\r\nIconIndex=0\r\nConfirmFileOp=0";
    }

    // These attributes of the settings file. (Under Wine every file bears the archive bit.)
    [[nodiscard]] DWORD hidden_and_system() const {
        return GetFileAttributesW(in_folder("Desktop.ini").c_str()) & 6;
    }

    std::vector<Attributes> attributes_;
    std::vector<std::pair<UINT, int>> sizes_;
    support::CallPatch<BOOL(LPCWSTR, DWORD)> set_attributes_{"SetFileAttributesW", SetFileAttributesW};
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> text_{"LoadStringA", LoadStringA};
    support::CallPatch<HRESULT(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)> create_{"CoCreateInstance",
                                                                                     CoCreateInstance};

private:
    unsigned replaced_id_ = 0;
    std::string replacement_;
};

}  // namespace

TEST_F(SendToFolder, IsMadeWithItsSettingsFileAndTheLinkWithoutADevice) {
    pass();
    const std::string generic = utf8(text_of(kGenericId)) + ".lnk";
    Lines expected{"Desktop.ini", generic};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names_in(folder()), expected);
    EXPECT_EQ(outside(), Lines{"SendTo"});
}

TEST_F(SendToFolder, MenuIsTheUsersByItsDefaultPath) {
    pass();
    const auto calls = shell_folder_.calls();
    size_t asked = 0;
    for (const auto& [owner, id, token, which, path] : calls) {
        if (id != CSIDL_SENDTO) continue;
        ++asked;
        EXPECT_EQ(owner, nullptr);
        EXPECT_EQ(token, nullptr);
        EXPECT_EQ(which, DWORD{SHGFP_TYPE_DEFAULT});
    }
    EXPECT_EQ(asked, 1u);
}

TEST_F(SendToFolder, NamesAreLoadedIntoTheirRoomTerminatorIncluded) {
    pass();
    EXPECT_EQ(sizes_, (std::vector<std::pair<UINT, int>>{{kFolderId, 50}, {kGenericId, 63}}));
}

TEST_F(SendToFolder, SettingsFileIsWrittenByteForByte) {
    pass();
    EXPECT_EQ(content_of(in_folder("Desktop.ini")), settings_text());
}

TEST_F(SendToFolder, SettingsFileBecomesHiddenAndSystemOnceItIsMade) {
    const std::string path = utf8(in_folder("Desktop.ini"));
    pass();
    EXPECT_EQ(std::count(attributes_.begin(), attributes_.end(), Attributes{path, 6}), 1);
    EXPECT_EQ(hidden_and_system(), 6u);
    attributes_.clear();
    pass();
    for (const Attributes& set : attributes_) EXPECT_NE(set.path, path);
}

TEST_F(SendToFolder, SettingsFileThatExistsIsNotTouched) {
    make_folder();
    for (const char* content : {"", "[.ShellClassInfo]\r\nIconIndex=7\r\n"}) {
        write_content(in_folder("Desktop.ini"), content);
        attributes_.clear();
        pass();
        EXPECT_EQ(content_of(in_folder("Desktop.ini")), content);
        for (const Attributes& set : attributes_) EXPECT_NE(set.path, utf8(in_folder("Desktop.ini")));
    }
}

TEST_F(SendToFolder, GetsItsAttributesOnEveryPass) {
    const struct {
        const char* label;
        DWORD major;
        DWORD added;
    } rows[] = {{"XP", kXp, 1}, {"Vista", kVista, 7}, {"10", 10, 7}};
    make_folder();
    support::for_each_row(rows, [&](const auto& row) {
        run_as_windows(row.major);
        for (int time = 0; time < 2; ++time) {
            attributes_.clear();
            const DWORD before = GetFileAttributesW(folder().c_str());
            pass();
            const Attributes expected{utf8(folder()), before | row.added};
            EXPECT_EQ(std::count(attributes_.begin(), attributes_.end(), expected), 1);
        }
    });
}

TEST_F(SendToFolder, KeepsTheAttributesThatItHas) {
    make_folder();
    ASSERT_TRUE(SetFileAttributesW(folder().c_str(), FILE_ATTRIBUTE_HIDDEN));
    run_as_windows(kXp);
    pass();
    const DWORD expected = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(attributes_.front(), (Attributes{utf8(folder()), expected}));
}

TEST_F(SendToFolder, AFileInItsPlaceKeepsItsAttributes) {
    write_content(folder(), "a file of the user's");
    pass();
    EXPECT_TRUE(attributes_.empty());
    EXPECT_EQ(content_of(folder()), "a file of the user's");
}

TEST_F(SendToFolder, LinkWithoutADeviceStartsTheSendProgram) {
    const std::string program = std::string(kInstallFolder) + "\\VlSend2bt.exe";
    const struct {
        const char* label;
        DWORD major;
        const char* icon;
        int index;
    } rows[] = {
        {"XP: the send icon", kXp, "\\VlLangInDepRes.dll", 161},
        {"Vista: the namespace's", kVista, "\\vlshell.dll", 0},
    };
    support::for_each_row(rows, [&](const auto& row) {
        run_as_windows(row.major);
        pass();
        EXPECT_EQ(read_link(generic_link()),
                  (Link{program, "", program, system_folder() + row.icon, row.index}));
    });
}

TEST_F(SendToFolder, LinkWithoutADeviceIsRewrittenOnEveryPass) {
    pass();
    const std::optional<Link> made = read_link(generic_link());
    write_content(generic_link(), "something else");
    pass();
    EXPECT_EQ(read_link(generic_link()), made);
}

TEST_F(SendToFolder, NamespaceLinkIsOrderedFromVistaOnWhileItIsMissing) {
    const struct {
        const char* label;
        DWORD major;
        bool there;
        size_t starts;
    } rows[] = {
        {"XP", kXp, false, 0},
        {"Vista", kVista, false, 1},
        {"Vista, link there", kVista, true, 0},
        {"10", 10, false, 1},
    };
    support::for_each_row(rows, [&](const auto& row) {
        run_as_windows(row.major);
        DeleteFileW(namespace_link().c_str());
        if (row.there) write_content(namespace_link(), "");
        const size_t before = start_.count();
        pass();
        EXPECT_EQ(start_.count() - before, row.starts);
    });
}

TEST_F(SendToFolder, NamespaceLinkIsOrderedFromTheExecutionModule) {
    start_.answer([this](HWND owner, LPCSTR verb, LPCSTR file, LPCSTR parameter, LPCSTR in, INT show) {
        EXPECT_EQ(owner, nullptr);
        EXPECT_STREQ(verb, "open");
        EXPECT_STREQ(file, "VlExecuteModule.exe");
        EXPECT_STREQ(parameter, "QVN_VLEXECUTEMODULE_CREATESEND2BTLINK");
        EXPECT_STREQ(in, "C:\\suite here\\");
        EXPECT_EQ(show, 4);
        EXPECT_TRUE(exists(generic_link()));  // last of all
        return reinterpret_cast<HINSTANCE>(INT_PTR{ERROR_FILE_NOT_FOUND});
    });
    add(kPhone);
    EXPECT_EQ(start_.count(), 1u);
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});  // a failed start changes nothing
}

TEST_F(SendToFolder, NothingIsDoneWhileBluetoothIsNotReady) {
    const size_t queries = shell_folder_.count();
    for (const int answer : {0, 2, 255}) {
        static uint8_t ready;
        ready = static_cast<uint8_t>(answer);
        VlSim_Hook("Btsdk_IsBluetoothReady", reinterpret_cast<void*>(+[]() -> uint8_t { return ready; }));
        add(kPhone);
        VlCm_SyncSend2btShcForMultiUser();
        expect_nothing_done();
        EXPECT_EQ(shell_folder_.count(), queries);
    }
}

TEST_F(SendToFolder, NothingIsDoneWithoutAnAddress) {
    VlCm_SyncSend2btShc(nullptr, TRUE);
    VlCm_SyncSend2btShc(nullptr, FALSE);
    expect_nothing_done();
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(SendToFolder, NothingIsDoneWithoutTheLanguageLibrary) {
    support::CallPatch<HMODULE(LPCSTR)> load("LoadLibraryA", LoadLibraryA);
    load.fail_from(1, nullptr, ERROR_MOD_NOT_FOUND);
    add(kPhone);
    VlCm_SyncSend2btShcForMultiUser();
    EXPECT_EQ(load.count(), 2u);
    expect_nothing_done();
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_IsBluetoothReady"}));
}

TEST_F(SendToFolder, NothingIsDoneWithoutItsName) {
    replace_text(kFolderId, "");
    add(kPhone);
    VlCm_SyncSend2btShcForMultiUser();
    expect_nothing_done();
}

TEST_F(SendToFolder, NothingIsDoneUnderANameThatLeadsElsewhere) {
    for (const char* name : {"..", ".", "a\\b", "..\\b", "a/b", "C:", "NUL", "a:b"}) {
        replace_text(kFolderId, name);
        add(kPhone);
        VlCm_SyncSend2btShcForMultiUser();
        EXPECT_EQ(outside(), Lines{"SendTo"}) << name;
        EXPECT_EQ(create_.count(), 0u) << name;
        EXPECT_TRUE(attributes_.empty()) << name;
    }
}

TEST_F(SendToFolder, NothingIsDoneWithoutTheMenusPath) {
    shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD flags, LPSTR path) {
        if (id == CSIDL_SENDTO) lstrcpyA(path, "C:\\left by a failed call");
        return id == CSIDL_SENDTO ? E_FAIL : shell_folder_.real(owner, id, token, flags, path);
    });
    add(kPhone);
    VlCm_SyncSend2btShcForMultiUser();
    expect_nothing_done();
    EXPECT_FALSE(exists(L"C:\\left by a failed call\\" + text_of(kFolderId)));
}

TEST_F(SendToFolder, NothingIsDoneInAMenuWhoseFolderHasNoRoomInAPath) {
    std::wstring deep = root();
    while (deep.size() + 41 < 255)
        CreateDirectoryW((deep += L"\\" + std::wstring(40, L'd')).c_str(), nullptr);
    deep += L"\\" + std::wstring(255 - deep.size() - 1, L'e');
    ASSERT_EQ(deep.size(), 255u);
    use_menu(deep);
    add(kPhone);
    EXPECT_EQ(start_.count(), 0u);
    EXPECT_TRUE(names_in(deep).empty());
    EXPECT_TRUE(attributes_.empty());
}

TEST_F(SendToFolder, WithoutTheSystemFolderTheRestIsDone) {
    shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD flags, LPSTR path) {
        if (id == CSIDL_SYSTEM) return E_FAIL;
        lstrcpynA(path, utf8(menu()).c_str(), MAX_PATH);
        return id == CSIDL_SENDTO ? S_OK : shell_folder_.real(owner, id, token, flags, path);
    });
    add(kPhone);
    EXPECT_FALSE(exists(in_folder("Desktop.ini")));  // a later pass shall write it whole
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
    EXPECT_EQ(read_link(generic_link())->icon, "");
}

TEST_F(SendToFolder, LinkWithoutADeviceNeedsItsName) {
    for (const char* name : {"", "..\\x", "a/b", "CON", "a?"}) {
        replace_text(kGenericId, name);
        pass();
        EXPECT_EQ(names_in(folder()), Lines{"Desktop.ini"}) << name;
        EXPECT_EQ(outside(), Lines{"SendTo"}) << name;
    }
}

TEST_F(SendToFolder, PassesOpenTheScopesOfTheInstallationFolderAlone) {
    pass();
    EXPECT_EQ(support::trace_scopes(), Lines(2, "512 VlCm_GetInstallDir"));  // generic link, module
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(SendToFolder, LanguageLibraryIsFreed) {
    HMODULE before = GetModuleHandleA("Vl2Res.dll");
    EXPECT_EQ(before, nullptr);
    add(kNameless);
    VlCm_SyncSend2btShcForMultiUser();
    EXPECT_EQ(GetModuleHandleA("Vl2Res.dll"), nullptr);
}

TEST_F(SendToFolder, EachStepThatFailsIsPassedOver) {
    const struct {
        const char* label;
        size_t nth;
    } rows[] = {{"first", 1}, {"second", 2}, {"third", 3}};
    support::for_each_row(rows, [&](const auto& row) {
        remove_tree(folder());
        set_attributes_.fail_nth(set_attributes_.count() + row.nth, FALSE, ERROR_ACCESS_DENIED);
        add(kPhone);
        EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
        EXPECT_EQ(content_of(in_folder("Desktop.ini")), settings_text());
    });
}

TEST_F(SendToFolder, WhenItCannotBeMadeNothingIsWritten) {
    support::CallPatch<BOOL(LPCWSTR, LPSECURITY_ATTRIBUTES)> make("CreateDirectoryW", CreateDirectoryW);
    make.fail_from(1, FALSE, ERROR_ACCESS_DENIED);
    add(kPhone);
    VlCm_SyncSend2btShcForMultiUser();
    EXPECT_EQ(outside(), Lines{"SendTo"});
    EXPECT_TRUE(attributes_.empty());
}

TEST_F(SendToFolder, SettingsFileThatCannotBeMadeOrWrittenIsPassedOver) {
    support::CallPatch<decltype(CreateFileW)> make("CreateFileW", CreateFileW);
    support::CallPatch<decltype(WriteFile)> write("WriteFile", WriteFile);
    make.fail_nth(1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    add(kPhone);
    EXPECT_EQ(device_links(), Lines{"Lena's phone.lnk"});
    EXPECT_EQ(write.count(), 0u);
    EXPECT_FALSE(exists(in_folder("Desktop.ini")));
    write.fail_nth(1, FALSE, ERROR_DISK_FULL);
    add(kHeadset);
    EXPECT_EQ(device_links().size(), 2u);
    EXPECT_EQ(hidden_and_system(), 6u);
}
