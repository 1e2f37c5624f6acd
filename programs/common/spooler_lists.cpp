#include "spooler_lists.h"

#include <winspool.h>

#include <algorithm>

namespace programs {
namespace {

std::string text_of(const char* text) { return text != nullptr ? text : ""; }

// A list that the spooler does not give is empty.
template <typename Info, typename Ask, typename Take>
auto listed(Ask ask, Take take) {
    DWORD needed = 0, count = 0;
    ask(nullptr, 0, &needed, &count);
    std::vector<BYTE> block(std::max<DWORD>(needed, 1));
    if (!ask(block.data(), needed, &needed, &count)) count = 0;
    const auto* const entries = reinterpret_cast<const Info*>(block.data());
    std::vector<decltype(take(*entries))> list;
    for (DWORD i = 0; i < count; ++i) list.push_back(take(entries[i]));
    return list;
}

}  // namespace

std::vector<SpoolerPrinter> spooler_printers() {
    return listed<PRINTER_INFO_2A>(
        [](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, block, size, needed, count);
        },
        [](const PRINTER_INFO_2A& printer) {
            return SpoolerPrinter{text_of(printer.pPrinterName), text_of(printer.pDriverName),
                                  text_of(printer.pPortName), printer.cJobs};
        });
}

std::vector<std::string> spooler_ports() {
    return listed<PORT_INFO_2A>(
        [](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumPortsA(nullptr, 2, block, size, needed, count);
        },
        [](const PORT_INFO_2A& port) { return text_of(port.pPortName); });
}

std::vector<std::string> spooler_drivers() {
    return listed<DRIVER_INFO_1A>(
        [](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumPrinterDriversA(nullptr, nullptr, 1, block, size, needed, count);
        },
        [](const DRIVER_INFO_1A& driver) { return text_of(driver.pName); });
}

}  // namespace programs
