// Against a spooler that is not ours: Wine's own. It adds, lists, opens and deletes printers and keeps their
// registry keys; it neither lists jobs nor purges them.
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "vlcm/printers.h"

#include <winspool.h>

#include <shellapi.h>

namespace {

using Lines = std::vector<std::string>;

constexpr uint8_t kAddress[6] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66};
constexpr char kKey[] = "66:55:44:33:22:11";
// No port of Wine's is a Bluetooth port: this one plays one.
constexpr char kPort[] = "LPT3:", kOtherPort[] = "LPT2:";

char* text(const char* constant) { return const_cast<char*>(constant); }

void add_driver() {
    DRIVER_INFO_3A driver{};
    driver.cVersion = 3;
    driver.pName = text("Spooler test");
    driver.pDriverPath = driver.pDataFile = driver.pConfigFile = text("wineps.drv");
    driver.pDefaultDataType = text("RAW");
    AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&driver),
                        APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);
}

bool add_printer(const char* name, const char* port) {
    PRINTER_INFO_2A printer{};
    printer.pPrinterName = text(name);
    printer.pPortName = text(port);
    printer.pDriverName = text("Spooler test");
    printer.pPrintProcessor = text("WinPrint");
    printer.pDatatype = text("RAW");
    const HANDLE added = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
    return added != nullptr && ClosePrinter(added);
}

void delete_printer(const char* name) {
    PRINTER_DEFAULTSA all{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE opened = nullptr;
    if (!OpenPrinterA(text(name), &opened, &all)) return;
    DeletePrinter(opened);
    ClosePrinter(opened);
}

bool exists(const char* name) {
    HANDLE opened = nullptr;
    if (!OpenPrinterA(text(name), &opened, nullptr)) return false;
    ClosePrinter(opened);
    return true;
}

std::string printer_file() {
    char folder[MAX_PATH];
    return std::string(folder, GetWindowsDirectoryA(folder, sizeof folder)) + "\\SysWow64\\VLPRINT.INI";
}

constexpr const char* kNames[] = {"Spooler test A", "Spooler test B", "Spooler test C"};

// What the spooler opens once in a process it opens now.
class Warm : public ::testing::Environment {
public:
    void SetUp() override {
        add_driver();
        ASSERT_TRUE(add_printer(kNames[0], kOtherPort));
        VlCm_IsBtPortBusy();
        delete_printer(kNames[0]);
    }
    void TearDown() override { DeletePrinterDriverA(nullptr, nullptr, text("Spooler test")); }
};
const auto* const g_warm = ::testing::AddGlobalTestEnvironment(new Warm);

class WineSpooler : public support::SuiteTest {
protected:
    WineSpooler() {
        settings().content(printer_file(), std::nullopt);
        settings().set(printer_file(), kPort, "BD_ADDR", kKey);
        token_.answer([](HANDLE, PSID, BOOL* member) {
            *member = TRUE;
            return TRUE;
        });
        for (const char* name : kNames) delete_printer(name);  // of a run that was killed
        support::clear_trace_log();
    }
    ~WineSpooler() override {
        for (const char* name : kNames) delete_printer(name);
    }

private:
    support::CallPatch<decltype(CheckTokenMembership)> token_{"CheckTokenMembership", CheckTokenMembership};
};

}  // namespace

TEST_F(WineSpooler, APrinterIsInstalledFoundAndDeleted) {
    support::CallPatch start("ShellExecuteA", ShellExecuteA);
    start.answer([](auto...) { return reinterpret_cast<HINSTANCE>(INT_PTR{33}); });
    support::CallPatch wait("WaitForSingleObject", WaitForSingleObject);
    wait.answer([](HANDLE, DWORD) {
        EXPECT_TRUE(add_printer(kNames[1], kPort));
        return DWORD{WAIT_OBJECT_0};
    });
    EXPECT_TRUE(add_printer(kNames[0], kOtherPort));
    const HANDLE installed = VlCm_InstallANewPrinter(kAddress);
    ASSERT_NE(installed, nullptr);
    EXPECT_EQ(VlCm_IsPrinterBusy(installed), FALSE);
    EXPECT_TRUE(ClosePrinter(installed));

    VlPrinterRecord found{}, read{};
    EXPECT_EQ(VlCm_IsPrinterInfoInSystem(kAddress, &found), TRUE);
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
    EXPECT_STREQ(read.printerName, kNames[1]);
    EXPECT_STREQ(read.driverName, "Spooler test");
    EXPECT_STREQ(read.portName, kPort);
    EXPECT_EQ(memcmp(&read, &found, sizeof read), 0);
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE) << "its registry key is there";

    EXPECT_EQ(VlCm_DeleteMyPrinterByBDAddr(kAddress), TRUE);
    EXPECT_FALSE(exists(kNames[1]));
    EXPECT_TRUE(exists(kNames[0]));
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
}

TEST_F(WineSpooler, APrinterThatItDeletedItselfIsForgotten) {
    EXPECT_TRUE(add_printer(kNames[1], kPort));
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE) << "adopted";
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), TRUE) << "recorded";
    delete_printer(kNames[1]);
    EXPECT_EQ(VlCm_IsPrinterInstalled(kAddress), FALSE);
    EXPECT_EQ(support::trace_lines().back(),
              "The printer information exists in .ini, but not in system! We delete it!\r\n");
}

TEST_F(WineSpooler, AllPrintersOnTheBluetoothPortAreDeleted) {
    EXPECT_TRUE(add_printer(kNames[0], kPort));
    EXPECT_TRUE(add_printer(kNames[1], kOtherPort));
    EXPECT_TRUE(add_printer(kNames[2], kPort));
    EXPECT_EQ(VlCm_IsBtPortBusy(), FALSE);
    EXPECT_EQ(VlCm_DoCancelAllPrintJob(), FALSE) << "nothing to wait for";
    VlCm_DeleteAllBTPrinterNew();
    EXPECT_FALSE(exists(kNames[0]));
    EXPECT_TRUE(exists(kNames[1]));
    EXPECT_FALSE(exists(kNames[2]));
}
