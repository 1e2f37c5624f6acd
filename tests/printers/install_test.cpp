#include "install_test.h"

using namespace printers_test;

namespace printers_test {

InstallPrinter::InstallPrinter() {
    settings().common("General", "InstallDir", "C:\\suite\\");
    started.answer([this](HWND, const char*, const char*, const char*, const char*, int) {
        return reinterpret_cast<HINSTANCE>(start_result_);
    });
    waited.answer([this](HANDLE, DWORD) {
        if (const auto action = action_) action();  // a copy: it may set another one
        return DWORD{WAIT_OBJECT_0};
    });
    forget_logs();
}

void InstallPrinter::expect_next_one_works() {
    VlSpool_ClearFaults();
    blocks().fail_nth(0);
    start_gives(33);
    during_wait([] { add(printer("The next one", "BT2:")); });
    const HANDLE installed = VlCm_InstallANewPrinter(kOther);
    EXPECT_NE(installed, nullptr);
    if (installed != nullptr) ClosePrinter(installed);
    EXPECT_EQ(VlSpool_OpenHandles(), 0u);
}

std::string InstallPrinter::recorded_name() {
    VlPrinterRecord read{};
    return VlCm_GetMyPrinterInfo(kAddress, &read) ? read.printerName : "";
}

}  // namespace printers_test

namespace {

const Lines kList1 = printers_listed(1);

// The handle's printer, as the spooler knows it.
std::string name_of(HANDLE opened) {
    alignas(PRINTER_INFO_2A) BYTE block[1000];
    DWORD needed = 0;
    if (!GetPrinterA(opened, 2, block, sizeof block, &needed)) return "";
    return reinterpret_cast<PRINTER_INFO_2A*>(block)->pPrinterName;
}

}  // namespace

TEST_F(InstallPrinter, GivesAndRecordsTheNewPrinter) {
    printers({printer("Office", "LPT1:")});
    during_wait([] { add(printer("New one", "BT1:", R"(, "processor": "Proc")")); });
    const HANDLE installed = VlCm_InstallANewPrinter(kAddress);
    ASSERT_NE(installed, nullptr);
    EXPECT_EQ(support::trace_log(), traced(kList1 + kFolder + printers_listed(2) + kWritten));
    EXPECT_EQ(spooler_calls().back(), "OpenPrinterA(\"New one\", access 0xf000c) = 1");
    EXPECT_EQ(VlSpool_OpenHandles(), 1u);
    EXPECT_EQ(name_of(installed), "New one");
    EXPECT_TRUE(ClosePrinter(installed));

    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
    const VlPrinterRecord expected = record("New one", "Text", "BT1:", "Proc");
    EXPECT_EQ(memcmp(&read, &expected, sizeof read), 0);
    EXPECT_EQ(stored(kLengths, kKey), "24");
}

TEST_F(InstallPrinter, StartsTheExecutionModuleAndWaitsForItsEvent) {
    started.answer([&](HWND owner, const char* verb, const char* file, const char* parameters,
                       const char* folder, int show) {
        EXPECT_EQ(owner, GetDesktopWindow());
        EXPECT_STREQ(verb, "open");
        EXPECT_STREQ(file, "C:\\suite\\VlExecuteModule.exe");
        EXPECT_STREQ(parameters, "QVN_VLEXECUTEMODULE_INSTALLPRINTER");
        EXPECT_EQ(folder, nullptr);
        EXPECT_EQ(show, SW_SHOWNORMAL);
        EXPECT_EQ(created.count(), 1u) << "the event is there before the program can signal it";
        EXPECT_EQ(waited.count(), 0u);
        return reinterpret_cast<HINSTANCE>(INT_PTR{42});
    });
    waited.answer([&](HANDLE event, DWORD milliseconds) {
        EXPECT_EQ(milliseconds, INFINITE);
        const HANDLE named = OpenEventA(EVENT_MODIFY_STATE, FALSE, "InstPrnt");
        EXPECT_EQ(WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_TIMEOUT))
            << "not signalled at first";
        EXPECT_TRUE(SetEvent(named));
        CloseHandle(named);
        EXPECT_EQ(WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_OBJECT_0));
        EXPECT_EQ(WaitForSingleObject(event, 0), static_cast<DWORD>(WAIT_TIMEOUT)) << "resets itself";
        return DWORD{WAIT_OBJECT_0};
    });
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(started.count(), 1u);
    EXPECT_EQ(waited.count(), 1u);
    EXPECT_EQ(OpenEventA(EVENT_MODIFY_STATE, FALSE, "InstPrnt"), nullptr) << "closed at the end";
}

TEST_F(InstallPrinter, TheInstallationFolderIsLimitedTo259Bytes) {
    const std::string folder = "C:\\" + std::string(300, 'f');
    settings().common("General", "InstallDir", folder);
    forget_logs();
    std::string file;
    started.answer([&](HWND, const char*, const char* path, const char*, const char*, int) {
        file = path;
        return HINSTANCE{nullptr};
    });
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(file, folder.substr(0, 258) + "\\");
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfileString").at(0).find("out, 259, ") !=
                std::string::npos);
}

TEST_F(InstallPrinter, AStartThatGives32OrLessStops) {
    printers({printer("Office", "LPT1:")});
    for (const INT_PTR result : {0, 1, 2, 31, 32, -1}) {
        forget_logs();
        start_gives(result);
        EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr) << result;
        EXPECT_EQ(support::trace_log(), traced(kList1 + kFolder)) << result;
    }
    EXPECT_EQ(waited.count(), 0u);
    start_gives(33);
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(waited.count(), 1u);
    expect_next_one_works();
}

TEST_F(InstallPrinter, WithoutANewPrinterGivesNone) {
    printers({printer("Office", "LPT1:")});
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(support::trace_log(), traced(kList1 + kFolder + kList1 + kUnchanged));
    EXPECT_EQ(recorded_name(), "");
    expect_next_one_works();
}

TEST_F(InstallPrinter, AnExchangedPrinterIsNoIncrease) {
    printers({printer("Office", "LPT1:")});
    during_wait([] { printers({printer("Another", "BT1:")}); });
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(support::trace_lines().back(), "The number of printers is not increased!\r\n");
    EXPECT_EQ(recorded_name(), "");
}

TEST_F(InstallPrinter, FewerPrintersHoldNoNewOne) {
    printers({printer("Office", "LPT1:"), printer("Second", "LPT1:")});
    during_wait([] { VlSpool_Set("/printers", ("[" + printer("Second", "LPT1:") + "]").c_str()); });
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(support::trace_log(), traced(printers_listed(2) + kFolder + kList1));
    EXPECT_EQ(recorded_name(), "");
}

TEST_F(InstallPrinter, TakesTheFirstNewName) {
    printers({printer("Office", "LPT1:"), printer("Second", "LPT1:")});
    during_wait([] {
        printers({printer("Second", "LPT1:"), printer("Office 2", "BT2:"), printer("Office", "LPT1:"),
                  printer("Third", "BT1:")});
    });
    ClosePrinter(VlCm_InstallANewPrinter(kAddress));
    EXPECT_EQ(recorded_name(), "Office 2");
}

TEST_F(InstallPrinter, ComparesNamesExactly) {
    printers({printer("Office", "LPT1:")});
    during_wait([] { add(printer("office", "BT1:")); });
    ClosePrinter(VlCm_InstallANewPrinter(kAddress));
    EXPECT_EQ(recorded_name(), "office");
}

TEST_F(InstallPrinter, FromNoPrintersToOne) {
    during_wait([] { add(printer("Office", "BT1:")); });
    ClosePrinter(VlCm_InstallANewPrinter(kAddress));
    EXPECT_EQ(recorded_name(), "Office");
    EXPECT_EQ(support::trace_lines()[2], "3 EnumPrinter num of Prnt=0 \r\n");
}

TEST_F(InstallPrinter, ThatDoesNotOpenIsRecordedAllTheSame) {
    during_wait([] { add(printer("Denied", "BT1:", R"(, "refuses": {"open": 5})")); });
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(support::trace_log(), traced(printers_listed(0) + kFolder + kList1 + kWritten));
    EXPECT_EQ(recorded_name(), "Denied");
    expect_next_one_works();
}

TEST_F(InstallPrinter, ASecondCallIsRefusedAndLetsAThirdOneThrough) {
    printers({printer("Office", "LPT1:")});
    HANDLE third = nullptr;
    during_wait([&] {
        support::clear_trace_log();
        VlSpool_ClearLog();
        EXPECT_EQ(VlCm_InstallANewPrinter(kOther), nullptr);
        EXPECT_EQ(support::trace_log(), traced({}));
        EXPECT_TRUE(spooler_calls().empty());
        EXPECT_EQ(started.count(), 1u);
        support::clear_trace_log();
        during_wait([] { add(printer("Third", "BT2:")); });
        third = VlCm_InstallANewPrinter(kOther);
        EXPECT_EQ(support::trace_log(), traced(kList1 + kFolder + printers_listed(2) + kWritten));
    });
    const HANDLE first = VlCm_InstallANewPrinter(kAddress);
    EXPECT_EQ(name_of(third), "Third");
    EXPECT_EQ(name_of(first), "Third") << "both see the same new printer";
    ClosePrinter(first);
    ClosePrinter(third);
    EXPECT_EQ(started.count(), 2u);
}

TEST_F(InstallPrinter, WithoutAnAddressDoesNothing) {
    EXPECT_EQ(VlCm_InstallANewPrinter(nullptr), nullptr);
    EXPECT_EQ(support::trace_log(), traced({}));
    EXPECT_TRUE(spooler_calls().empty());
    during_wait([] { EXPECT_EQ(VlCm_InstallANewPrinter(nullptr), nullptr); });
    VlCm_InstallANewPrinter(kAddress);
    expect_next_one_works();
}

TEST_F(InstallPrinter, WithoutTheEventStartsNothing) {
    created.fail_nth(1, HANDLE{nullptr}, ERROR_INVALID_HANDLE);
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(started.count() + waited.count(), 0u);
    EXPECT_EQ(support::trace_log(), traced(printers_listed(0)));
    expect_next_one_works();
}

TEST_F(InstallPrinter, AWaitThatFailsIsFollowedByALookAllTheSame) {
    add(printer("Office", "LPT1:"));
    forget_logs();
    waited.fail_nth(1, WAIT_FAILED, ERROR_INVALID_HANDLE);
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(support::trace_log(), traced(kList1 + kFolder + kList1 + kUnchanged));
    expect_next_one_works();
}

TEST_F(InstallPrinter, AListThatFailsStops) {
    printers({printer("Office", "LPT1:")});
    VlSpool_Fail("EnumPrintersA", 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(started.count(), 0u) << "the list of before";
    VlSpool_Fail("EnumPrintersA", 4, ERROR_ACCESS_DENIED);
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(started.count(), 1u);
    EXPECT_FALSE(support::has_line(support::trace_lines(), "The number of printers is not increased!\r\n"));
    EXPECT_EQ(recorded_name(), "");
    printers({});
    VlSpool_Fail("EnumPrintersA", 4, ERROR_ACCESS_DENIED);
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_FALSE(support::has_line(support::trace_lines(), "The number of printers is not increased!\r\n"))
        << "an empty list of before is no reason to count";
    expect_next_one_works();
}

TEST_F(InstallPrinter, EachAllocationThatFailsLeavesNothingBehind) {
    const struct {
        const char* label;
        size_t nth, starts;
        const char* name;
    } rows[] = {
        {"the record", 1, 0, ""},
        {"the list of before", 2, 0, ""},
        {"the list of after", 3, 1, ""},
        {"the stored form", 4, 1, ""},
        {"there is no fifth one", 5, 1, "New"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        printers({printer("Office", "LPT1:")});
        during_wait([] { add(printer("New", "BT1:")); });
        const size_t before = started.count();
        blocks().fail_nth(row.nth);
        const HANDLE installed = VlCm_InstallANewPrinter(kAddress);
        blocks().fail_nth(0);
        EXPECT_EQ(installed != nullptr, row.nth >= 4);
        if (installed != nullptr) ClosePrinter(installed);
        EXPECT_EQ(started.count() - before, row.starts);
        EXPECT_EQ(recorded_name(), row.name);
        expect_next_one_works();
    });
}
