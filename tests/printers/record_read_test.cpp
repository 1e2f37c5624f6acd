// Reading printer records: what was stored comes back, damaged entries do not.
#include "printers_test.h"

using namespace printers_test;

namespace {

using Texts = std::vector<std::string>;
constexpr char kKept[] = "kept";

std::string bytes_of(const char* literal, size_t size) { return {literal, size}; }
#define BYTES(literal) bytes_of(literal, sizeof(literal) - 1)

class PrinterRecordRead : public PrinterTest {
protected:
    void store(const std::string& bytes, const std::string& length) {
        WritePrivateProfileStructA(kRecords, kKey, const_cast<char*>(bytes.data()),
                                   static_cast<UINT>(bytes.size()), printer_file().c_str());
        settings().set(printer_file(), kLengths, kKey, length);
        forget_logs();
    }
    void store(const std::string& bytes) { store(bytes, std::to_string(bytes.size())); }

    static Texts texts_of(const VlPrinterRecord& read) {
        return {read.printerName, read.driverName, read.portName, read.printProcessor};
    }
    static void expect_none(const char* why) {
        VlPrinterRecord read = record(kKept, kKept, kKept, kKept);
        const VlPrinterRecord before = read;
        support::clear_trace_log();
        EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), FALSE) << why;
        EXPECT_EQ(memcmp(&read, &before, sizeof read), 0) << why;
        EXPECT_EQ(support::trace_log(), nested("hlp_GetMyPrinterInfo")) << why;
    }
};

}  // namespace

TEST_F(PrinterRecordRead, GivesBackWhatWasWritten) {
    const VlPrinterRecord made = record("Office", "Driver 3", "BT1:", "WinPrint");
    uint32_t length = 0;
    VlCm_WriteMyPrinterInfo(kAddress, &made, &length);
    forget_logs();
    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
    EXPECT_EQ(texts_of(read), texts_of(made));
    EXPECT_EQ(support::trace_log(), nested("hlp_GetMyPrinterInfo"));
    const std::string file = "\"" + printer_file() + "\") = ";
    EXPECT_EQ(
        support::sdk_calls(),
        (Lines{
            "Btsdk_GetPrivateProfileInt(\"QVN_PRINTER_STRU_LEN\", \"66:55:44:33:22:11\", 0, " + file + "31",
            "Btsdk_GetPrivateProfileStruct(\"QVN_PRINTER_BDADDR_MAP\", \"66:55:44:33:22:11\", pointer, 31, " +
                file + "1"}));
}

TEST_F(PrinterRecordRead, TextsBehindAnEmptyOneMoveUpAndTwoEmptyOnesEndIt) {
    const struct {
        const char* label;
        VlPrinterRecord made;
        Texts read;
    } rows[] = {
        {"all", record("P", "D", "B", "W"), {"P", "D", "B", "W"}},
        {"no driver", record("P", "", "B", "W"), {"P", "B", "W", kKept}},
        {"no name", record("", "D", "B", "W"), {"D", "B", "W", kKept}},
        {"no port", record("P", "D", "", "W"), {"P", "D", "W", kKept}},
        {"no processor", record("P", "D", "B", ""), {"P", "D", "B", kKept}},
        {"no driver, no processor", record("P", "", "B", ""), {"P", "B", kKept, kKept}},
        {"no name, no port", record("", "D", "", "W"), {"D", "W", kKept, kKept}},
        {"no driver, no port", record("P", "", "", "W"), {"P", kKept, kKept, kKept}},
        {"no name, no driver", record("", "", "B", "W"), {kKept, kKept, kKept, kKept}},
        {"nothing", record("", "", "", ""), {kKept, kKept, kKept, kKept}},
    };
    support::for_each_row(rows, [](const auto& row) {
        VlCm_WriteMyPrinterInfo(kAddress, &row.made, nullptr);
        VlPrinterRecord read = record(kKept, kKept, kKept, kKept);
        EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
        EXPECT_EQ(texts_of(read), row.read);
    });
}

TEST_F(PrinterRecordRead, SplitsWhateverBytesAreStored) {
    const struct {
        const char* label;
        std::string bytes;
        Texts read;
    } rows[] = {
        {"one byte", BYTES("P"), {"P", kKept, kKept, kKept}},
        {"one zero", BYTES("\0"), {kKept, kKept, kKept, kKept}},
        {"no end", BYTES("P\0D\0BT1:\0Win"), {"P", "D", "BT1:", "Win"}},
        {"text behind two zeros", BYTES("P\0\0\0D\0"), {"P", kKept, kKept, kKept}},
        {"a fifth text",
         BYTES("1\0"
               "2\0"
               "3\0"
               "4\0"
               "5\0\0"),
         {"1", "2", "3", "4"}},
        {"empty ones apart",
         BYTES("\0"
               "1\0\0"
               "2\0\0"
               "3\0\0"
               "4\0\0"),
         {"1", "2", "3", "4"}},
    };
    support::for_each_row(rows, [&](const auto& row) {
        store(row.bytes);
        VlPrinterRecord read = record(kKept, kKept, kKept, kKept);
        EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
        EXPECT_EQ(texts_of(read), row.read);
    });
}

TEST_F(PrinterRecordRead, CutsLongTextsAt259Bytes) {
    store(std::string(300, 'p') + '\0' + std::string(259, 'd') + '\0' + std::string(700, 'w'));
    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
    EXPECT_EQ(texts_of(read),
              (Texts{std::string(259, 'p'), std::string(259, 'd'), std::string(259, 'w'), ""}));
}

TEST_F(PrinterRecordRead, NeedsALengthBetween1And1Mebibyte) {
    const std::string bytes = BYTES("P\0D\0B\0W\0\0");
    for (const char* length : {"0", "", "-1", "-9", "1048577", "2147483647", "4294967295", "nine"}) {
        store(bytes, length);
        expect_none(length);
        EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfileStruct").empty()) << length;
    }
    for (const char* length : {"1", "1048576"}) {  // these are asked for
        store(bytes, length);
        expect_none(length);
        EXPECT_EQ(support::sdk_calls("Btsdk_GetPrivateProfileStruct").size(), 1u) << length;
    }
}

TEST_F(PrinterRecordRead, NeedsALengthThatFitsTheRecord) {
    const std::string bytes = BYTES("P\0D\0B\0W\0\0");
    for (const char* length : {"8", "10"}) {
        store(bytes, length);
        expect_none(length);
    }
    store(bytes, "9");
    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
}

TEST_F(PrinterRecordRead, NeedsTheRightChecksum) {
    store(BYTES("P\0D\0B\0W\0\0"));
    std::string digits = stored(kRecords, kKey);
    ASSERT_EQ(digits.size(), 20u);
    digits[19] = digits[19] == '0' ? '1' : '0';
    settings().set(printer_file(), kRecords, kKey, digits);
    expect_none("checksum");
    settings().set(printer_file(), kRecords, kKey, "");
    expect_none("empty");
}

TEST_F(PrinterRecordRead, OfAnUnknownDeviceIsNone) {
    store(BYTES("P\0D\0B\0W\0\0"));
    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kOther, &read), FALSE);
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, &read), TRUE);
}

TEST_F(PrinterRecordRead, WithoutAddressOrRecordIsNone) {
    store(BYTES("P\0D\0B\0W\0\0"));
    VlPrinterRecord read{};
    EXPECT_EQ(VlCm_GetMyPrinterInfo(nullptr, &read), FALSE);
    EXPECT_EQ(VlCm_GetMyPrinterInfo(kAddress, nullptr), FALSE);
    EXPECT_EQ(support::trace_log(), nested("hlp_GetMyPrinterInfo") + nested("hlp_GetMyPrinterInfo"));
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(PrinterRecordRead, FailsWithEachOfItsSteps) {
    store(BYTES("P\0D\0B\0W\0\0"));
    VlSim_Fail("Btsdk_GetPrivateProfileInt", 1, 0);
    expect_none("length");
    VlSim_Fail("Btsdk_GetPrivateProfileStruct", 1, FALSE);
    expect_none("record");
    blocks().fail_nth(1);
    expect_none("memory");
    blocks().fail_nth(0);
}
