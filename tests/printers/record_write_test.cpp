// Writing printer records: key, stored form, length.
#include "printers_test.h"

using namespace printers_test;

namespace {

class PrinterRecordWrite : public PrinterTest {
protected:
    // The bytes stored for a device, by Windows' own function; their number must be `size`.
    static std::string bytes(const char* key, uint32_t size) {
        std::string read(size, '?');
        EXPECT_TRUE(GetPrivateProfileStructA(kRecords, key, read.data(), size, printer_file().c_str()));
        return read;
    }
};

std::string terminated(const Lines& texts) {
    std::string bytes;
    for (const std::string& text : texts) bytes += text + '\0';
    return bytes + '\0';
}

}  // namespace

TEST_F(PrinterRecordWrite, StoresTheTextsOneBehindTheOther) {
    const VlPrinterRecord made = record("P", "D", "BT1:", "WinPrint");
    uint32_t length = 0;
    EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, &made, &length), TRUE);
    EXPECT_EQ(length, 19u);
    EXPECT_EQ(stored(kLengths, kKey), "19");
    EXPECT_EQ(bytes(kKey, 19), terminated({"P", "D", "BT1:", "WinPrint"}));
    EXPECT_EQ(support::trace_log(), nested("hlp_WriteMyPrinterInfo"));
}

TEST_F(PrinterRecordWrite, WritesTheStructThenItsLengthThroughTheStack) {
    const VlPrinterRecord made = record("P", "D", "BT1:", "WinPrint");
    support::CallPatch text("WritePrivateProfileStringA", WritePrivateProfileStringA,
                            GetModuleHandleA("VlSDK.dll"));
    uint32_t length = 0;
    VlCm_WriteMyPrinterInfo(kOther, &made, &length);
    const std::string file = "\"" + printer_file() + "\") = 1";
    EXPECT_EQ(
        support::sdk_calls(),
        (Lines{"Btsdk_WritePrivateProfileStruct(\"QVN_PRINTER_BDADDR_MAP\", \"B0:0A:01:EF:CD:AB\", pointer, "
               "19, " +
                   file,
               "Btsdk_WritePrivateProfileString(\"QVN_PRINTER_STRU_LEN\", \"B0:0A:01:EF:CD:AB\", \"19\", " +
                   file}));
    EXPECT_EQ(text.count(), 1u);
}

TEST_F(PrinterRecordWrite, KeepsTheEmptyTexts) {
    const struct {
        const char* label;
        VlPrinterRecord made;
        Lines texts;
    } rows[] = {
        {"no driver", record("P", "", "BT1:", "W"), {"P", "", "BT1:", "W"}},
        {"no driver, no port", record("P", "", "", "W"), {"P", "", "", "W"}},
        {"only the processor", record("", "", "", "W"), {"", "", "", "W"}},
        {"nothing", record("", "", "", ""), {"", "", "", ""}},
    };
    support::for_each_row(rows, [](const auto& row) {
        uint32_t length = 0;
        EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, &row.made, &length), TRUE);
        const std::string expected = terminated(row.texts);
        EXPECT_EQ(length, expected.size());
        EXPECT_EQ(bytes(kKey, length), expected);
        EXPECT_EQ(stored(kLengths, kKey), std::to_string(expected.size()));
    });
}

TEST_F(PrinterRecordWrite, CutsTextsWithoutAnEndAt259Bytes) {
    VlPrinterRecord made{};
    memset(&made, 'x', sizeof made);
    uint32_t length = 0;
    EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, &made, &length), TRUE);
    EXPECT_EQ(length, 4 * 259 + 5u);
    const std::string full(259, 'x');
    EXPECT_EQ(bytes(kKey, length), terminated({full, full, full, full}));
}

TEST_F(PrinterRecordWrite, MayGoWithoutTheLength) {
    const VlPrinterRecord made = record("P", "D", "BT1:", "WinPrint");
    EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, &made, nullptr), TRUE);
    EXPECT_EQ(stored(kLengths, kKey), "19");
}

TEST_F(PrinterRecordWrite, WithoutAddressOrRecordDoesNothing) {
    const VlPrinterRecord made = record("P", "D", "BT1:", "WinPrint");
    uint32_t length = 77;
    EXPECT_EQ(VlCm_WriteMyPrinterInfo(nullptr, &made, &length), FALSE);
    EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, nullptr, &length), FALSE);
    EXPECT_EQ(length, 77u);
    EXPECT_EQ(support::trace_log(), nested("hlp_WriteMyPrinterInfo") + nested("hlp_WriteMyPrinterInfo"));
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(PrinterRecordWrite, WithoutMemoryTellsSuccessAndWritesNothing) {
    const VlPrinterRecord made = record("P", "D", "BT1:", "WinPrint");
    uint32_t length = 77;
    blocks().fail_nth(1);
    EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, &made, &length), TRUE);
    EXPECT_EQ(length, 77u);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(support::trace_log(), nested("hlp_WriteMyPrinterInfo"));
}

TEST_F(PrinterRecordWrite, WhatTheFileRefusesIsNotTold) {
    const VlPrinterRecord made = record("P", "D", "BT1:", "WinPrint");
    for (const char* operation : {"Btsdk_WritePrivateProfileStruct", "Btsdk_WritePrivateProfileString"}) {
        forget_logs();
        uint32_t length = 0;
        VlSim_Fail(operation, 1, FALSE);
        EXPECT_EQ(VlCm_WriteMyPrinterInfo(kAddress, &made, &length), TRUE) << operation;
        EXPECT_EQ(length, 19u);
        EXPECT_EQ(support::sdk_calls().size(), 2u) << operation;
    }
}
