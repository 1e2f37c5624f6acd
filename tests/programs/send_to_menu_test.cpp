// The Send-To menu as a whole: vlcm.exe keeps its links, and what a link starts sends the files.
#include "command_line.h"

#include "VlCommon.h"
#include "VlSim.h"
#include "event_log.h"
#include "file_watch.h"
#include "text.h"

#include <shlobj.h>

#include <filesystem>

using namespace programs;
using namespace suite;

namespace {

constexpr char kPhoneAddress[] = "00:11:22:33:44:55", kStranger[] = "A0:B1:C2:D3:E4:F5";
constexpr wchar_t kPhoneLink[] = L"Test Phone.lnk";

// The user's real menu of this prefix: as if the suite had never been there, but for the link to the
// namespace, so that no program is started to make it.
class SendToMenu : public CommandLine {
protected:
    SendToMenu() {
        wchar_t menu[MAX_PATH] = L"";
        SHGetFolderPathW(nullptr, CSIDL_SENDTO, nullptr, SHGFP_TYPE_DEFAULT, menu);
        menu_ = menu;
        remove_all();
        write(namespace_link());
    }
    ~SendToMenu() override { remove_all(); }

    [[nodiscard]] std::wstring folder() const { return menu_ + L"\\Bluetooth"; }
    [[nodiscard]] std::wstring namespace_link() const { return menu_ + L"\\Bluetooth.lnk"; }
    [[nodiscard]] bool has_link(const wchar_t* name) const {
        return std::filesystem::exists(std::filesystem::path(folder()) / name);
    }
    static void write(const std::wstring& path) {
        FILE* const file = _wfopen(path.c_str(), L"wb");
        if (file != nullptr) fclose(file);
    }
    static const Json* link_of(const Json& facts, const std::string& file) {
        for (const Json& link : facts.at("links")) {
            if (link.at("file") == file) return &link;
        }
        return nullptr;
    }
    // Starts what a link starts when files are dropped on it.
    static DWORD drop(const Json& link, const std::vector<std::wstring>& files) {
        std::vector<std::string> arguments{link.at("arguments").get<std::string>()};
        for (const std::wstring& file : files) arguments.push_back(ansi(file));
        support::ChildProcess program(link.at("target").get<std::string>(), {arguments});
        return program.wait();
    }

private:
    void remove_all() const {
        SetFileAttributesW(folder().c_str(), FILE_ATTRIBUTE_NORMAL);
        std::error_code ignored;
        std::filesystem::remove_all(folder(), ignored);
        DeleteFileW(namespace_link().c_str());
    }
    std::wstring menu_;
};

}  // namespace

TEST_F(SendToMenu, LinkOfADeviceSendsTheFilesThatAreDroppedOnIt) {
    const Json facts = ask({"sendto", "sync", kPhoneName});
    const Json* link = link_of(facts, "Test Phone.lnk");
    ASSERT_NE(link, nullptr) << facts;
    EXPECT_EQ(link->at("target"), utf8(program_folder()) + "\\VlSend2bt.exe");
    EXPECT_EQ(link->at("arguments"), std::string("-DEV_ADDR=") + kPhoneAddress);
    EXPECT_EQ(link->at("device").at("name"), kPhoneName);
    const AgentProcess agent;
    EXPECT_EQ(drop(*link, {make_file(L"one.txt", "first"), make_file(L"two.txt", "second")}), 0u);
    EXPECT_TRUE(wait_in_folder(inbox(), kDeadline_ms, [&] { return names_in(inbox()).size() == 2; }));
    EXPECT_EQ(content_of(inbox() + L"\\one.txt"), "first");
    EXPECT_EQ(content_of(inbox() + L"\\two.txt"), "second");
    EXPECT_TRUE(logs(L"VlSend2bt", std::string("to ") + kPhoneName));
    EXPECT_TRUE(has_link(kPhoneLink));
}

TEST_F(SendToMenu, LinkOfADeviceThatIsGoneSendsNothingAndGoes) {
    const Json facts = ask({"sendto", "sync", kPhoneName});
    ASSERT_EQ(VlSim_Patch(R"({"devices": []})"), 0u);
    EXPECT_EQ(drop(*link_of(facts, "Test Phone.lnk"), {make_file(L"one.txt", "first")}), 1u);
    EXPECT_TRUE(logs(L"VlSend2bt", std::string("no device ") + kPhoneAddress));
    EXPECT_FALSE(has_link(kPhoneLink));
}

TEST_F(SendToMenu, SendProgramSaysWhyItSendsNothing) {
    const Json link = *link_of(ask({"sendto", "sync", kPhoneName}), "Test Phone.lnk");
    EXPECT_EQ(drop(link, {}), 2u);
    EXPECT_TRUE(logs(L"VlSend2bt", "no files"));
    EXPECT_EQ(drop(link, {work_folder() + L"\\missing.txt"}), 1u);
    EXPECT_TRUE(logs(L"VlSend2bt", "no file \"" + utf8(work_folder()) + "\\missing.txt\""));
    EXPECT_EQ(names_in(inbox()).size(), 0u);
}

TEST_F(SendToMenu, LinkWithoutADeviceBringsUpTheMainWindow) {
    settings().common("General", "VLUI_WINDOW_TEXT", "Send-To test window");
    const Json link = *link_of(ask({"sendto", "sync"}), "Other Bluetooth device.lnk");
    EXPECT_EQ(link.at("device"), nullptr);
    support::ChildProcess program(link.at("target").get<std::string>(),
                                  {{ansi(make_file(L"one.txt", "first"))}});
    EXPECT_EQ(program.wait(), 1u);
    EXPECT_TRUE(logs(L"VlSend2bt", "no device is named: opening the main window"));
    EXPECT_TRUE(logs(L"Veltrin", "window \"Send-To test window\""));
}

TEST_F(SendToMenu, IsListedAndSynchronised) {
    EXPECT_EQ(ask({"sendto", "list"}, kNo).at("exists"), false);
    const Json added = ask({"sendto", "sync", kPhoneAddress});
    EXPECT_EQ(added.at("folder"), utf8(folder()));
    EXPECT_EQ(added.at("exists"), true);
    EXPECT_EQ(added.at("namespaceLink"), true);
    EXPECT_EQ(ask({"sendto", "list"}), added);
    ASSERT_EQ(VlSim_Set("/devices/0/name", "\"Renamed\""), 0u);
    const Json renamed = ask({"sendto", "sync"});
    EXPECT_EQ(link_of(renamed, "Test Phone.lnk"), nullptr);
    ASSERT_NE(link_of(renamed, "Renamed.lnk"), nullptr);
    EXPECT_EQ(link_of(ask({"sendto", "sync", "Renamed", "--remove"}), "Renamed.lnk"), nullptr);
    EXPECT_EQ(run({"sendto", "sync", kStranger}).exit_code, kNo);
    EXPECT_EQ(run({"sendto", "sync", kStranger, "--remove"}).exit_code, kYes);
    EXPECT_EQ(run({"sendto", "sync", "--remove"}).exit_code, kUsage);
}

TEST_F(SendToMenu, IsToldToPeople) {
    EXPECT_EQ(run({"sendto", "sync", kPhoneName}).exit_code, kYes);
    ASSERT_EQ(VlSim_Patch(R"({"devices": []})"), 0u);
    const Outcome told = run({"sendto", "list"});
    EXPECT_EQ(told.exit_code, kYes);
    EXPECT_NE(told.output.find("Test Phone.lnk: 00:11:22:33:44:55  (unknown)"), std::string::npos)
        << told.output;
    EXPECT_NE(told.output.find("Other Bluetooth device.lnk: no device"), std::string::npos) << told.output;
    ASSERT_EQ(VlSim_Patch(R"({"ready": false})"), 0u);
    const Outcome refused = run({"sendto", "sync"});
    EXPECT_EQ(refused.exit_code, kNo);
    EXPECT_NE(refused.output.find("Bluetooth is not ready"), std::string::npos) << refused.output;
}

TEST_F(SendToMenu, LinkToTheNamespaceIsOrderedFromTheExecutionModule) {
    DeleteFileW(namespace_link().c_str());
    EXPECT_EQ(run({"sendto", "sync"}).exit_code, kYes);
    EXPECT_TRUE(logs(L"VlExecuteModule", "command QVN_VLEXECUTEMODULE_CREATESEND2BTLINK"));
    EXPECT_TRUE(logs(L"VlExecuteModule", "ended"));
}
