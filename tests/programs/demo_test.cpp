// vldemo.exe, the program behind the demo, as a user runs it.
#include "suite_programs.h"

#include "TrayRelay.h"
#include "event_log.h"
#include "file_hash.h"
#include "frame/unique.h"
#include "hidden_window.h"
#include "text.h"

#include <filesystem>
#include <fstream>

using namespace programs;
using namespace suite;

namespace {

struct Outcome {
    DWORD exit_code;
    std::string output;
};

class Demo : public SuitePrograms {
protected:
    [[nodiscard]] static Outcome run(const std::vector<std::string>& arguments) {
        support::ChildProcess demo("vldemo.exe", {arguments});
        const DWORD code = demo.wait();
        return {code, demo.output()};
    }
    [[nodiscard]] std::string file(const std::wstring& name, const std::string& content = "text") const {
        return utf8(make_file(name, content));
    }
};

// Whether the texts occur one after the other.
::testing::AssertionResult in_order(const std::string& text, const std::vector<std::string>& parts) {
    size_t from = 0;
    for (const std::string& part : parts) {
        from = text.find(part, from);
        if (from == std::string::npos) {
            return ::testing::AssertionFailure() << "no \"" << part << "\" in its place in:\n" << text;
        }
        from += part.size();
    }
    return ::testing::AssertionSuccess();
}

}  // namespace

TEST_F(Demo, ShowsDevicesAndTheirServices) {
    const Outcome shown = run({"neighbourhood"});
    EXPECT_EQ(shown.exit_code, 0u);
    EXPECT_TRUE(in_order(shown.output, {"00:11:22:33:44:55  class 0x5A020C  Test Phone", "0x1105  Push",
                                        "0x1106  Files", "1 devices"}));
}

TEST_F(Demo, TellsEveryStepOfASendInItsOrder) {
    const std::string content = "four words of text";
    const std::string source = file(L"a b.txt", content);
    const std::string digits = sha256_of_bytes(content.data(), content.size());
    const Outcome sent = run({"send", "00:11:22:33:44:55", "--via", "ftp", source});
    EXPECT_EQ(sent.exit_code, 0u);
    EXPECT_TRUE(
        in_order(sent.output, {"list prepared: 1 record, class 0x1106 (file transfer), " + source,
                               "section SHARE_MEM_SENDFILE made: 1644 bytes, 1 record, state 0x10000001",
                               "relay asked: message 0x43050205, device " + hex(phone()), "taken: state 2",
                               "returned 0", "arrived: " + utf8(inbox()) + "\\a b.txt",
                               "sha256 sent     " + digits, "sha256 received " + digits, "same"}));
    EXPECT_EQ(content_of(inbox() + L"\\a b.txt"), content);
}

TEST_F(Demo, StartsTheAgentThatASendNeeds) {
    EXPECT_EQ(run({"send", kPhoneName, file(L"a.txt")}).exit_code, 0u);
    EXPECT_NE(process_of_window(kTrayTitle), 0u);
    EXPECT_EQ(run({"stop"}).exit_code, 0u);
    EXPECT_EQ(process_of_window(kTrayTitle), 0u);
}

TEST_F(Demo, FailsWhenAFileIsMissing) {
    const AgentProcess agent;
    const std::string gone = utf8(work_folder()) + "\\gone.txt";
    const Outcome sent = run({"send", kPhoneName, "--timeout", "1", gone});
    EXPECT_EQ(sent.exit_code, 1u);
    EXPECT_TRUE(in_order(sent.output, {"did not arrive", "FAILED"}));
}

TEST_F(Demo, FailsForAnUnknownDevice) { EXPECT_EQ(run({"send", "nobody", file(L"a.txt")}).exit_code, 2u); }

TEST_F(Demo, FailsForAnUnknownWay) {
    EXPECT_NE(run({"send", kPhoneName, "--via", "pigeon", file(L"a.txt")}).exit_code, 0u);
}

namespace {

// A tray agent that delivers what nobody sent.
DWORD WINAPI be_a_wrong_agent(void* context) {
    const std::wstring& inbox = *static_cast<const std::wstring*>(context);
    const EventLog log;
    const HiddenWindow window(log, kTrayTitle, [&inbox](const Message& message) {
        if (message.number != VLSIM_RELAY_MESSAGE) return;
        Btsdk_FreeMemory(VlCm_GetFilePathInfo());
        std::ofstream(std::filesystem::path(inbox + L"\\a.txt"), std::ios::binary) << "another text";
    });
    return static_cast<DWORD>(window.run());
}

}  // namespace

TEST_F(Demo, FailsWhenSomethingElseArrives) {
    std::wstring folder = inbox();
    const vl::UniqueHandle agent(CreateThread(nullptr, 0, be_a_wrong_agent, &folder, 0, nullptr));
    EXPECT_TRUE(logs(L"programs_test", std::string("window \"") + kTrayTitle + "\""));
    const Outcome sent = run({"send", kPhoneName, file(L"a.txt", "a text")});
    PostMessageA(FindWindowA(nullptr, kTrayTitle), WM_CLOSE, 0, 0);
    WaitForSingleObject(agent.get(), kDeadline_ms);
    EXPECT_EQ(sent.exit_code, 1u);
    EXPECT_TRUE(in_order(sent.output, {"taken: state 2", "sha256 sent", "sha256 received", "FAILED"}));
}

TEST_F(Demo, EntersItsFolderAsTheInstallationFolder) {
    settings().common("General", "InstallDir", "C:\\elsewhere");
    EXPECT_EQ(run({"install"}).exit_code, 0u);
    char folder[VLCM_PATH_SIZE] = "";
    VlCm_GetInstallDir(folder, sizeof folder);
    EXPECT_EQ(folder, ansi(program_folder()));
}
