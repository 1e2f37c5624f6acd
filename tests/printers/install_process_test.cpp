// Installing a printer with the real execution module, in a process of its own.
#include "install_test.h"

#include "support/child_process.h"

using namespace printers_test;

namespace {

constexpr DWORD kDeadlineMs = 20000;

class InstallProcess : public PrinterTest {
protected:
    InstallProcess() {
        settings().common("General", "InstallDir", support::bin_folder());
        waited_.answer([this](HANDLE event, DWORD milliseconds) {
            EXPECT_EQ(milliseconds, INFINITE);
            const DWORD result = waited_.real(event, kDeadlineMs);
            EXPECT_EQ(result, static_cast<DWORD>(WAIT_OBJECT_0)) << "the program has not signalled";
            return result;
        });
    }

private:
    support::CallPatch<decltype(WaitForSingleObject)> waited_{"WaitForSingleObject", WaitForSingleObject};
};

}  // namespace

TEST_F(InstallProcess, TheExecutionModuleInstallsAndSignals) {
    bluetooth("BT1:", "AA:BB:CC:DD:EE:FF");
    bluetooth("BT2:");
    printers({printer("Office", "LPT1:"), printer("Other", "BT1:")});
    const HANDLE installed = VlCm_InstallANewPrinter(kAddress);
    EXPECT_NE(installed, nullptr);
    ClosePrinter(installed);
    EXPECT_EQ(printer_names(), (Lines{"Office", "Other", "Bluetooth printer on BT2"}));

    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
    const VlPrinterRecord expected = record("Bluetooth printer on BT2", "Text", "BT2:", "WinPrint");
    EXPECT_EQ(memcmp(&read, &expected, sizeof read), 0);
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE) << "the spooler made its key";
    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), TRUE);
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(printer_names(), (Lines{"Office", "Other"}));
}

TEST_F(InstallProcess, TheExecutionModuleSignalsAlsoWithoutAPort) {
    printers({printer("Office", "LPT1:")});
    EXPECT_EQ(VlCm_InstallANewPrinter(kAddress), nullptr);
    EXPECT_EQ(support::trace_lines().back(), "The number of printers is not increased!\r\n");
}
