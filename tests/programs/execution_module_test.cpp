// The execution module as a process: what the library starts it for.
#include "shell_link.h"
#include "suite_programs.h"

#include "VlSim.h"
#include "devices.h"
#include "frame/unique.h"
#include "item_list.h"
#include "library_texts.h"
#include "support/call_patch.h"
#include "support/trace_log.h"
#include "text.h"

#include <shlobj.h>

#include <functional>

using namespace programs;
using namespace suite;

namespace {

constexpr wchar_t kProgram[] = L"VlExecuteModule";
constexpr uint8_t kAddress[6] = {0x55, 0x44, 0x33, 0x22, 0x11, 0x00};
constexpr unsigned int kFolderName = 667;  // string of the Send-To folder

class ExecutionModule : public SuitePrograms {
protected:
    static void SetUpTestSuite() { warm_up_links(); }

    ExecutionModule() {
        settings().common("General", "InstallDir", ansi(work_folder()));
        make_link(work_folder() + L"\\Bluetooth Devices.lnk", kMyComputer);  // the namespace root
        // However long the program takes to start, the library's first wait lasts until it has the list.
        sleeps_.on_sleep([this](size_t) { EXPECT_TRUE(logs(kProgram, "folder window opened", windows_)); });
    }
    // Each opens one window more.
    void browse(const std::function<void()>& call) {
        ++windows_;
        call();
        EXPECT_TRUE(logs(kProgram, "folder window opened", windows_));
    }
    // A shortcut to each of the phone's services.
    void make_shortcuts() const {
        for (const Service& service : services_of(phone())) {
            BtHandle made = 0;
            EXPECT_EQ(VlCm_CreateShortCut(phone(), service.handle, &made), 0u);
        }
    }

private:
    size_t windows_ = 0;
    support::SleepPatch sleeps_;
};

// A file that a test makes outside its folder.
struct RemovedFile {
    std::wstring path;
    ~RemovedFile() { DeleteFileW(path.c_str()); }
};

std::wstring namespace_link() {
    wchar_t folder[MAX_PATH] = L"";
    SHGetFolderPathW(nullptr, CSIDL_SENDTO, nullptr, SHGFP_TYPE_CURRENT, folder);
    return std::wstring(folder) + L"\\" + library_text(kFolderName) + L".lnk";
}

}  // namespace

TEST_F(ExecutionModule, NotesItsCommandAndEnds) {
    support::ChildProcess program("VlExecuteModule.exe", {{"-word", ansi(L"a \u00FC")}});
    EXPECT_EQ(program.wait(), 0u);
    EXPECT_TRUE(logs(L"VlExecuteModule", "command \"-word\" \"a \xC3\xBC\""));
}

TEST_F(ExecutionModule, TakesTheFolderThatTheLibraryHandsOver) {
    make_shortcuts();
    support::clear_trace_log();
    browse([this] { VlCm_BrowseFTPSvcFolderOf(phone()); });
    EXPECT_TRUE(logs(kProgram, "command QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER"));
    const std::vector<std::string> items = {
        "item shell class {20D04FE0-3AEA-1069-A2D8-08002B30309D}",
        "item device 0x40000012 00:11:22:33:44:55 class 0x5a020c",
        "item files 0xc0000302 00:11:22:33:44:55 class 0x5a020c service 0x1106 \"Files\""};
    EXPECT_TRUE(support::has_in_order(log_lines(kProgram), items));
    // The block was given back: there is room for the next.
    browse([this] { VlCm_BrowseMobileFolderOf(phone(), VLCM_PHONE_FOLDER_MESSAGES); });
    EXPECT_TRUE(logs(kProgram, "item message folder 0xc1000002 00:11:22:33:44:55 class 0x5a020c"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ExecutionModule, TakesTheFolderOfADeviceThatIsOneOfItsOwn) {
    make_shortcuts();
    support::RegistryScope registry;
    registry.set(HKEY_LOCAL_MACHINE, "Software\\VLShellFolderCache", "{8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6}",
                 REG_BINARY, std::vector<BYTE>(kAddress, kAddress + 6));
    browse([this] { VlCm_BrowseFTPSvcFolderOfEx(phone()); });
    const std::vector<std::string> items = {
        "item shell class {20D04FE0-3AEA-1069-A2D8-08002B30309D}",
        "item shell class {8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6}",
        "item files of a device 0xc0000016 00:11:22:33:44:55 class 0x5a020c service 0x1106 \"Files\""};
    EXPECT_TRUE(support::has_in_order(log_lines(kProgram), items));
}

TEST_F(ExecutionModule, SaysWhenNoListWaits) {
    support::ChildProcess program("VlExecuteModule.exe", {{"QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER"}});
    EXPECT_EQ(program.wait(), 0u);
    EXPECT_TRUE(logs(kProgram, "no item list waiting"));
}

TEST_F(ExecutionModule, ReadsNoMoreThanThereIs) {
    constexpr DWORD kPage = 4096;
    const vl::UniqueHandle section(
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kPage, "SHARE_MEM_FTPPIDL"));
    const vl::UniqueView view(MapViewOfFile(section.get(), FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_TRUE(static_cast<bool>(view));
    const auto words = static_cast<volatile uint32_t*>(view.get());
    words[0] = 1;
    words[1] = 0xFFFFFFFF;  // the size
    words[2] = 0xFFFFFFFF;  // an item that goes on and on
    support::ChildProcess program("VlExecuteModule.exe", {{"QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER"}});
    EXPECT_EQ(program.wait(), 0u);
    EXPECT_EQ(words[0], 2u);
    const std::vector<std::string> lines = log_lines(kProgram);
    EXPECT_EQ(lines.at(2).rfind("item list of 4088 bytes, broken: ffffffff00", 0), 0u) << lines.at(2);
}

TEST_F(ExecutionModule, MakesTheNamespaceLink) {
    const RemovedFile link{namespace_link()};
    support::ChildProcess program("VlExecuteModule.exe", {{"QVN_VLEXECUTEMODULE_CREATESEND2BTLINK"}});
    EXPECT_EQ(program.wait(), 0u);
    EXPECT_TRUE(logs(kProgram, "namespace link 0x00000000"));
    const ItemList target = decode_item_list(list_of_link(link.path));
    ASSERT_EQ(target.items.size(), 2u);
    EXPECT_EQ(item_text(target.items[0]), "shell class {20D04FE0-3AEA-1069-A2D8-08002B30309D}");
    EXPECT_EQ(item_text(target.items[1]), "Send-To target 0x00001002");
}

TEST_F(ExecutionModule, TellsTheShellsResultWhenThereIsNoRoot) {
    DeleteFileW((work_folder() + L"\\Bluetooth Devices.lnk").c_str());
    support::ChildProcess program("VlExecuteModule.exe", {{"QVN_VLEXECUTEMODULE_CREATESEND2BTLINK"}});
    EXPECT_EQ(program.wait(), 0u);
    EXPECT_TRUE(logs(kProgram, "namespace link 0x80004005"));
}
