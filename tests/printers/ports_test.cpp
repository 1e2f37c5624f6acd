// Bluetooth ports, and by which profile operations the printer file is read.
#include "printers_test.h"

using namespace printers_test;

namespace {

class BluetoothPort : public PrinterTest {};
class ProfileFamily : public PrinterTest {};

const Family<decltype(VlCm_IsBTPort)> kPortTests[] = {
    {"VlCm_IsBTPort", VlCm_IsBTPort, false},
    {"VlCm_IsBTPortNew", VlCm_IsBTPortNew, true},
};

// A pair of exports, called as both take no argument; `reads` of the printer file by one call.
const struct {
    const char* label;
    BOOL (*call)();
    bool windows;
    size_t reads;
} kCalls[] = {
    {"VlCm_IsBTPort", [] { return VlCm_IsBTPort("BT1:"); }, false, 1},
    {"VlCm_IsBTPortNew", [] { return VlCm_IsBTPortNew("BT1:"); }, true, 1},
    {"VlCm_IsBtPortBusy", [] { return VlCm_IsBtPortBusy(); }, false, 2},
    {"VlCm_IsBtPortBusyNew", [] { return VlCm_IsBtPortBusyNew(); }, true, 2},
    {"VlCm_DoCancelAllPrintJob", [] { return VlCm_DoCancelAllPrintJob(); }, false, 2},
    {"VlCm_DoCancelAllPrintJobNew", [] { return VlCm_DoCancelAllPrintJobNew(); }, true, 2},
    {"VlCm_DeleteAllBTPrinter", [] { return VlCm_DeleteAllBTPrinter(); }, false, 2},
    {"VlCm_DeleteAllBTPrinterNew", [] { return VlCm_DeleteAllBTPrinterNew(); }, true, 2},
};

}  // namespace

TEST_F(BluetoothPort, IsOneThatHasADevice) {
    bluetooth("BT1:");
    bluetooth("LPT7:", "x");
    bluetooth("BT2:", "");
    settings().set(printer_file(), "BT3:", "OTHER", "66:55:44:33:22:11");
    const struct {
        const char *label, *port;
        BOOL expected;
    } rows[] = {
        {"an address", "BT1:", TRUE},   {"in another letter case", "bt1:", TRUE},
        {"any text", "LPT7:", TRUE},    {"an empty text", "BT2:", FALSE},
        {"another key", "BT3:", FALSE}, {"no section", "BT4:", FALSE},
        {"no name", "", FALSE},
    };
    support::for_each_row(kPortTests, [&](const auto& family) {
        support::for_each_row(rows, [&](const auto& row) {
            forget_logs();
            EXPECT_EQ(family.function(row.port), row.expected);
            EXPECT_EQ(support::trace_log(), port_tested(row.expected));
        });
    });
}

TEST_F(BluetoothPort, WithoutANameIsNoneAndNothingIsRead) {
    support::CallPatch windows("GetPrivateProfileStringA", GetPrivateProfileStringA);
    support::for_each_row(kPortTests, [](const auto& family) {
        forget_logs();
        EXPECT_EQ(family.function(nullptr), FALSE);
        EXPECT_EQ(support::trace_log(), port_tested(false));
        EXPECT_TRUE(support::sdk_calls().empty());
    });
    EXPECT_EQ(windows.count(), 0u);
}

TEST_F(BluetoothPort, IsReadInto40Bytes) {
    bluetooth("BT1:", std::string(39, 'a').c_str());
    VlCm_IsBTPort("BT1:");
    EXPECT_EQ(support::sdk_calls(),
              Lines{"Btsdk_GetPrivateProfileString(\"BT1:\", \"BD_ADDR\", \"\", out, 40, \"" +
                    printer_file() + "\") = 39"});
    support::CallPatch windows("GetPrivateProfileStringA", GetPrivateProfileStringA);
    windows.answer([&](const char* section, const char* key, const char* fallback, char* text, DWORD size,
                       const char* path) {
        EXPECT_STREQ(section, "BT1:");
        EXPECT_STREQ(key, "BD_ADDR");
        EXPECT_STREQ(fallback, "");
        EXPECT_EQ(size, 40u);
        EXPECT_EQ(path, printer_file());
        return windows.real(section, key, fallback, text, size, path);
    });
    EXPECT_EQ(VlCm_IsBTPortNew("BT1:"), TRUE);
    EXPECT_EQ(windows.count(), 1u);
}

TEST_F(BluetoothPort, WhoseDeviceCannotBeReadIsNone) {
    bluetooth("BT1:");
    support::CallPatch stack("Btsdk_GetPrivateProfileString", Btsdk_GetPrivateProfileString);
    stack.answer([](const char*, const char*, const char*, char* text, uint32_t, const char*) {
        text[0] = 'x';
        return 0u;
    });
    EXPECT_EQ(VlCm_IsBTPort("BT1:"), FALSE);
}

TEST_F(ProfileFamily, PlainNamesAskTheStackAndNewOnesAskWindows) {
    support::for_each_row(kCalls, [&](const auto& row) {
        bluetooth("BT1:");
        printers({printer("One", "BT1:"), printer("Two", "LPT1:")});
        support::CallPatch windows("GetPrivateProfileStringA", GetPrivateProfileStringA);
        row.call();
        EXPECT_EQ(windows.count(), row.windows ? row.reads : 0);
        EXPECT_EQ(support::sdk_calls().size(), row.windows ? 0 : row.reads);
        EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileString").size(), row.windows ? 0 : row.reads);
    });
}

TEST_F(ProfileFamily, BothGiveTheSameAnswersAndTheSameTrace) {
    for (size_t plain = 0; plain < std::size(kCalls); plain += 2) {
        bluetooth("BT1:");
        const auto run = [](const auto& row) {
            printers({printer("One", "BT1:", R"(, "jobs": [{"id": 1}])"), printer("Two", "LPT1:")});
            const BOOL answer = row.call();
            return std::make_tuple(answer, support::trace_log(), spooler_calls(), printer_names());
        };
        EXPECT_EQ(run(kCalls[plain]), run(kCalls[plain + 1])) << kCalls[plain].label;
    }
}

TEST_F(ProfileFamily, APrintersJobsConcernNoSettings) {
    support::CallPatch windows("GetPrivateProfileStringA", GetPrivateProfileStringA);
    printers({printer("One", "BT1:", R"(, "jobs": [{"id": 1}])")});
    PRINTER_DEFAULTSA all{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE opened = nullptr;
    ASSERT_TRUE(OpenPrinterA(const_cast<char*>("One"), &opened, &all));
    for (auto* const busy : {VlCm_IsPrinterBusy, VlCm_IsPrinterBusyNew}) {
        support::clear_trace_log();
        EXPECT_EQ(busy(opened), TRUE);
        EXPECT_EQ(support::trace_log(), busy_tested(1));
    }
    ClosePrinter(opened);
    EXPECT_EQ(windows.count(), 0u);
    EXPECT_TRUE(support::sdk_calls().empty());
}
