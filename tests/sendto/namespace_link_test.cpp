// The Send-To link to the suite's shell namespace.
#include "send_to_test.h"
#include "watched_link.h"

#include "support/trace_log.h"

#include <shlguid.h>
#include <string.h>

using namespace sendto_test;

namespace {

using Bytes = std::vector<uint8_t>;

// A link object with an item list, for one use.
class ListLink {
public:
    ListLink() {
        CoInitialize(nullptr);
        void* made = nullptr;
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
        link_ = static_cast<IShellLinkA*>(made);
        link_->QueryInterface(IID_IPersistFile, &made);
        file_ = static_cast<IPersistFile*>(made);
    }
    ~ListLink() {
        file_->Release();
        link_->Release();
        CoUninitialize();
    }
    ListLink(const ListLink&) = delete;
    ListLink& operator=(const ListLink&) = delete;

    void save_folder(const std::wstring& path, int folder) const {
        LPITEMIDLIST list = nullptr;
        EXPECT_EQ(SHGetSpecialFolderLocation(nullptr, folder, &list), S_OK);
        EXPECT_EQ(link_->SetIDList(list), S_OK);
        CoTaskMemFree(list);
        EXPECT_EQ(file_->Save(path.c_str(), TRUE), S_OK);
    }
    [[nodiscard]] Bytes load(const std::wstring& path) const {
        EXPECT_EQ(file_->Load(path.c_str(), STGM_READ), S_OK);
        LPITEMIDLIST list = nullptr;
        EXPECT_EQ(link_->GetIDList(&list), S_OK);
        const auto first = reinterpret_cast<const uint8_t*>(list);
        Bytes bytes(first, first + ILGetSize(list));
        CoTaskMemFree(list);
        return bytes;
    }

private:
    IShellLinkA* link_ = nullptr;
    IPersistFile* file_ = nullptr;
};

class NamespaceLink : public SendToTest {
protected:
    NamespaceLink() {
        settings().common("General", "InstallDir", utf8(root()));
        ListLink().save_folder(root_link(), CSIDL_DRIVES);
    }
    [[nodiscard]] std::wstring root_link() const { return root() + L"\\Bluetooth Devices.lnk"; }

    // The root's items, then the item for sending.
    [[nodiscard]] Bytes expected_list() const {
        Bytes bytes = ListLink().load(root_link());
        bytes.resize(bytes.size() - 2);  // the terminator
        Bytes item(116, 0);
        const uint8_t head[] = {114, 0, 112, 0, 0, 0, 0x66, 0x46, 0x44, 0xAA, 0x02, 0x10, 0, 0};
        std::copy(std::begin(head), std::end(head), item.begin());
        bytes.insert(bytes.end(), item.begin(), item.end());
        return bytes;
    }
    void expect_none(HRESULT result) {
        EXPECT_EQ(VlCm_CreateVistaSend2btShc(), result);
        EXPECT_FALSE(exists(namespace_link()));
    }
};

}  // namespace

TEST_F(NamespaceLink, LeadsToTheItemForSendingBelowTheRoot) {
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(ListLink().load(namespace_link()), expected_list());
    const std::optional<Link> link = read_link(namespace_link());
    ASSERT_TRUE(link.has_value());
    EXPECT_EQ(link->icon, system_folder() + "\\vlshell.dll");
    EXPECT_EQ(link->icon_index, 0);
    EXPECT_EQ(link->arguments, "");
    EXPECT_EQ(link->description, "");
}

TEST_F(NamespaceLink, LiesBesideTheFolderAndNothingElseIsMade) {
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(names_in(menu()), Lines{utf8(text_of(kFolderId)) + ".lnk"});
    EXPECT_EQ(start_.count(), 0u);
}

TEST_F(NamespaceLink, IsMadeOnEveryWindowsAndWhileBluetoothIsNotReady) {
    run_as_windows(5);
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(version_.count(), 0u);
}

TEST_F(NamespaceLink, TakesThePlaceOfAnOlderOne) {
    write_content(namespace_link(), "older");
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(ListLink().load(namespace_link()), expected_list());
}

TEST_F(NamespaceLink, IsToldToTheShellInThisOrder) {
    LinkWatch watch;
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(watch.calls(),
              (Lines{"create", "QueryInterface file", "Load Bluetooth Devices.lnk, 0", "GetIDList", "create",
                     "SetIDList", "SetIconLocation " + system_folder() + "\\vlshell.dll, 0",
                     "QueryInterface file", "Save " + utf8(text_of(kFolderId)) + ".lnk, 1"}));
    EXPECT_EQ(support::trace_scopes(), (Lines{"512 GetMyBtPlaceRootPidl", "512 VlCm_GetInstallDir"}));
}

TEST_F(NamespaceLink, LanguageLibraryIsFreedBeforeTheRootIsSought) {
    support::CallPatch<BOOL(HMODULE)> free("FreeLibrary", FreeLibrary);
    free.answer([&](HMODULE module) {
        EXPECT_TRUE(support::trace_scopes().empty());
        return free.real(module);
    });
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(free.count(), 1u);
}

TEST_F(NamespaceLink, NeedsTheLanguageLibraryAndTheFoldersName) {
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> text("LoadStringA", LoadStringA);
    text.fail_nth(1, 0, ERROR_RESOURCE_NAME_NOT_FOUND);
    expect_none(E_FAIL);
    support::CallPatch<HMODULE(LPCSTR)> load("LoadLibraryA", LoadLibraryA);
    load.fail_from(1, nullptr, ERROR_MOD_NOT_FOUND);
    expect_none(E_FAIL);
    EXPECT_TRUE(support::trace_scopes().empty());
}

TEST_F(NamespaceLink, NameThatLeadsElsewhereIsNone) {
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> text("LoadStringA", LoadStringA);
    const Lines before = outside();
    for (const char* name : {"..\\x", "a/b", "NUL", "C:x"}) {
        text.answer([&](HINSTANCE, UINT, LPSTR buffer, int size) {
            lstrcpynA(buffer, name, size);
            return static_cast<int>(strlen(name));
        });
        EXPECT_EQ(VlCm_CreateVistaSend2btShc(), E_FAIL) << name;
        EXPECT_EQ(outside(), before) << name;
    }
}

TEST_F(NamespaceLink, NeedsTheMenu) {
    shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD which, LPSTR path) {
        return id == CSIDL_SENDTO ? E_FAIL : shell_folder_.real(owner, id, token, which, path);
    });
    expect_none(E_FAIL);
}

TEST_F(NamespaceLink, NeedsTheRoot) {
    DeleteFileW(root_link().c_str());
    expect_none(E_FAIL);
    write_content(root_link(), "no link");
    expect_none(E_FAIL);
}

TEST_F(NamespaceLink, NeedsMemory) {
    blocks().fail_nth(0);
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    DeleteFileW(namespace_link().c_str());
    const size_t count = blocks().allocations();
    EXPECT_GE(count, 1u);
    for (size_t nth = 1; nth <= count; ++nth) {
        blocks().fail_nth(nth);
        expect_none(E_FAIL);
    }
    support::CallPatch<decltype(ILCombine)> combine("ILCombine", ILCombine);
    blocks().fail_nth(0);
    combine.fail_nth(1, LPITEMIDLIST{nullptr});
    expect_none(E_FAIL);
}

TEST_F(NamespaceLink, EachFailingCallOfTheShellHasItsAnswer) {
    const struct {
        const char* label;
        const char* method;
        size_t nth;
        HRESULT expected;
        bool written;
    } rows[] = {
        {"root object", "create", 1, E_FAIL, false},
        {"root file side", "QueryInterface", 1, E_FAIL, false},
        {"root not loaded", "Load", 1, E_FAIL, false},
        {"root list", "GetIDList", 1, E_FAIL, false},
        {"object", "create", 2, E_ACCESSDENIED, false},
        {"list", "SetIDList", 1, S_OK, true},
        {"icon", "SetIconLocation", 1, S_OK, true},
        {"file side", "QueryInterface", 2, E_ACCESSDENIED, false},
        {"not saved", "Save", 1, E_ACCESSDENIED, false},
    };
    support::for_each_row(rows, [&](const auto& row) {
        DeleteFileW(namespace_link().c_str());
        LinkWatch watch;
        watch.fail(row.method, row.nth, E_ACCESSDENIED);
        EXPECT_EQ(VlCm_CreateVistaSend2btShc(), row.expected);
        EXPECT_EQ(exists(namespace_link()), row.written);
    });
}

TEST_F(NamespaceLink, WithoutTheSystemFolderItHasNoIcon) {
    shell_folder_.answer([this](HWND owner, int id, HANDLE token, DWORD which, LPSTR path) {
        if (id == CSIDL_SYSTEM) return E_FAIL;
        if (id != CSIDL_SENDTO) return shell_folder_.real(owner, id, token, which, path);
        lstrcpynA(path, utf8(menu()).c_str(), MAX_PATH);
        return S_OK;
    });
    EXPECT_EQ(VlCm_CreateVistaSend2btShc(), S_OK);
    EXPECT_EQ(read_link(namespace_link())->icon, "");
}
