// Whether a device's printer is installed: printer file, registry, spooler.
#include "printers_test.h"

using namespace printers_test;

namespace {

#define PRINTER_KEYS "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\"

const std::string kBoth = line("The printer information exists in .ini and register!\r\n");
const std::string kDeleted =
    line("The printer information exists in .ini, but not in system! We delete it!\r\n");
const std::string kAdopted = line("The printer set up from system-property-sheet, write it to .ini\r\n");
const std::string kExists = line("This printer already exists!\r\n");
const Lines kRead = nested("hlp_GetMyPrinterInfo");

Lines looked_up(const Lines& lines) { return nested("IsPrinterExistNew", lines); }

class InstalledPrinter : public PrinterTest {
protected:
    static void recorded(const char* name) {
        const VlPrinterRecord made = record(name, "Text", "BT1:", "WinPrint");
        VlCm_WriteMyPrinterInfo(kAddress, &made, nullptr);
        forget_logs();
    }
    void in_registry(const std::string& name) {
        registry_.make_key(HKEY_LOCAL_MACHINE, (PRINTER_KEYS + name).c_str());
    }
    static Lines traced(const Lines& inside) { return nested("hlp_IsPrinterInstalled", inside); }
    static void expect_forgotten() {
        EXPECT_EQ(stored(kRecords, kKey), "");
        EXPECT_EQ(stored(kLengths, kKey), "");
    }
    // The sizes of the reads of the entry.
    static std::vector<std::string> entry_reads() {
        std::vector<std::string> sizes;
        const std::string head =
            std::string("Btsdk_GetPrivateProfileString(\"") + kRecords + "\", \"" + kKey + "\", \"\", out, ";
        for (const std::string& call : support::sdk_calls("Btsdk_GetPrivateProfileString")) {
            EXPECT_EQ(call.substr(0, head.size()), head);
            sizes.push_back(call.substr(head.size(), call.find(',', head.size()) - head.size()));
        }
        return sizes;
    }

private:
    support::RegistryScope registry_;
};

class PrinterInSystem : public PrinterTest {};

}  // namespace

TEST_F(InstalledPrinter, IsRecordedAndInTheRegistry) {
    in_registry("Another");
    in_registry("Office 100%");
    recorded("Office 100%");
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE);
    EXPECT_EQ(
        support::trace_log(),
        traced(kRead + looked_up({line("input Office 100%\r\n"), line("Find target =Office 100%\r\n")}) +
               Lines{kBoth}));
    EXPECT_NE(stored(kRecords, kKey), "");
    EXPECT_TRUE(spooler_calls().empty());
}

TEST_F(InstalledPrinter, IsForgottenWhenTheRegistryLacksIt) {
    in_registry("Office 2");
    in_registry("office");
    recorded("Office");
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE) << "names are compared exactly";
    EXPECT_EQ(
        support::trace_log(),
        traced(kRead + looked_up({line("input Office\r\n"), line("end enum key\r\n")}) + Lines{kDeleted}));
    expect_forgotten();
    EXPECT_TRUE(spooler_calls().empty()) << "the spooler is looked at only without an entry";
}

TEST_F(InstalledPrinter, TheRegistryIsReadInItsPlace) {
    in_registry("Office");
    recorded("Office");
    support::CallPatch open("RegOpenKeyExA", RegOpenKeyExA);
    open.answer([&](HKEY root, const char* sub, DWORD options, REGSAM access, HKEY* key) {
        EXPECT_EQ(root, HKEY_LOCAL_MACHINE);
        EXPECT_STREQ(sub, PRINTER_KEYS);
        EXPECT_EQ(options, 0u);
        EXPECT_EQ(access, static_cast<REGSAM>(KEY_READ));
        return open.real(root, sub, options, access, key);
    });
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE);
    EXPECT_EQ(open.count(), 1u);
}

TEST_F(InstalledPrinter, ARegistryThatDoesNotOpenIsTraced) {
    in_registry("Office");
    recorded("Office");
    support::CallPatch open("RegOpenKeyExA", RegOpenKeyExA);
    open.answer([](HKEY, const char*, DWORD, REGSAM, HKEY* key) {
        *key = reinterpret_cast<HKEY>(uintptr_t{0x1234});
        return LSTATUS{ERROR_ACCESS_DENIED};
    });
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(),
              traced(kRead + looked_up({line("input Office\r\n"), line("RegOpenKey 2 --- err= 5\r\n")}) +
                     Lines{kDeleted}));
    expect_forgotten();
}

TEST_F(InstalledPrinter, AWalkThatFailsIsTraced) {
    in_registry("A first one");
    in_registry("Office");
    recorded("Office");
    support::CallPatch walk("RegEnumKeyExA", RegEnumKeyExA);
    walk.fail_nth(2, ERROR_MORE_DATA);
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(walk.count(), 2u);
    EXPECT_EQ(
        support::trace_log(),
        traced(kRead + looked_up({line("input Office\r\n"), line("IsPrinterExistNew --- err= ea \r\n")}) +
               Lines{kDeleted}));
}

TEST_F(InstalledPrinter, WhoseRecordCannotBeReadIsForgottenWithoutALookUp) {
    in_registry("Office");
    recorded("Office");
    settings().set(printer_file(), kLengths, kKey, "5");
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kRead + Lines{kDeleted}));
    expect_forgotten();
}

TEST_F(InstalledPrinter, MayHaveALongName) {
    const std::string longest(200, 'n');
    in_registry(longest);
    recorded(longest.c_str());
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE);
    recorded(std::string(259, 'n').c_str());
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
}

TEST_F(InstalledPrinter, ItsEntryIsReadWithBuffersThatDouble) {
    const struct {
        const char* label;
        size_t length;
        Lines sizes;
    } rows[] = {
        {"one less", 125, {"128"}},
        {"two less than the buffer", 126, {"128", "256"}},
        {"one less than the buffer", 127, {"128", "256"}},
        {"253", 253, {"128", "256"}},
        {"254", 254, {"128", "256", "512"}},
        {"1,000", 1000, {"128", "256", "512", "1024"}},
        {"30,000", 30000, {"128", "256", "512", "1024", "2048", "4096", "8192", "16384", "32768"}},
    };
    support::for_each_row(rows, [&](const auto& row) {
        settings().set(printer_file(), kRecords, kKey, std::string(row.length, 'A'));
        forget_logs();
        EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
        EXPECT_EQ(entry_reads(), row.sizes);
        EXPECT_EQ(support::trace_log(), traced(kRead + Lines{kDeleted})) << "present, but no record";
        expect_forgotten();
    });
}

TEST_F(InstalledPrinter, AnEntryThatNeverEndsIsPresent) {
    support::CallPatch read("Btsdk_GetPrivateProfileString", Btsdk_GetPrivateProfileString);
    read.answer(
        [](const char*, const char*, const char*, char*, uint32_t size, const char*) { return size - 1; });
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(kRead + Lines{kDeleted}));
    EXPECT_EQ(std::get<4>(read.calls().back()), 1048576u);
}

TEST_F(InstalledPrinter, WithoutMemoryIsNoneAndNothingChanges) {
    in_registry("Office");
    recorded("Office");
    settings().set(printer_file(), kRecords, kOtherKey, std::string(1000, 'A'));
    for (size_t nth = 1; nth <= 4; ++nth) {
        forget_logs();
        blocks().fail_nth(nth);
        EXPECT_EQ(VlCm_IsPrinterInstalled(kOther), FALSE) << nth;
        EXPECT_EQ(support::trace_log(), traced({})) << nth;
        EXPECT_TRUE(spooler_calls().empty()) << nth;
    }
    blocks().fail_nth(0);
    EXPECT_NE(stored(kRecords, kOtherKey), "");
}

TEST_F(InstalledPrinter, WithoutAnEntryIsTakenFromTheSpooler) {
    bluetooth("BT1:", "AA:BB:CC:DD:EE:FF");
    bluetooth("BT2:");
    printers({printer("Other", "BT1:"), printer("Mine", "BT2:"), printer("Mine again", "BT2:")});
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE);
    EXPECT_EQ(support::trace_log(),
              traced(printers_listed(3) + Lines{kExists, kAdopted} + nested("hlp_WriteMyPrinterInfo")));
    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
    EXPECT_STREQ(read.printerName, "Mine");
    EXPECT_STREQ(read.driverName, "Text");
    EXPECT_STREQ(read.portName, "BT2:");
    EXPECT_STREQ(read.printProcessor, "WinPrint");
    EXPECT_EQ(stored(kLengths, kKey), "25");
}

TEST_F(InstalledPrinter, WithoutAnEntryOrAPrinterIsNone) {
    bluetooth("BT1:", "AA:BB:CC:DD:EE:FF");
    printers({printer("Other", "BT1:")});
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(support::trace_log(), traced(printers_listed(1)));
    EXPECT_EQ(stored(kRecords, kKey), "");
}

TEST_F(InstalledPrinter, WithoutAnAddressIsNone) {
    EXPECT_EQ(VlCm_IsPrinterInstalled(nullptr), FALSE);
    EXPECT_EQ(support::trace_log(), traced({}));
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(spooler_calls().empty());
}

TEST_F(PrinterInSystem, IsTheFirstOnAPortOfTheDevice) {
    bluetooth("BT1:", "B0:0A:01:EF:CD:AB");
    bluetooth("BT2:", "b0:0a:01:ef:cd:ab");
    for (const char* port : {"BT1:", "BT2:"}) {  // in any letter case
        printers({printer("Cable", "LPT1:"), printer("Mine", port), printer("Later", "BT1:")});
        VlPrinterRecord found = record("x", "x", "x", "x");
        EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kOther, &found), TRUE);
        const VlPrinterRecord expected = record("Mine", "Text", port, "WinPrint");
        EXPECT_EQ(memcmp(&found, &expected, sizeof found), 0);
        EXPECT_EQ(support::trace_log(), printers_listed(3) + Lines{kExists});
        EXPECT_EQ(support::sdk_operations(),
                  (Lines{"Btsdk_GetPrivateProfileString", "Btsdk_GetPrivateProfileString"}));
    }
}

TEST_F(PrinterInSystem, MayBeAskedForWithoutARecord) {
    bluetooth("BT1:");
    printers({printer("Mine", "BT1:")});
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, nullptr), TRUE);
    EXPECT_EQ(support::trace_log(), printers_listed(1) + Lines{kExists});
}

TEST_F(PrinterInSystem, NeedsTheWholeAddress) {
    bluetooth("BT1:", "66:55:44:33:22:111");
    bluetooth("BT2:", "66:55:44:33:22:1");
    bluetooth("LPT1:", "11:22:33:44:55:66");
    printers(
        {printer("One", "BT1:"), printer("Two", "BT2:"), printer("Three", "LPT1:"), printer("Four", "X:")});
    VlPrinterRecord found = record("x", "x", "x", "x");
    const VlPrinterRecord before = found;
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, &found), FALSE);
    EXPECT_EQ(memcmp(&found, &before, sizeof found), 0);
    EXPECT_EQ(support::trace_log(), printers_listed(4));
}

TEST_F(PrinterInSystem, WithoutAnAddressIsInvalid) {
    VlPrinterRecord found{};
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(nullptr, &found), FALSE);
    EXPECT_EQ(support::trace_log(), Lines{line("the address is invalid!\r\n")});
    EXPECT_TRUE(spooler_calls().empty());
}

TEST_F(PrinterInSystem, ItsTextsAreCutAndMissingOnesAreEmpty) {
    bluetooth("BT1:");
    printers({printer("Mine", "BT1:")});
    support::CallPatch list("EnumPrintersA", EnumPrintersA);
    const std::string longer(300, 'n');
    list.answer([&](DWORD, char*, DWORD, BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
        *needed = 2 * sizeof(PRINTER_INFO_2A);
        if (size < *needed) return FALSE;
        auto* const entries = reinterpret_cast<PRINTER_INFO_2A*>(block);
        entries[0] = entries[1] = {};
        entries[1].pPortName = const_cast<char*>("BT1:");
        entries[1].pPrinterName = const_cast<char*>(longer.c_str());
        *count = 2;
        return TRUE;
    });
    VlPrinterRecord found = record("x", "x", "x", "x");
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, &found), TRUE) << "the first one has no texts";
    const VlPrinterRecord expected = record(std::string(259, 'n').c_str(), "", "BT1:", "");
    EXPECT_EQ(memcmp(&found, &expected, sizeof found), 0);
    EXPECT_EQ(VlCm_DeleteAllBTPrinter(), TRUE) << "nor do the others mind";
    EXPECT_EQ(VlCm_IsBtPortBusy(), FALSE);
}

TEST_F(PrinterInSystem, WithoutAListIsNone) {
    bluetooth("BT1:");
    printers({printer("Mine", "BT1:")});
    for (const uint32_t nth : {1U, 2U}) {
        VlSpool_Fail("EnumPrintersA", nth, ERROR_ACCESS_DENIED);
        EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, nullptr), FALSE) << nth;
        VlSpool_ClearFaults();
    }
    blocks().fail_nth(1);
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, nullptr), FALSE);
    blocks().fail_nth(0);
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, nullptr), TRUE);
}
