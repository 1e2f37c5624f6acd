// The simulated print spooler's control: failures, log, misuse, scenario, what other processes and the
// registry see.
#include "spooler_test.h"

#include "support/child_process.h"
#include "support/role.h"

using namespace spooler_test;

namespace {

bool has_key(const std::string& printer) {
    const std::string path = "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\" + printer;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

}  // namespace

TEST_F(Spooler, FailsOnDemand) {
    DWORD needed = 0, count = 0;
    VlSpool_Fail("EnumPrintersA", 2, ERROR_ACCESS_DENIED);
    EXPECT_FALSE(EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, nullptr, 0, &needed, &count));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    needed = count = 77;
    EXPECT_FALSE(EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, nullptr, 0, &needed, &count));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(needed + count, 154u) << "a call that fails on demand has written nothing";
    VlSpool_Fail("EnumPrintersA", 0, ERROR_ACCESS_DENIED);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, nullptr, 0, &needed, &count));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    }
    VlSpool_ClearFaults();
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(Spooler, LogsItsCalls) {
    const HANDLE printer = open("Second");
    SetPrinterA(printer, 0, nullptr, PRINTER_CONTROL_PURGE);
    ClosePrinter(printer);
    EXPECT_EQ(calls(), (Lines{"OpenPrinterA(\"Second\", access 0xf000c) = 1",
                              "SetPrinterA(printer, 0, 3) = 1", "ClosePrinter(printer) = 1"}));
    EXPECT_EQ(VlSpool_CallCount("ClosePrinter"), 1u);
    VlSpool_ClearLog();
    EXPECT_EQ(VlSpool_CallCount(nullptr), 0u);
}

TEST_F(Spooler, ReportsMisuse) {
    const HANDLE printer = open("Second");
    DWORD needed = 0, count = 0;
    EXPECT_TRUE(ClosePrinter(printer));
    EXPECT_FALSE(ClosePrinter(printer));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_FALSE(DeletePrinter(nullptr));
    EXPECT_FALSE(EnumPortsA(nullptr, 1, nullptr, 0, &needed, &count));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_LEVEL));
    VlSpool_Fail("NoSuchFunction", 1, 5);
    EXPECT_EQ(misuse(), (Lines{"ClosePrinter: no open printer", "DeletePrinter: null printer",
                               "EnumPortsA: level 1", "VlSim_Fail: there is no operation NoSuchFunction"}));
    VlSpool_ClearMisuse();
}

TEST_F(Spooler, TakesNoScenarioThatIsNone) {
    for (const char* broken : {"", "[]", "{", R"({"printers": [{}]})", R"({"printers": [{"name": 3}]})",
                               R"({"printers": 5})", R"({"printers": [{"name": "x", "port": 1}]})",
                               R"({"printers": [{"name": "x", "jobs": [{"reads": -1}]}]})",
                               R"({"printers": [{"name": "x", "refuses": {"open": "no"}}]})"}) {
        EXPECT_NE(VlSpool_LoadScenario(broken), 0u) << broken;
    }
    EXPECT_NE(VlSpool_Set("/printers/0", "{"), 0u);
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(Spooler, PrintersHaveRegistryKeysAsLongAsTheyAreThere) {
    EXPECT_TRUE(has_key("Second"));
    const HANDLE printer = open("Second");
    DeletePrinter(printer);
    ClosePrinter(printer);
    EXPECT_FALSE(has_key("Second"));
    VlSpool_Set("/printers/-", R"({"name": "Fifth"})");
    EXPECT_TRUE(has_key("Fifth"));
    VlSpool_LoadScenario("{}");
    EXPECT_FALSE(has_key("Fifth"));
}

TEST_ROLE(printer_deleter) {
    PRINTER_DEFAULTSA defaults{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE opened = nullptr;
    if (!OpenPrinterA(text("Second"), &opened, &defaults)) return 1;
    const BOOL deleted = DeletePrinter(opened);
    ClosePrinter(opened);
    return deleted ? 0 : 2;
}

TEST_F(Spooler, IsTheSameForAllProcesses) {
    EXPECT_EQ(support::run_role("printer_deleter").exit_code, 0u);
    EXPECT_EQ(names().size(), 1u);
    EXPECT_EQ(VlSpool_CallCount("DeletePrinter"), 0u) << "the log is this process's own";
}
