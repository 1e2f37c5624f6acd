#include "VlSDK.h"
#include "floor.h"

#include <windows.h>

#include <stdio.h>
#include <string.h>

namespace {

constexpr char kRecords[] = "QVN_PRINTER_BDADDR_MAP";
constexpr char kLengths[] = "QVN_PRINTER_STRU_LEN";

struct PrinterFile {
    PrinterFile() {
        constexpr char kName[] = "\\SysWow64\\VLPRINT.INI";
        memcpy(path + GetWindowsDirectoryA(path, MAX_PATH), kName, sizeof kName);
    }
    char path[2 * MAX_PATH];
};

}  // namespace

extern "C" void Floor_WritePrinter(const char* key, const char* stored, uint32_t size) {
    const PrinterFile file;
    char bytes[1100];
    memcpy(bytes, stored, size);
    char length[12];
    snprintf(length, sizeof length, "%u", size);
    Btsdk_WritePrivateProfileStruct(kRecords, key, bytes, size, file.path);
    Btsdk_WritePrivateProfileString(kLengths, key, length, file.path);
}

extern "C" uint32_t Floor_ReadPrinter(const char* key, char* stored) {
    const PrinterFile file;
    const uint32_t size = Btsdk_GetPrivateProfileInt(kLengths, key, 0, file.path);
    return Btsdk_GetPrivateProfileStruct(kRecords, key, stored, size, file.path) ? size : 0;
}
