// Deleting the printer of a device, and all Bluetooth printers.
#include "printers_test.h"

using namespace printers_test;

namespace {

const Family<BOOL()> kDeleteAll[] = {
    {"VlCm_DeleteAllBTPrinter", VlCm_DeleteAllBTPrinter, false},
    {"VlCm_DeleteAllBTPrinterNew", VlCm_DeleteAllBTPrinterNew, true},
};

const Lines kAdmin = {line("check token correctly\r\n")};
const Lines kRead = nested("hlp_GetMyPrinterInfo");
const Lines kTold = nested("VlCm_PostMsg2Vltray");
const Lines kRefusal = {"Btsdk_PostMessageToCtrlCenter(" + std::to_string(0x491C0203) + ", 0) = 0"};

class DeletePrinterOfDevice : public PrinterTest {
protected:
    DeletePrinterOfDevice() { administrator(TRUE, TRUE); }

    // What the test for an administrator gives.
    void administrator(BOOL result, BOOL member) {
        token_.answer([=](HANDLE, PSID, BOOL* answer) {
            *answer = member;
            return result;
        });
    }
    // A recorded printer.
    static void recorded(const std::string& more = "") {
        printers({printer("Office", "BT1:", more)});
        const VlPrinterRecord made = record("Office", "Text", "BT1:", "WinPrint");
        VlCm_WriteMyPrinterInfo(kAddress, &made, nullptr);
        VlCm_WriteMyPrinterInfo(kOther, &made, nullptr);
        forget_logs();
    }
    static Lines traced(const Lines& inside) { return nested("hlp_DeleteMyPrinterByBDAddr", inside); }
    // The record and the printer are as they were.
    static void expect_kept() {
        EXPECT_NE(stored(kRecords, kKey), "");
        EXPECT_NE(stored(kLengths, kKey), "");
        EXPECT_EQ(printer_names(), Lines{"Office"});
        EXPECT_EQ(VlSpool_OpenHandles(), 0u);
    }

private:
    support::CallPatch<BOOL(HANDLE, PSID, BOOL*)> token_{"CheckTokenMembership", CheckTokenMembership};
};

class DeleteAllPrinters : public PrinterTest {
protected:
    DeleteAllPrinters() { bluetooth("BT1:"); }
    static Lines traced(const Lines& inside) { return nested("hlp_DeleteAllBTPrinter", inside); }
};

}  // namespace

TEST_F(DeletePrinterOfDevice, DeletesPrinterAndRecord) {
    recorded();
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), TRUE);
    EXPECT_EQ(support::trace_log(),
              traced(kAdmin + kRead + busy_tested(0) + Lines{line("can delete printer!\r\n")}));
    EXPECT_EQ(printer_names(), Lines{});
    EXPECT_EQ(stored(kRecords, kKey), "");
    EXPECT_EQ(stored(kLengths, kKey), "");
    EXPECT_NE(stored(kRecords, kOtherKey), "") << "another device's record stays";
    EXPECT_NE(stored(kLengths, kOtherKey), "");
    EXPECT_TRUE(requests().empty());
}

TEST_F(DeletePrinterOfDevice, AsksInOrder) {
    recorded();
    VlCm_DeleteMyPrinterByBDAddr(kAddress);
    EXPECT_EQ(spooler_calls(), (Lines{"OpenPrinterA(\"Office\", access 0xf000c) = 1",
                                      "EnumJobsA(printer, 0, 4294967295, 1, null, 0) = 1",
                                      "EnumJobsA(printer, 0, 4294967295, 1, out) = 1",
                                      "DeletePrinter(printer) = 1", "ClosePrinter(printer) = 1"}));
    const std::string removed = "Btsdk_WritePrivateProfileString(\"";
    const std::string nothing = std::string("\", \"") + kKey + "\", null, \"" + printer_file() + "\") = 1";
    EXPECT_EQ(support::sdk_calls("Btsdk_WritePrivateProfileString"),
              (Lines{removed + kRecords + nothing, removed + kLengths + nothing}));
}

TEST_F(DeletePrinterOfDevice, NeedsAnAdministrator) {
    recorded();
    administrator(TRUE, FALSE);
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kAdmin + Lines{line("not legal user!\r\n")} + kTold));
    EXPECT_EQ(requests(), kRefusal);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_PostMessageToCtrlCenter"}) << "nothing is read";
    EXPECT_TRUE(spooler_calls().empty());
    expect_kept();
}

TEST_F(DeletePrinterOfDevice, GoesOnWhenTheUserCannotBeTested) {
    recorded();
    administrator(FALSE, FALSE);
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), TRUE);
    EXPECT_EQ(support::trace_log(), traced(Lines{line("can not check token membership\r\n"),
                                                 line("Can not check authority of the current user\r\n")} +
                                           kRead + busy_tested(0) + Lines{line("can delete printer!\r\n")}));
    recorded();
    support::CallPatch group("AllocateAndInitializeSid", AllocateAndInitializeSid);
    group.fail_nth(1, FALSE, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), TRUE);
    EXPECT_TRUE(support::has_in_order(
        support::trace_lines(),
        {"can not initialize SID\r\n", "Can not check authority of the current user\r\n",
         "can delete printer!\r\n"}));
}

TEST_F(DeletePrinterOfDevice, NeedsARecord) {
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kAdmin + kRead));
    EXPECT_TRUE(spooler_calls().empty());
    EXPECT_TRUE(requests().empty());
}

TEST_F(DeletePrinterOfDevice, DeniedAccessIsTold) {
    recorded(R"(, "refuses": {"open": 5})");
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kAdmin + kRead + Lines{line("access denied!\r\n")} + kTold));
    EXPECT_EQ(requests(), kRefusal);
    expect_kept();
}

TEST_F(DeletePrinterOfDevice, ThatDoesNotOpenForAnotherReasonIsNotTold) {
    for (const char* error : {"6", "1801", "8"}) {
        recorded(std::string(R"(, "refuses": {"open": )") + error + "}");
        EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE) << error;
        EXPECT_EQ(support::trace_log(), traced(kAdmin + kRead)) << error;
        EXPECT_TRUE(requests().empty()) << error;
        expect_kept();
    }
}

TEST_F(DeletePrinterOfDevice, ABusyPrinterIsLeftAlone) {
    recorded(R"(, "jobs": [{"id": 1}])");
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kAdmin + kRead + busy_tested(1)));
    EXPECT_EQ(VlSpool_CallCount("DeletePrinter"), 0u);
    expect_kept();
}

TEST_F(DeletePrinterOfDevice, AFailedDeletionIsTracedAndKeepsTheRecord) {
    recorded(R"(, "refuses": {"delete": 1905})");
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kAdmin + kRead + busy_tested(0) +
                                           Lines{line("can not delete printer, last error is 1905!\r\n")}));
    EXPECT_TRUE(support::has_line(support::trace_formats(), "can not delete printer, last error is %d!\r\n"));
    expect_kept();
}

TEST_F(DeletePrinterOfDevice, WithoutAnAddressDoesNothing) {
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(nullptr), FALSE);
    EXPECT_EQ(support::trace_log(), traced({}));
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(spooler_calls().empty());
}

TEST_F(DeletePrinterOfDevice, WithoutMemoryHasNoRecord) {
    recorded();
    blocks().fail_nth(1);
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), FALSE);
    blocks().fail_nth(0);
    expect_kept();
}

TEST_F(DeletePrinterOfDevice, ARecordThatCannotBeRemovedIsNotTold) {
    recorded();
    VlSim_Fail("Btsdk_WritePrivateProfileString", 1, FALSE);
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), TRUE);
    EXPECT_EQ(support::sdk_calls("Btsdk_WritePrivateProfileString").size(), 2u);
}

TEST_F(DeleteAllPrinters, DeletesThoseOnBluetoothPorts) {
    support::for_each_row(kDeleteAll, [](const auto& family) {
        printers({printer("First", "BT1:"), printer("Cable", "LPT1:"),
                  printer("Busy", "BT1:", R"(, "jobs": [{}])")});
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(printer_names(), Lines{"Cable"});
        EXPECT_EQ(support::trace_log(),
                  traced(printers_listed(3) + port_tested(true) + port_tested(false) + port_tested(true)));
        const auto handled = [](const char* name, bool deleted) {
            return Lines{std::string("OpenPrinterA(\"") + name + "\", access 0xf000c) = 1"} +
                   (deleted ? Lines{"DeletePrinter(printer) = 1"} : Lines{}) +
                   Lines{"ClosePrinter(printer) = 1"};
        };
        EXPECT_EQ(spooler_calls(),
                  (Lines{"EnumPrintersA(2, null, 2, null, 0) = 0", "EnumPrintersA(2, null, 2, out) = 1"} +
                   handled("First", true) + handled("Cable", false) + handled("Busy", true)));
    });
}

TEST_F(DeleteAllPrinters, TellsThePortOfTheLastPrinter) {
    support::for_each_row(kDeleteAll, [](const auto& family) {
        printers({printer("First", "BT1:"), printer("Cable", "LPT1:")});
        EXPECT_EQ(family.function(), FALSE);
        printers({printer("Cable", "LPT1:"), printer("First", "BT1:")});
        EXPECT_EQ(family.function(), TRUE);
        printers({});
        EXPECT_EQ(family.function(), TRUE) << "no printers";
        EXPECT_EQ(support::trace_log(), traced(printers_listed(0)));
    });
}

TEST_F(DeleteAllPrinters, AFailedDeletionChangesNothing) {
    support::for_each_row(kDeleteAll, [](const auto& family) {
        printers({printer("First", "BT1:", R"(, "refuses": {"delete": 5})"), printer("Second", "BT1:")});
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(printer_names(), Lines{"First"});
    });
}

TEST_F(DeleteAllPrinters, APrinterThatDoesNotOpenIsPassedOverButItsPortIsTested) {
    support::for_each_row(kDeleteAll, [](const auto& family) {
        printers({printer("Cable", "LPT1:"), printer("Denied", "BT1:", R"(, "refuses": {"open": 5})")});
        EXPECT_EQ(family.function(), TRUE);
        EXPECT_EQ(support::trace_log(), traced(printers_listed(2) + port_tested(false) + port_tested(true)));
        EXPECT_EQ(VlSpool_CallCount("DeletePrinter"), 0u);
        EXPECT_EQ(VlSpool_CallCount("ClosePrinter"), 1u);
        EXPECT_EQ(printer_names(), (Lines{"Cable", "Denied"}));
    });
}

TEST_F(DeleteAllPrinters, WithoutAListThereAreNone) {
    support::for_each_row(kDeleteAll, [&](const auto& family) {
        printers({printer("Cable", "LPT1:"), printer("First", "BT1:")});
        VlSpool_Fail("EnumPrintersA", 2, ERROR_ACCESS_DENIED);
        EXPECT_EQ(family.function(), TRUE);
        blocks().fail_nth(1);
        EXPECT_EQ(family.function(), TRUE);
        blocks().fail_nth(0);
        EXPECT_EQ(printer_names(), (Lines{"Cable", "First"}));
    });
}

TEST_F(DeleteAllPrinters, ThePrinterFileIsNotTouched) {
    const VlPrinterRecord made = record("First", "Text", "BT1:", "WinPrint");
    VlCm_WriteMyPrinterInfo(kAddress, &made, nullptr);
    const auto before = support::read_file(printer_file());
    support::for_each_row(kDeleteAll, [](const auto& family) {
        printers({printer("First", "BT1:")});
        EXPECT_EQ(family.function(), TRUE);
    });
    EXPECT_EQ(support::read_file(printer_file()), before);
}
