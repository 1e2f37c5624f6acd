// Whether a printer, or any printer on a Bluetooth port, has jobs.
#include "printers_test.h"

using namespace printers_test;

namespace {

constexpr char kJob[] = R"(, "jobs": [{"id": 1, "document": "letter.txt"}])";

const Family<BOOL()> kBusy[] = {
    {"VlCm_IsBtPortBusy", VlCm_IsBtPortBusy, false},
    {"VlCm_IsBtPortBusyNew", VlCm_IsBtPortBusyNew, true},
};

const std::string kSizes = "EnumPrintersA(2, null, 2, null, 0) = 0";
const std::string kPrinters = "EnumPrintersA(2, null, 2, out) = 1";
const std::string kJobSizes = "EnumJobsA(printer, 0, 4294967295, 1, null, 0) = ";
const std::string kJobs = "EnumJobsA(printer, 0, 4294967295, 1, out) = 1";
const std::string kClose = "ClosePrinter(printer) = 1";

Lines opened(const std::string& name) { return {"OpenPrinterA(\"" + name + "\", access 0xf000c) = 1"}; }

class BusyPrinter : public PrinterTest {
protected:
    static HANDLE open(const char* name) {
        PRINTER_DEFAULTSA all{nullptr, nullptr, PRINTER_ALL_ACCESS};
        HANDLE opened = nullptr;
        EXPECT_TRUE(OpenPrinterA(const_cast<char*>(name), &opened, &all));
        forget_logs();
        return opened;
    }
};

class BusyPort : public PrinterTest {
protected:
    BusyPort() {
        bluetooth("BT1:");
        bluetooth("BT2:");
    }
};

}  // namespace

TEST_F(BusyPrinter, HasAtLeastOneJob) {
    const struct {
        const char *label, *jobs;
        unsigned count;
    } rows[] = {
        {"none", "", 0},
        {"one", R"(, "jobs": [{"id": 1}])", 1},
        {"three", R"(, "jobs": [{"id": 1}, {"id": 2}, {"id": 3}])", 3},
    };
    support::for_each_row(rows, [](const auto& row) {
        printers({printer("Office", "LPT1:", row.jobs)});
        const HANDLE opened = open("Office");
        EXPECT_EQ(VlCm_IsPrinterBusy(opened), row.count != 0);
        EXPECT_EQ(support::trace_log(), busy_tested(row.count));
        EXPECT_EQ(spooler_calls(), (Lines{kJobSizes + (row.count ? "0" : "1"), kJobs}));
        ClosePrinter(opened);
    });
}

TEST_F(BusyPrinter, ThatIsNoneIsIdleAndTheSpoolerIsAsked) {
    EXPECT_EQ(VlCm_IsPrinterBusy(nullptr), FALSE);
    EXPECT_EQ(spooler_calls(), (Lines{kJobSizes + "0", "EnumJobsA(printer, 0, 4294967295, 1, out) = 0"}));
    EXPECT_EQ(support::trace_log(),
              nested("hlp_IsPrinterBusy",
                     nested("MyEnumJobs", {line("1 EnumJobs err: 6\r\n"), line("2 EnumJobs err=6 ret=0 \r\n"),
                                           line("3 EnumJobs num of job=0 \r\n")})));
    VlSpool_ClearMisuse();
}

TEST_F(BusyPrinter, WhoseJobsCannotBeReadIsIdle) {
    printers({printer("Office", "LPT1:", kJob)});
    const HANDLE opened = open("Office");
    VlSpool_Fail("EnumJobsA", 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(VlCm_IsPrinterBusy(opened), FALSE);
    EXPECT_EQ(support::trace_lines(), (Lines{"1 EnumJobs err: 7a\r\n", "2 EnumJobs err=5 ret=0 \r\n",
                                             "3 EnumJobs num of job=0 \r\n"}));
    forget_logs();
    VlSpool_Fail("EnumJobsA", 1, ERROR_ACCESS_DENIED);  // one byte is too little then
    EXPECT_EQ(VlCm_IsPrinterBusy(opened), FALSE);
    EXPECT_EQ(support::trace_lines(), (Lines{"1 EnumJobs err: 5\r\n", "2 EnumJobs err=7a ret=0 \r\n",
                                             "3 EnumJobs num of job=0 \r\n"}));
    ClosePrinter(opened);
}

TEST_F(BusyPrinter, WithoutMemoryIsIdleAndTheSpoolerIsAskedAllTheSame) {
    printers({printer("Office", "LPT1:", kJob)});
    const HANDLE opened = open("Office");
    support::CallPatch jobs("EnumJobsA", EnumJobsA);
    blocks().fail_nth(1);
    EXPECT_EQ(VlCm_IsPrinterBusy(opened), FALSE);
    ASSERT_EQ(jobs.count(), 2u);
    EXPECT_NE(std::get<4>(jobs.calls()[1]), nullptr);
    EXPECT_EQ(std::get<5>(jobs.calls()[1]), 1u);
    EXPECT_EQ(support::trace_lines(), (Lines{"1 EnumJobs err: 7a\r\n", "2 EnumJobs err=7a ret=0 \r\n",
                                             "3 EnumJobs num of job=0 \r\n"}));
    ClosePrinter(opened);
}

TEST_F(BusyPort, IsOneWithAPrinterThatHasAJob) {
    support::for_each_row(kBusy, [](const auto& family) {
        printers({printer("First", "BT1:"), printer("Second", "BT2:", kJob)});
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(support::trace_log(), printers_listed(2) + port_tested(true) + busy_tested(0) +
                                            port_tested(true) + busy_tested(1));
        EXPECT_EQ(spooler_calls(),
                  (Lines{kSizes, kPrinters} + opened("First") + Lines{kJobSizes + "1", kJobs, kClose} +
                   opened("Second") + Lines{kJobSizes + "0", kJobs, kClose}));
    });
}

TEST_F(BusyPort, EndsTheWalk) {
    support::for_each_row(kBusy, [](const auto& family) {
        printers({printer("First", "BT1:", kJob), printer("Second", "BT2:", kJob)});
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(support::trace_log(), printers_listed(2) + port_tested(true) + busy_tested(1));
        EXPECT_EQ(VlSpool_CallCount("OpenPrinterA"), 1u);
        EXPECT_EQ(VlSpool_CallCount("ClosePrinter"), 1u);
    });
}

TEST_F(BusyPort, IsNoneOfOtherPrinters) {
    support::for_each_row(kBusy, [](const auto& family) {
        printers({printer("Cable", "LPT1:", kJob), printer("Idle", "BT2:")});
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(support::trace_log(),
                  printers_listed(2) + port_tested(false) + port_tested(true) + busy_tested(0));
        EXPECT_EQ(VlSpool_CallCount("OpenPrinterA"), 1u) << "the other one is not opened";
    });
}

TEST_F(BusyPort, IsNoneWithoutPrinters) {
    support::for_each_row(kBusy, [](const auto& family) {
        printers({});
        EXPECT_EQ(family.function(), FALSE);
        EXPECT_EQ(support::trace_log(), printers_listed(0));
    });
}

TEST_F(BusyPort, IsSoughtBehindAPrinterThatDoesNotOpen) {
    support::for_each_row(kBusy, [](const auto& family) {
        printers({printer("Denied 100%", "BT1:", std::string(R"(, "refuses": {"open": 5})") + kJob),
                  printer("Second", "BT2:", kJob)});
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(support::trace_log(), printers_listed(2) + port_tested(true) +
                                            Lines{line("Can not open printer : Denied 100%\r\n")} +
                                            port_tested(true) + busy_tested(1));
        EXPECT_TRUE(support::has_line(support::trace_formats(), "Can not open printer : %s\r\n"));
    });
}

TEST_F(BusyPort, IsNoneWhenTheSpoolerOrTheMemoryFails) {
    const struct {
        const char *label, *function;
        uint32_t nth;
    } rows[] = {
        {"sizes", "EnumPrintersA", 1}, {"printers", "EnumPrintersA", 2}, {"open", "OpenPrinterA", 1},
        {"job sizes", "EnumJobsA", 1}, {"jobs", "EnumJobsA", 2},
    };
    printers({printer("First", "BT1:", kJob)});
    support::for_each_row(kBusy, [&](const auto& family) {
        support::for_each_row(rows, [&](const auto& row) {
            VlSpool_Fail(row.function, row.nth, ERROR_ACCESS_DENIED);
            EXPECT_EQ(family.function(), FALSE);
            VlSpool_ClearFaults();
            EXPECT_EQ(VlSpool_OpenHandles(), 0u);
        });
        for (const size_t nth : {1u, 2u}) {
            blocks().fail_nth(nth);
            EXPECT_EQ(family.function(), FALSE) << nth;
            EXPECT_EQ(VlSpool_OpenHandles(), 0u);
        }
        blocks().fail_nth(0);
        EXPECT_EQ(family.function(), TRUE);
    });
}

TEST_F(BusyPort, AHandleThatARefusedOpeningLeftBehindIsNotUsed) {
    printers({printer("First", "BT1:", kJob)});
    support::CallPatch open("OpenPrinterA", OpenPrinterA);
    open.answer([](char*, HANDLE* handle, PRINTER_DEFAULTSA*) {
        *handle = reinterpret_cast<HANDLE>(uintptr_t{0x1234});
        return FALSE;
    });
    EXPECT_EQ(VlCm_IsBtPortBusy(), FALSE);
    EXPECT_EQ(VlSpool_CallCount("EnumJobsA"), 0u);
    EXPECT_EQ(VlSpool_CallCount("ClosePrinter"), 0u);
}
