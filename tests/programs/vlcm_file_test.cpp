// A remote file's texts on the command line and its property sheet in the tray agent.
#include "command_line.h"

#include "VlSim.h"
#include "file_hash.h"
#include "remote_file.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

constexpr uint64_t kSize = 123456789012;
constexpr char kTime[] = "2011-03-14T15:09:26";

RemoteFile sample_file() {
    RemoteFile file = remote_file("photo.vltest", FILE_ATTRIBUTE_NORMAL, kSize);
    const SYSTEMTIME time{2011, 3, 0, 14, 15, 9, 26, 0};
    EXPECT_TRUE(SystemTimeToFileTime(&time, &file.time));
    return file;
}

class RemoteFileCommand : public CommandLine {
protected:
    RemoteFileCommand() {
        registry_.set(HKEY_CLASSES_ROOT, ".vltest", nullptr, std::string("VlTest.File"));
        registry_.set(HKEY_CLASSES_ROOT, "VlTest.File", nullptr, std::string("Test file"));
        registry_.set(HKEY_CLASSES_ROOT, "VlTest.File\\DefaultIcon", nullptr, std::string("a,b.dll,-7"));
    }
    // What the library says here; its two size texts keep the language library.
    RemoteFileTexts texts(const RemoteFile& file) {
        allow_leak("size text", 2);
        return texts_of(file);
    }
    static std::vector<std::string> words(const char* command) {
        return {"file", command, file_.name, "--size", std::to_string(kSize), "--time", kTime};
    }

    static inline const RemoteFile file_ = sample_file();

private:
    support::RegistryScope registry_;
};

TEST_F(RemoteFileCommand, DescribesAFileAsTheLibraryDoes) {
    const RemoteFileTexts expected = texts(file_);
    const Json facts = ask(words("describe"));
    EXPECT_EQ(facts.at("name"), file_.name);
    EXPECT_EQ(facts.at("folder"), false);
    EXPECT_EQ(facts.at("type"), expected.type);
    EXPECT_EQ(facts.at("size"), expected.size);
    EXPECT_EQ(facts.at("exactSize"), expected.exact_size);
    EXPECT_EQ(facts.at("time"), expected.time);
    const Json icon = {{"result", "0x00000000"}, {"file", "a,b.dll"}, {"index", -7}};
    EXPECT_EQ(facts.at("icon"), icon);
    EXPECT_EQ(expected.size, "114.98 GB");
    EXPECT_NE(run(words("describe")).output.find("a,b.dll,-7"), std::string::npos);
}

TEST_F(RemoteFileCommand, DescribesAFolderWithoutTimeAndSize) {
    const RemoteFileTexts expected = texts(remote_file("Photos", FILE_ATTRIBUTE_DIRECTORY, 0));
    const Json facts = ask({"file", "describe", "Photos", "--folder"});
    EXPECT_EQ(facts.at("folder"), true);
    EXPECT_EQ(facts.at("type").is_null() ? "" : facts.at("type").get<std::string>(), expected.type);
    EXPECT_EQ(facts.at("size"), expected.size);
    EXPECT_EQ(facts.at("time"), nullptr);
}

TEST_F(RemoteFileCommand, RefusesWhatIsNoFile) {
    const struct {
        const char* label;
        std::vector<std::string> arguments;
    } rows[] = {
        {"no command", {"file"}},
        {"no name", {"file", "describe"}},
        {"no size", {"file", "describe", "a.txt", "--size", "large"}},
        {"no time", {"file", "describe", "a.txt", "--time", "yesterday"}},
        {"no such day", {"file", "describe", "a.txt", "--time", "2011-02-30T15:09:26"}},
        {"words behind the time", {"file", "show", "a.txt", "--time", "2011-02-20T15:09:26Z"}},
    };
    support::for_each_row(rows, [&](const auto& row) { EXPECT_EQ(run(row.arguments).exit_code, kUsage); });
}

// Three processes: the command line, the agent, and the test that reads the agent's log.
TEST_F(RemoteFileCommand, HasTheAgentShowAPropertySheet) {
    const AgentProcess agent;
    const RemoteFileTexts expected = texts(file_);
    const Json facts = ask(words("show"));
    EXPECT_EQ(facts.at("status"), 0);
    EXPECT_EQ(facts.at("meaning"), "handed over");
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x43060205 parameter 0x00000000"));
    EXPECT_TRUE(logs(L"VlTray", std::string("property sheet of \"") + file_.name + "\": " + expected.type +
                                    ", " + expected.exact_size + ", " + expected.time + ", icon a,b.dll,-7"));
}

TEST_F(RemoteFileCommand, SaysThatTheStackIsNotReady) {
    const AgentProcess agent;
    ASSERT_EQ(VlSim_Patch(R"({"ready": false})"), 0u);
    EXPECT_EQ(ask(words("show"), kNo).at("meaning"), "Bluetooth is not ready");
}

TEST_F(RemoteFileCommand, LeavesTheAgentAliveWhenNothingIsPending) {
    const AgentProcess agent;
    VlCm_PostMsg2Vltray(0x0205, 0x4306, 5);
    EXPECT_TRUE(logs(L"VlTray", "file property: nothing to take"));
    EXPECT_TRUE(agent.running());
}

// The record of another browser: the agent shows what it can of it.
TEST_F(RemoteFileCommand, LeavesTheAgentAliveWhateverTheRecordHolds) {
    const AgentProcess agent;
    for (const uint8_t filling : {uint8_t{0}, uint8_t{0xFF}, uint8_t{'x'}}) {
        VlRemoteFileRecord record;
        memset(&record, filling, sizeof record);
        EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 0), 0u);
        EXPECT_TRUE(logs(
            L"VlTray", "file property: took the record, sha256 " + sha256_of_bytes(&record, sizeof record)));
    }
    EXPECT_TRUE(agent.running());
}

}  // namespace
