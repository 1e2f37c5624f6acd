// The namespace root: what the link in the installation folder points at.
#include "shell_scene.h"
#include "shortcuts/fake_link.h"

#include <shlguid.h>

using namespace shell_test;
using shortcuts_test::FakeLink;

namespace {

const Lines kRootScopes = {">512 GetMyBtPlaceRootPidl", ">512 VlCm_GetInstallDir", "<512 VlCm_GetInstallDir",
                           "<512 GetMyBtPlaceRootPidl"};

const Bytes kMyComputerItem = {20,   0,    0x1F, 0x50, 0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A,
                               0x69, 0x10, 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D};

// A block as the shell gives it away.
LPITEMIDLIST given_away(const Bytes& list) {
    void* block = CoTaskMemAlloc(list.size());
    memcpy(block, list.data(), list.size());
    return static_cast<LPITEMIDLIST>(block);
}

// A shell link of the system's own making, in a folder of its own.
class RealLink {
public:
    RealLink() {
        char temp[MAX_PATH];
        GetTempPathA(MAX_PATH, temp);
        folder_ = std::string(temp) + "namespace_root_test";
        CreateDirectoryA(folder_.c_str(), nullptr);
    }
    ~RealLink() {
        DeleteFileA(path().c_str());
        RemoveDirectoryA(folder_.c_str());
    }
    RealLink(const RealLink&) = delete;
    RealLink& operator=(const RealLink&) = delete;

    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] std::string path() const { return folder_ + "\\Bluetooth Devices.lnk"; }

    void point_at(const Bytes& list) const {
        save([&](IShellLinkA* link) { EXPECT_GE(link->SetIDList(as_list(list)), 0); });
    }
    // The list that the link's target has then.
    [[nodiscard]] Bytes point_at(const char* target) const {
        Bytes list;
        save([&](IShellLinkA* link) {
            EXPECT_EQ(link->SetPath(target), S_OK);
            LPITEMIDLIST owned = nullptr;
            EXPECT_EQ(link->GetIDList(&owned), S_OK);
            list = copy_of(owned);
            CoTaskMemFree(owned);
        });
        return list;
    }

private:
    void save(const std::function<void(IShellLinkA*)>& fill) const {
        EXPECT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
        void* made = nullptr;
        CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
        auto* const link = static_cast<IShellLinkA*>(made);
        fill(link);
        void* found = nullptr;
        link->QueryInterface(IID_IPersistFile, &found);
        auto* const file = static_cast<IPersistFile*>(found);
        const std::string narrow = path();
        EXPECT_EQ(file->Save(std::wstring(narrow.begin(), narrow.end()).c_str(), TRUE), S_OK);
        file->Release();
        link->Release();
        CoUninitialize();
    }

    std::string folder_;
};

class NamespaceRoot : public ShellTest {
protected:
    // The first link object of a process makes the system keep a key open: it is no leak.
    static void SetUpTestSuite() { RealLink().point_at(kRoot); }

    void use(FakeLink& link) {
        create_.answer([&link](REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID* object) {
            *object = static_cast<IShellLinkA*>(&link);
            return S_OK;
        });
    }
    // The root's items in what was handed over; the phone's follow. Empty: nothing was.
    Bytes root_found() {
        support::clear_trace_log();
        handed.clear();
        VlCm_BrowseFTPSvcFolderOf(kPhone);
        if (handed.empty()) return {};
        const Bytes& list = handed.back().list;
        const Bytes rest = list_of({bytes_of(kPhoneItem), bytes_of(kFilesItem)});
        EXPECT_GE(list.size(), rest.size());
        const auto end = list.end() - static_cast<ptrdiff_t>(rest.size());
        EXPECT_EQ(Bytes(end, list.end()), rest);
        return list_of({Bytes(list.begin(), end)});
    }

    support::CallPatch<HRESULT(LPVOID)> join_{"CoInitialize", CoInitialize};
    support::CallPatch<HRESULT(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)> create_{"CoCreateInstance",
                                                                                     CoCreateInstance};
    support::CallPatch<void()> leave_{"CoUninitialize", CoUninitialize};
};

}  // namespace

TEST_F(NamespaceRoot, IsTheListOfARealLink) {
    const RealLink link;
    settings().common("General", "InstallDir", link.folder());
    const Bytes folder = link.point_at("C:\\windows\\system32");
    EXPECT_GT(folder.size(), 2U);
    EXPECT_EQ(root_found(), folder);
    EXPECT_EQ(join_.count(), 1U);
    EXPECT_EQ(leave_.count(), 1U);
}

TEST_F(NamespaceRoot, NeedsNoFileBehindTheLink) {
    const RealLink link;
    settings().common("General", "InstallDir", link.folder());
    const Bytes extension = list_of({kMyComputerItem});
    link.point_at(extension);
    EXPECT_EQ(root_found(), extension);
}

TEST_F(NamespaceRoot, ServesThePhonesFoldersToo) {
    FakeLink link;
    link.item_list = given_away(kRoot);
    link.item_list_result = S_OK;
    use(link);
    VlCm_BrowseMobileFolderOf(kPhone, VLCM_PHONE_FOLDER_PHONEBOOK);
    ASSERT_EQ(handed.size(), 1U);
    EXPECT_EQ(handed[0].list, list_of({kRootItem, bytes_of(kPhoneItem), bytes_of(kPhonebookItem)}));
    EXPECT_EQ(link.references, 0);
}

TEST_F(NamespaceRoot, LinkIsLoadedReadAndReleasedInThisOrder) {
    FakeLink link;
    link.item_list = given_away(kRoot);
    link.item_list_result = S_OK;
    use(link);
    EXPECT_EQ(root_found(), kRoot);
    EXPECT_EQ(link.calls, (Lines{"ask for the file", "load, mode 0", "release", "item list", "release"}));
    EXPECT_EQ(link.loaded, L"C:\\Veltrin\\Bluetooth Devices.lnk");
    EXPECT_EQ(link.references, 0);
    const auto [id, outer, context, interface_id, object] = create_.calls().at(0);
    EXPECT_TRUE(id == CLSID_ShellLink && interface_id == IID_IShellLinkA);
    EXPECT_EQ(outer, nullptr);
    EXPECT_EQ(context, DWORD{CLSCTX_INPROC_SERVER});
}

TEST_F(NamespaceRoot, PathIsInTheCodePageOfTheSystem) {
    FakeLink link;
    use(link);
    settings().common("General", "InstallDir",
                      "C:\\Gr\xF6\xDF"
                      "e");
    root_found();
    EXPECT_EQ(link.loaded, L"C:\\Gr\u00f6\u00dfe\\Bluetooth Devices.lnk");
}

TEST_F(NamespaceRoot, LongPathIsCutAt259Characters) {
    FakeLink link;
    use(link);
    const std::string folder = "C:\\" + std::string(240, 'f');
    settings().common("General", "InstallDir", folder);
    root_found();
    EXPECT_EQ(link.loaded, std::wstring(folder.begin(), folder.end()) + L"\\Bluetooth Devic");
}

TEST_F(NamespaceRoot, IsReadInsideItsOwnScope) {
    FakeLink link;
    use(link);
    root_found();
    EXPECT_EQ(support::trace_log(), kRootScopes);
}

TEST_F(NamespaceRoot, ThatCannotBeReadOpensNothing) {
    struct Row {
        const char* label;
        HRESULT query, load, list;
        Lines calls;
    };
    const Row rows[] = {
        {"no file", E_NOINTERFACE, S_OK, S_OK, {"ask for the file", "release"}},
        {"not loaded", S_OK, E_FAIL, S_OK, {"ask for the file", "load, mode 0", "release", "release"}},
        {"no list",
         S_OK,
         S_OK,
         E_FAIL,
         {"ask for the file", "load, mode 0", "release", "item list", "release"}},
        {"an empty answer",
         S_OK,
         S_OK,
         S_FALSE,
         {"ask for the file", "load, mode 0", "release", "item list", "release"}},
    };
    support::for_each_row(rows, [&](const Row& row) {
        FakeLink link;
        link.query_result = row.query;
        link.load_result = row.load;
        link.item_list_result = row.list;
        use(link);
        VlCm_BrowseFTPSvcFolderOf(kPhone);
        EXPECT_EQ(link.calls, row.calls);
        EXPECT_EQ(link.references, 0);
        link.calls.clear();
        link.references = 1;
        VlCm_BrowseMobileFolderOf(kPhone, VLCM_PHONE_FOLDER_MESSAGES);
        EXPECT_EQ(link.calls, row.calls);
        EXPECT_EQ(link.references, 0);
    });
    EXPECT_TRUE(starts.empty());
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetRemoteDeviceProperty").empty());
    EXPECT_EQ(join_.count(), 8U);
    EXPECT_EQ(leave_.count(), 8U);
}

TEST_F(NamespaceRoot, WithoutTheShellsObjectOpensNothing) {
    create_.fail_from(1, REGDB_E_CLASSNOTREG);
    VlCm_BrowseFTPSvcFolderOf(kPhone);
    VlCm_BrowseMobileFolderOf(kPhone, VLCM_PHONE_FOLDER_MESSAGES);
    EXPECT_TRUE(starts.empty());
    EXPECT_EQ(leave_.count(), 2U);
}

TEST_F(NamespaceRoot, WithoutTheLinkFileOpensNothing) {
    const RealLink link;  // a folder without a link
    settings().common("General", "InstallDir", link.folder());
    VlCm_BrowseFTPSvcFolderOf(kPhone);
    support::write_file(link.path(), "no link at all");
    VlCm_BrowseFTPSvcFolderOf(kPhone);
    EXPECT_TRUE(starts.empty());
    EXPECT_EQ(leave_.count(), 2U);
}

TEST_F(NamespaceRoot, AThreadThatCannotJoinAnApartmentLeavesNone) {
    for (const HRESULT result : {RPC_E_CHANGED_MODE, E_OUTOFMEMORY}) {
        FakeLink link;
        link.item_list = given_away(kRoot);
        link.item_list_result = S_OK;
        use(link);
        join_.fail_from(1, result);
        EXPECT_EQ(root_found(), kRoot);
        EXPECT_EQ(link.references, 0);
    }
    EXPECT_EQ(leave_.count(), 0U);
}

TEST_F(NamespaceRoot, OfNoDeviceIsNotAskedFor) {
    VlCm_BrowseFTPSvcFolderOf(0);
    VlCm_BrowseMobileFolderOf(0, VLCM_PHONE_FOLDER_PHONEBOOK);
    EXPECT_EQ(join_.count(), 0U);
    EXPECT_TRUE(support::trace_log().empty());
    EXPECT_TRUE(support::sdk_calls().empty());
}
