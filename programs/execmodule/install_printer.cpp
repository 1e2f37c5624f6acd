#include "install_printer.h"

#include "VlCommon.h"

#include <windows.h>

#include <winspool.h>

#include <algorithm>
#include <vector>

namespace programs {
namespace {

// One member of each entry of a list of the spooler.
template <typename Info, typename Ask>
std::vector<std::string> texts_of(Ask ask, char* Info::*member) {
    DWORD needed = 0, count = 0;
    ask(nullptr, 0, &needed, &count);
    std::vector<BYTE> block(std::max<DWORD>(needed, 1));
    if (!ask(block.data(), needed, &needed, &count)) count = 0;
    std::vector<std::string> texts;
    const auto* const entries = reinterpret_cast<const Info*>(block.data());
    for (DWORD i = 0; i < count; ++i) texts.emplace_back(entries[i].*member ? entries[i].*member : "");
    return texts;
}

std::vector<std::string> ports() {
    return texts_of([](BYTE* block, DWORD size, DWORD* needed,
                       DWORD* count) { return EnumPortsA(nullptr, 2, block, size, needed, count); },
                    &PORT_INFO_2A::pPortName);
}

std::vector<std::string> ports_with_printers() {
    return texts_of(
        [](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, block, size, needed, count);
        },
        &PRINTER_INFO_2A::pPortName);
}

std::vector<std::string> drivers() {
    return texts_of(
        [](BYTE* block, DWORD size, DWORD* needed, DWORD* count) {
            return EnumPrinterDriversA(nullptr, nullptr, 1, block, size, needed, count);
        },
        &DRIVER_INFO_1A::pName);
}

// The first Bluetooth port without a printer; empty: none.
std::string free_port() {
    const std::vector<std::string> taken = ports_with_printers();
    for (const std::string& port : ports()) {
        const bool is_taken = std::find(taken.begin(), taken.end(), port) != taken.end();
        if (!is_taken && VlCm_IsBTPort(port.c_str())) return port;
    }
    return {};
}

std::string add_printer(std::string port) {
    std::vector<std::string> known = drivers();
    if (port.empty() || known.empty()) return "no Bluetooth port without a printer, or no driver";
    std::string name = "Bluetooth printer on " + port.substr(0, port.find(':'));
    char processor[] = "WinPrint";
    PRINTER_INFO_2A printer{};
    printer.pPrinterName = name.data();
    printer.pPortName = port.data();
    printer.pDriverName = known.front().data();
    printer.pPrintProcessor = processor;
    const HANDLE added = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
    if (added == nullptr) return "the spooler refused " + name + ": " + std::to_string(GetLastError());
    ClosePrinter(added);
    return "installed " + name;
}

void tell_done() {
    const HANDLE done = OpenEventA(EVENT_MODIFY_STATE, FALSE, "InstPrnt");
    if (done == nullptr) return;
    SetEvent(done);
    CloseHandle(done);
}

}  // namespace

std::string install_printer() {
    const std::string answer = add_printer(free_port());
    tell_done();
    return answer;
}

}  // namespace programs
