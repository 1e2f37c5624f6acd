// vlcm printers, on the simulated spooler.
#include "command_line.h"

#include "VlCommon.h"
#include "VlSpool.h"
#include "text.h"

using namespace suite;

namespace {

std::string printer_file() {
    char folder[MAX_PATH] = "";
    GetWindowsDirectoryA(folder, sizeof folder);
    return std::string(folder) + "\\SysWow64\\VLPRINT.INI";
}

// What is opened once in a process is opened before a test counts handles.
class Warm : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(VlSpool_Reset(), 0u); }
};
const auto* const g_warm = ::testing::AddGlobalTestEnvironment(new Warm);

class PrintersCommand : public CommandLine {
protected:
    PrintersCommand() {
        settings().content(printer_file(), std::nullopt);
        settings().set(printer_file(), "BT1:", "BD_ADDR", kPhoneAddress);
        EXPECT_EQ(VlSpool_LoadScenario(R"({"printers": [
            {"name": "B\u00fcro", "driver": "D", "port": "BT1:", "jobs": [{"id": 1}, {"id": 2}]},
            {"name": "Cable", "driver": "D", "port": "LPT1:", "jobs": [{"id": 1}]}]})"),
                  0u);
    }
    ~PrintersCommand() override {
        VlSpool_LoadScenario("{}");
        VlSpool_Reset();
    }
    // Purges with this answer at the keyboard, which is a pipe of the command interpreter.
    [[nodiscard]] DWORD purge_answering(const std::string& word) const {
        const std::wstring script =
            make_file(L"purge.cmd", "@echo " + word + "| vlcm.exe printers purge\r\n");
        char folder[MAX_PATH] = "";
        GetSystemDirectoryA(folder, sizeof folder);
        support::ChildProcess shell(std::string(folder) + "\\cmd.exe", {{"/c", programs::ansi(script)}});
        const DWORD code = shell.wait();
        EXPECT_NE(shell.output().find("[y/N]"), std::string::npos) << shell.output();
        return code;
    }
    static Json jobs(int printer) {
        char text[200] = "";
        VlSpool_Get(("/printers/" + std::to_string(printer) + "/jobs").c_str(), text, sizeof text);
        return Json::parse(text);
    }

    static constexpr char kPhoneAddress[] = "00:11:22:33:44:55";
    static constexpr uint8_t kPhoneBytes[6] = {0x55, 0x44, 0x33, 0x22, 0x11, 0x00};
};

}  // namespace

TEST_F(PrintersCommand, ListsPrintersWithTheirDevices) {
    const Json facts = ask({"printers", "list"}).at("printers");
    ASSERT_EQ(facts.size(), 2u);
    EXPECT_EQ(facts[0], Json::parse(R"({"name": "B\u00fcro", "driver": "D", "port": "BT1:", "bluetooth": true,
        "device": "Test Phone", "jobs": 2, "busy": true})"));
    EXPECT_EQ(facts[1], Json::parse(R"({"name": "Cable", "driver": "D", "port": "LPT1:", "bluetooth": false,
        "device": null, "jobs": 1, "busy": true})"));
    const Outcome shown = run({"printers", "list"});
    EXPECT_EQ(shown.exit_code, kYes);
    EXPECT_NE(shown.output.find("BT1: (Bluetooth)"), std::string::npos) << shown.output;
}

TEST_F(PrintersCommand, TellsTheRecordOfAPrinter) {
    EXPECT_EQ(run({"printers", "record", kPhoneName}).exit_code, kNo);
    EXPECT_EQ(VlCm_IsPrinterInstalled(kPhoneBytes), TRUE) << "adopts it";
    const Json expected =
        Json::parse(R"({"address": "00:11:22:33:44:55", "printer": "B\u00fcro", "driver": "D",
        "port": "BT1:", "processor": "WinPrint"})");
    EXPECT_EQ(ask({"printers", "record", kPhoneName}), expected);
    EXPECT_EQ(ask({"printers", "record", kPhoneAddress}), expected);
    const Outcome none = run({"printers", "record", "A0:B1:C2:D3:E4:F5"});
    EXPECT_EQ(none.exit_code, kNo);
    EXPECT_NE(none.output.find("no printer is recorded for A0:B1:C2:D3:E4:F5"), std::string::npos)
        << none.output;
}

TEST_F(PrintersCommand, TellsWhetherABluetoothPortIsBusy) {
    EXPECT_EQ(ask({"printers", "busy"}).at("busy"), true);
    VlSpool_Set("/printers/0/jobs", "[]");
    EXPECT_EQ(ask({"printers", "busy"}, kNo).at("busy"), false) << "the other one is on a cable";
}

TEST_F(PrintersCommand, PurgesWhenConfirmed) {
    const Outcome asked = run({"printers", "purge"});
    EXPECT_EQ(asked.exit_code, kNo) << "nobody is at the keyboard";
    EXPECT_NE(asked.output.find("[y/N]"), std::string::npos) << asked.output;
    EXPECT_NE(asked.output.find("nothing was cancelled"), std::string::npos) << asked.output;
    EXPECT_EQ(jobs(0).size(), 2u);
    EXPECT_EQ(purge_answering("no"), kNo);
    EXPECT_EQ(jobs(0).size(), 2u);
    EXPECT_EQ(purge_answering("yes"), kYes);
    EXPECT_EQ(jobs(0).size(), 0u);
    VlSpool_Set("/printers/0/jobs", R"([{"id": 1}])");
    EXPECT_EQ(ask({"printers", "purge", "--yes"}).at("cancelled"), true);
    EXPECT_EQ(jobs(0).size(), 0u);
    EXPECT_EQ(jobs(1).size(), 1u);
}

TEST_F(PrintersCommand, RefusesWrongUsage) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"printers"}, {"printers", "record"}, {"printers", "install"}}) {
        EXPECT_EQ(run(words).exit_code, kUsage) << words.back();
    }
}
