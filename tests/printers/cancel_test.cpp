// Cancelling all jobs on Bluetooth ports, and waiting until they are gone.
#include "printers_test.h"

using namespace printers_test;

namespace {

const Family<BOOL()> kCancel[] = {
    {"VlCm_DoCancelAllPrintJob", VlCm_DoCancelAllPrintJob, false},
    {"VlCm_DoCancelAllPrintJobNew", VlCm_DoCancelAllPrintJobNew, true},
};

const Lines kList = {"EnumPrintersA(2, null, 2, null, 0) = 0", "EnumPrintersA(2, null, 2, out) = 1"};
const Lines kSize = {"GetPrinterA(printer, 2, null, 0) = 0"};
const Lines kRead = {"GetPrinterA(printer, 2, out) = 1"};
const Lines kPurge = {"SetPrinterA(printer, 0, 3) = 1"};
const Lines kClose = {"ClosePrinter(printer) = 1"};
const Lines kPurged = {line("Setprinter err=0\r\n")};
const Lines kLost = {line("Can not retrieve information from the specified printer\r\n")};

Lines opened(const std::string& name) { return {"OpenPrinterA(\"" + name + "\", access 0xf000c) = 1"}; }

class CancelJobs : public PrinterTest {
protected:
    CancelJobs() {
        bluetooth("BT1:");
        bluetooth("BT2:");
    }
    static Lines cancelled(const Lines& inside) { return nested("CancelJobs", inside); }

    support::SleepPatch sleeps;
};

// A job that is still being printed for `reads` looks at its printer.
std::string printing(unsigned reads) {
    return R"(, "jobs": [{"id": 1, "reads": )" + std::to_string(reads) + R"(}, {"id": 2}])";
}

}  // namespace

TEST_F(CancelJobs, PurgesThePrintersOnBluetoothPorts) {
    support::for_each_row(kCancel, [&](const auto& family) {
        printers({printer("Cable", "LPT1:", R"(, "jobs": [{"id": 1}])"),
                  printer("First", "BT1:", R"(, "jobs": [{"id": 1}, {"id": 2}])"),
                  printer("Second", "BT2:")});
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(spooler_calls(), kList + opened("Cable") + kSize + kClose + opened("First") + kSize +
                                       kPurge + kRead + kClose + opened("Second") + kSize + kPurge + kRead +
                                       kClose);
        EXPECT_EQ(support::trace_log(), cancelled(printers_listed(3) + port_tested(false) +
                                                  port_tested(true) + kPurged + port_tested(true) + kPurged));
    });
    EXPECT_EQ(sleeps.count(), 0u);
    char jobs[100] = "";
    VlSpool_Get("/printers/0/jobs", jobs, sizeof jobs);
    EXPECT_STREQ(jobs, R"([{"id":1}])") << "jobs on other ports stay";
}

TEST_F(CancelJobs, LooksEachSecondUntilTheJobsHaveEnded) {
    support::for_each_row(kCancel, [&](const auto& family) {
        printers({printer("First", "BT1:", printing(3)), printer("Second", "BT2:", printing(1))});
        const size_t before = sleeps.count();
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(sleeps.count() - before, 4u);
        EXPECT_EQ(spooler_calls(), kList + opened("First") + kSize + kPurge + kRead + kRead + kPurge + kRead +
                                       kPurge + kRead + kPurge + kClose + opened("Second") + kSize + kPurge +
                                       kRead + kRead + kPurge + kClose);
        EXPECT_EQ(support::trace_log(), cancelled(printers_listed(2) + port_tested(true) + kPurged + kPurged +
                                                  kPurged + kPurged + port_tested(true) + kPurged + kPurged));
    });
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(8, 1000));
}

TEST_F(CancelJobs, WaitsWithoutALimit) {
    constexpr size_t kLooks = 2000;
    printers({printer("First", "BT1:")});
    support::CallPatch read("GetPrinterA", GetPrinterA);
    support::CallPatch control("SetPrinterA", SetPrinterA);
    control.fail_from(1, TRUE);
    read.answer([&](HANDLE, DWORD, BYTE* block, DWORD, DWORD* needed) {
        *needed = sizeof(PRINTER_INFO_2A);
        if (block == nullptr) return FALSE;
        reinterpret_cast<PRINTER_INFO_2A*>(block)->cJobs = sleeps.count() < kLooks;
        return TRUE;
    });
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE);
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(kLooks, 1000));
    EXPECT_EQ(control.count(), kLooks + 1);
}

TEST_F(CancelJobs, TellsAPrinterThatCannotBeReadAgainAndLeavesTheRest) {
    support::for_each_row(kCancel, [&](const auto& family) {
        printers({printer("First", "BT1:", printing(9)), printer("Second", "BT2:", printing(9))});
        VlSpool_Fail("GetPrinterA", 4,
                     ERROR_PRINTER_DELETED);  // sizes, after the purge, first look, this one
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(support::trace_log(),
                  cancelled(printers_listed(2) + port_tested(true) + kPurged + kPurged + kLost));
        EXPECT_EQ(spooler_calls(), kList + opened("First") + kSize + kPurge + kRead + kRead + kPurge +
                                       Lines{"GetPrinterA(printer, 2, out) = 0"} + kClose);
    });
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(4, 1000));
}

TEST_F(CancelJobs, TheLookRightAfterThePurgeIsNotTested) {
    support::for_each_row(kCancel, [&](const auto& family) {
        printers({printer("First", "BT1:", printing(9)), printer("Second", "BT2:")});
        VlSpool_Fail("GetPrinterA", 2, ERROR_ACCESS_DENIED);
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(support::trace_log(),
                  cancelled(printers_listed(2) + port_tested(true) + kPurged + port_tested(true) + kPurged));
    });
    EXPECT_EQ(sleeps.count(), 0u);
}

TEST_F(CancelJobs, AFailedPurgeIsTracedAndTheWaitGoesOn) {
    printers({printer("First", "BT1:", printing(1))});
    VlSpool_Fail("SetPrinterA", 1, ERROR_ACCESS_DENIED);
    VlSpool_Fail("SetPrinterA", 2, ERROR_INVALID_HANDLE);
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE);
    EXPECT_EQ(sleeps.count(), 3u) << "the second job went with the third purge";
    EXPECT_EQ(support::trace_log(),
              cancelled(printers_listed(1) + port_tested(true) + Lines{line("Setprinter err=5\r\n")} +
                        Lines{line("Setprinter err=6\r\n")} + kPurged + kPurged));
}

TEST_F(CancelJobs, PassesOverPrintersThatDoNotOpen) {
    support::for_each_row(kCancel, [&](const auto& family) {
        printers({printer("Denied", "BT1:", R"(, "refuses": {"open": 5}, "jobs": [{"id": 1}])"),
                  printer("Second", "BT2:", R"(, "jobs": [{"id": 1}])")});
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(support::trace_log(), cancelled(printers_listed(2) + port_tested(true) + kPurged));
        EXPECT_EQ(VlSpool_CallCount("GetPrinterA"), 2u);
    });
}

TEST_F(CancelJobs, AFailedSizeLeavesRoomForOneEmptyRecord) {
    printers({printer("First", "BT1:", printing(9))});
    VlSpool_Fail("GetPrinterA", 1, ERROR_ACCESS_DENIED);
    support::CallPatch read("GetPrinterA", GetPrinterA);
    read.answer([&](HANDLE handle, DWORD level, BYTE* block, DWORD size, DWORD* needed) {
        if (block != nullptr) {
            EXPECT_EQ(size, sizeof(PRINTER_INFO_2A));
            const PRINTER_INFO_2A zero{};
            EXPECT_EQ(memcmp(block, &zero, sizeof zero), 0);
        }
        return read.real(handle, level, block, size, needed);
    });
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE) << "too little room: no jobs are seen";
    EXPECT_EQ(read.count(), 2u);
    EXPECT_EQ(sleeps.count(), 0u);
}

TEST_F(CancelJobs, ItsMemoryIsTheProcessHeapsAndZeroed) {
    printers({printer("First", "BT1:")});
    support::CallPatch taken("HeapAlloc", HeapAlloc);
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE);
    ASSERT_EQ(taken.count(), 1u);
    EXPECT_EQ(std::get<0>(taken.calls()[0]), GetProcessHeap());
    EXPECT_EQ(std::get<1>(taken.calls()[0]), static_cast<DWORD>(HEAP_ZERO_MEMORY));
    EXPECT_GT(std::get<2>(taken.calls()[0]), sizeof(PRINTER_INFO_2A));
}

TEST_F(CancelJobs, WithoutMemoryEndsForAllPrinters) {
    support::for_each_row(kCancel, [&](const auto& family) {
        printers({printer("Cable", "LPT1:"), printer("First", "BT1:", R"(, "jobs": [{"id": 1}])")});
        blocks().fail_nth(2);  // the list is the first one
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(support::trace_log(), cancelled(printers_listed(2)));
        EXPECT_EQ(VlSpool_CallCount("OpenPrinterA"), 1u);
        EXPECT_EQ(VlSpool_CallCount("ClosePrinter"), 1u);
        EXPECT_EQ(VlSpool_CallCount("SetPrinterA"), 0u);
        blocks().fail_nth(1);
        EXPECT_EQ(family.function(), FALSE) << "no list";
        EXPECT_EQ(VlSpool_CallCount("OpenPrinterA"), 1u);
        blocks().fail_nth(0);
    });
}

TEST_F(CancelJobs, WithoutPrintersOrAListHasNothingToDo) {
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE);
    EXPECT_EQ(support::trace_log(), cancelled(printers_listed(0)));
    printers({printer("First", "BT1:", printing(9))});
    VlSpool_Fail("EnumPrintersA", 2, RPC_S_SERVER_UNAVAILABLE);
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE);
    EXPECT_EQ(support::trace_log(),
              cancelled(nested("MyEnumPrinter",
                               {line("1 EnumPrinter err: 7a\r\n"), line("2 EnumPrinter err=6ba ret= 0 \r\n"),
                                line("3 EnumPrinter num of Prnt=0 \r\n")})));
}
