// The simulated print spooler: what it answers.
#include "spooler_test.h"

using namespace spooler_test;

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
