#include "floor/floor.h"
#include "rows.h"
#include "vlcm/printers.h"

#include <string.h>

#include <memory>

namespace bench {
namespace {

constexpr uint8_t kAddress[6] = {0xF5, 0xE4, 0xD3, 0xC2, 0xB1, 0xA0};
constexpr char kKey[] = "A0:B1:C2:D3:E4:F5";
constexpr char kStored[] = "Laser 3100 Color\0Laser 3100 PCL 6\0BT1:\0WinPrint\0";
constexpr uint32_t kStoredSize = sizeof kStored;  // with the zero that ends the literal

VlPrinterRecord make_record() {
    VlPrinterRecord record{};
    strcpy(record.printerName, "Laser 3100 Color");
    strcpy(record.driverName, "Laser 3100 PCL 6");
    strcpy(record.portName, "BT1:");
    strcpy(record.printProcessor, "WinPrint");
    return record;
}

// The printer file, as it was before when the last row that uses it is gone.
class PrinterFile {
public:
    PrinterFile() : path_(path()), existed_(GetFileAttributesA(path_.c_str()) != INVALID_FILE_ATTRIBUTES) {}
    ~PrinterFile() {
        for (const char* section : {"QVN_PRINTER_BDADDR_MAP", "QVN_PRINTER_STRU_LEN"}) {
            WritePrivateProfileStringA(section, kKey, nullptr, path_.c_str());
        }
        if (!existed_) DeleteFileA(path_.c_str());
    }
    PrinterFile(const PrinterFile&) = delete;
    PrinterFile& operator=(const PrinterFile&) = delete;

private:
    static std::string path() {
        char folder[MAX_PATH];
        return std::string(folder, GetWindowsDirectoryA(folder, sizeof folder)) + "\\SysWow64\\VLPRINT.INI";
    }
    std::string path_;
    bool existed_;
};

}  // namespace

std::vector<Row> printer_rows(const Suite& suite) {
    const auto write_floor = BENCH_FUNCTION(suite.floor, Floor_WritePrinter);
    const auto write = BENCH_FUNCTION(suite.library, VlCm_WriteMyPrinterInfo);
    const auto read_floor = BENCH_FUNCTION(suite.floor, Floor_ReadPrinter);
    const auto read = BENCH_FUNCTION(suite.library, VlCm_GetMyPrinterInfo);
    const auto file = std::make_shared<PrinterFile>();
    const auto record = std::make_shared<VlPrinterRecord>(make_record());
    const auto read_back = [=] {
        VlPrinterRecord found{};
        return read(kAddress, &found) && memcmp(&found, record.get(), sizeof found) == 0;
    };
    const auto written = [=] {
        uint32_t size = 0;
        write(kAddress, record.get(), &size);
        return size;
    };
    return {
        {.name = "write a printer record",
         .floor_text = "one profile struct, one profile text",
         .target = 1.05,
         .floor = calling(suite.floor.handle(), timed([=] { write_floor(kKey, kStored, kStoredSize); })),
         .library = calling(suite.library.handle(), timed([=] { keep(written()); })),
         .allowance = {.platform_calls = 5, .allocations = 1, .bytes_copied = 80},
         .agree = [=, held = file] { return written() == kStoredSize && read_back(); }},
        {.name = "read a printer record",
         .floor_text = "one profile number, one profile struct",
         .target = 1.05,
         .floor = calling(suite.floor.handle(), timed([=] {
                              char stored[1100];
                              keep(read_floor(kKey, stored));
                          })),
         .library = calling(suite.library.handle(), timed([=] {
                                VlPrinterRecord found;
                                keep(read(kAddress, &found));
                            })),
         .allowance = {.platform_calls = 5, .allocations = 1, .bytes_copied = 80},
         .agree =
             [=, held = file] {
                 write_floor(kKey, kStored, kStoredSize);
                 return read_back();
             }},
    };
}

}  // namespace bench
