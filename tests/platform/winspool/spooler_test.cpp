// The simulated print spooler: what it answers, and what it tells about its callers.
#include "VlSpool.h"

#include "support/child_process.h"
#include "support/role.h"
#include "support/settings_scope.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <winspool.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

constexpr char kScenario[] = R"({
  "printers": [
    { "name": "Gr\u00fcn", "driver": "D", "port": "BT1:", "jobs": [
        { "id": 7, "document": "a.txt", "user": "me" }, { "id": 8, "reads": 2 } ] },
    { "name": "Second", "driver": "D", "port": "LPT1:", "processor": "P", "comment": "here" } ],
  "ports": [ { "name": "BT1:", "monitor": "M", "description": "B" }, { "name": "LPT1:" } ],
  "drivers": [ { "name": "D" }, { "name": "E" } ] })";

char* text(const char* constant) { return const_cast<char*>(constant); }

// A list, asked for in the usual two steps; the entries point into the block.
struct Block {
    std::vector<BYTE> bytes;
    DWORD count = 0;

    template <typename Info>
    [[nodiscard]] const Info* as() const {
        return reinterpret_cast<const Info*>(bytes.data());
    }
};

template <typename Ask>
Block list(Ask ask) {
    Block block;
    DWORD needed = 0;
    SetLastError(0);
    const BOOL sized = ask(nullptr, 0, &needed, &block.count);
    EXPECT_EQ(sized, needed == 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(sized ? ERROR_SUCCESS : ERROR_INSUFFICIENT_BUFFER));
    block.bytes.resize(needed + 1);
    if (needed != 0) {
        EXPECT_FALSE(ask(block.bytes.data(), needed - 1, &needed, &block.count)) << "one byte short";
    }
    EXPECT_TRUE(ask(block.bytes.data(), needed, &needed, &block.count));
    return block;
}

Block printers() {
    return list([](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
        return EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, block, size, needed, count);
    });
}

class Spooler : public ::testing::Test {
protected:
    Spooler() {
        EXPECT_EQ(VlSpool_Reset(), 0u);
        EXPECT_EQ(VlSpool_LoadScenario(kScenario), 0u);
        VlSpool_ClearLog();
    }
    ~Spooler() override {
        EXPECT_EQ(VlSpool_OpenHandles(), 0u);
        EXPECT_EQ(misuse(), Lines{});
        VlSpool_LoadScenario("{}");  // and with it the registry keys of its printers
        VlSpool_Reset();
    }
    static HANDLE open(const char* name, ACCESS_MASK access = PRINTER_ALL_ACCESS) {
        PRINTER_DEFAULTSA defaults{nullptr, nullptr, access};
        HANDLE opened = nullptr;
        EXPECT_TRUE(OpenPrinterA(text(name), &opened, &defaults)) << name;
        return opened;
    }
    static Block jobs(HANDLE printer) {
        return list([printer](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumJobsA(printer, 0, 0xFFFFFFFF, 1, block, size, needed, count);
        });
    }
    // The number of jobs as a reading of the printer tells it.
    static DWORD job_count(HANDLE printer) {
        alignas(PRINTER_INFO_2A) BYTE block[1000];
        DWORD needed = 0;
        EXPECT_TRUE(GetPrinterA(printer, 2, block, sizeof block, &needed));
        return reinterpret_cast<PRINTER_INFO_2A*>(block)->cJobs;
    }
    static Lines names() {
        const Block list = printers();
        Lines names;
        for (DWORD i = 0; i < list.count; ++i) names.emplace_back(list.as<PRINTER_INFO_2A>()[i].pPrinterName);
        return names;
    }
    static Lines misuse() {
        Lines reports;
        for (uint32_t i = 0; i < VlSpool_MisuseCount(); ++i) {
            char report[200];
            VlSpool_GetMisuse(i, report, sizeof report);
            reports.emplace_back(report);
        }
        return reports;
    }
    static Lines calls() {
        Lines made;
        for (uint32_t i = 0; i < VlSpool_CallCount(nullptr); ++i) {
            char call[200];
            VlSpool_GetCall(i, call, sizeof call);
            made.emplace_back(call);
        }
        return made;
    }
};

bool has_key(const std::string& printer) {
    const std::string path = "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\" + printer;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

}  // namespace

TEST_F(Spooler, ListsPrintersWithTheirTextsInTheAnsiCodePage) {
    const Block list = printers();
    ASSERT_EQ(list.count, 2u);
    const auto* const first = list.as<PRINTER_INFO_2A>();
    EXPECT_EQ(std::string(first->pPrinterName).substr(0, 2), "Gr");
    EXPECT_EQ(strlen(first->pPrinterName), GetACP() == CP_UTF8 ? 5u : 4u);
    EXPECT_STREQ(first->pDriverName, "D");
    EXPECT_STREQ(first->pPortName, "BT1:");
    EXPECT_STREQ(first->pPrintProcessor, "WinPrint") << "what the scenario leaves out";
    EXPECT_EQ(first->cJobs, 2u);
    EXPECT_STREQ(first[1].pPrintProcessor, "P");
    EXPECT_STREQ(first[1].pComment, "here");
    EXPECT_EQ(first[1].cJobs, 0u);
}

TEST_F(Spooler, ListsPortsAndDrivers) {
    const Block ports = list([](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
        return EnumPortsA(nullptr, 2, block, size, needed, count);
    });
    ASSERT_EQ(ports.count, 2u);
    EXPECT_STREQ(ports.as<PORT_INFO_2A>()->pPortName, "BT1:");
    EXPECT_STREQ(ports.as<PORT_INFO_2A>()->pMonitorName, "M");
    EXPECT_STREQ(ports.as<PORT_INFO_2A>()->pDescription, "B");
    const Block drivers = list([](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
        return EnumPrinterDriversA(nullptr, nullptr, 1, block, size, needed, count);
    });
    ASSERT_EQ(drivers.count, 2u);
    EXPECT_STREQ(drivers.as<DRIVER_INFO_1A>()[1].pName, "E");
}

TEST_F(Spooler, AnEmptyListNeedsNoRoom) {
    VlSpool_LoadScenario("{}");
    EXPECT_EQ(printers().count, 0u);
    EXPECT_EQ(printers().bytes.size(), 1u);
}

TEST_F(Spooler, JobsEndAfterTheirReadings) {
    const HANDLE printer = open("Second");
    VlSpool_Set("/printers/1/jobs", R"([{"id": 1}, {"id": 2, "reads": 1}, {"id": 3, "reads": 3}])");
    EXPECT_EQ(jobs(printer).count, 3u) << "a list of jobs is no reading of the printer";
    EXPECT_EQ(job_count(printer), 3u);
    EXPECT_EQ(job_count(printer), 2u);
    EXPECT_EQ(job_count(printer), 2u);
    EXPECT_EQ(job_count(printer), 1u);
    EXPECT_EQ(job_count(printer), 1u);
    ClosePrinter(printer);
}

TEST_F(Spooler, ListsJobs) {
    const HANDLE printer = open(printers().as<PRINTER_INFO_2A>()->pPrinterName);
    const Block list = jobs(printer);
    ASSERT_EQ(list.count, 2u);
    EXPECT_EQ(list.as<JOB_INFO_1A>()->JobId, 7u);
    EXPECT_STREQ(list.as<JOB_INFO_1A>()->pDocument, "a.txt");
    EXPECT_STREQ(list.as<JOB_INFO_1A>()->pUserName, "me");
    ClosePrinter(printer);
}

TEST_F(Spooler, PurgingTakesAllJobsButThoseBeingPrinted) {
    const HANDLE printer = open("Second");
    VlSpool_Set("/printers/1/jobs", R"([{"id": 1}, {"id": 2, "reads": 1}])");
    EXPECT_TRUE(SetPrinterA(printer, 0, nullptr, PRINTER_CONTROL_PURGE));
    EXPECT_EQ(job_count(printer), 1u);
    EXPECT_EQ(job_count(printer), 0u);
    ClosePrinter(printer);
}

TEST_F(Spooler, AddsAPrinterOfAKnownDriverOnAKnownPort) {
    const struct {
        const char *label, *name, *driver, *port;
        DWORD error;
    } rows[] = {
        {"new", "Third", "E", "LPT1:", ERROR_SUCCESS},
        {"its name is taken", "second", "E", "LPT1:", ERROR_PRINTER_ALREADY_EXISTS},
        {"no driver", "Fourth", "F", "LPT1:", ERROR_UNKNOWN_PRINTER_DRIVER},
        {"no port", "Fourth", "E", "LPT9:", ERROR_UNKNOWN_PORT},
    };
    for (const auto& row : rows) {
        PRINTER_INFO_2A info{};
        info.pPrinterName = text(row.name);
        info.pDriverName = text(row.driver);
        info.pPortName = text(row.port);
        info.pPrintProcessor = text("Proc");
        const HANDLE added = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
        EXPECT_EQ(added != nullptr, row.error == ERROR_SUCCESS) << row.label;
        if (added == nullptr) {
            EXPECT_EQ(GetLastError(), row.error) << row.label;
        } else {
            ClosePrinter(added);
        }
    }
    EXPECT_EQ(names().back(), "Third");
    EXPECT_STREQ(printers().as<PRINTER_INFO_2A>()[2].pPrintProcessor, "Proc");
}

TEST_F(Spooler, DeletesAPrinterUnderItsHandle) {
    const HANDLE printer = open("Second");
    EXPECT_TRUE(DeletePrinter(printer));
    EXPECT_EQ(names().size(), 1u);
    DWORD needed = 0, count = 0;
    EXPECT_FALSE(EnumJobsA(printer, 0, 1, 1, nullptr, 0, &needed, &count));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PRINTER_DELETED));
    EXPECT_FALSE(GetPrinterA(printer, 2, nullptr, 0, &needed));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PRINTER_DELETED));
    ClosePrinter(printer);
}

TEST_F(Spooler, NeedsTheRightToAdministerForDeletingAndPurging) {
    const HANDLE printer = open("Second", PRINTER_ACCESS_USE);
    EXPECT_FALSE(DeletePrinter(printer));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(SetPrinterA(printer, 0, nullptr, PRINTER_CONTROL_PURGE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    ClosePrinter(printer);
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(Spooler, RefusesWhatTheScenarioSays) {
    HANDLE none = nullptr;
    EXPECT_FALSE(OpenPrinterA(text("No such printer"), &none, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PRINTER_NAME));
    const HANDLE printer = open("second");
    VlSpool_Set("/printers/1/refuses", R"({"open": 5, "read": 31, "purge": 32, "delete": 33})");
    EXPECT_FALSE(OpenPrinterA(text("Second"), &none, nullptr));
    EXPECT_EQ(GetLastError(), 5u);
    DWORD needed = 0;
    EXPECT_FALSE(GetPrinterA(printer, 2, nullptr, 0, &needed));
    EXPECT_EQ(GetLastError(), 31u);
    EXPECT_FALSE(SetPrinterA(printer, 0, nullptr, PRINTER_CONTROL_PURGE));
    EXPECT_EQ(GetLastError(), 32u);
    EXPECT_FALSE(DeletePrinter(printer));
    EXPECT_EQ(GetLastError(), 33u);
    ClosePrinter(printer);
}

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
