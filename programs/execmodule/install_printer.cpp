#include "install_printer.h"

#include "VlCommon.h"
#include "spooler_lists.h"

#include <windows.h>

#include <winspool.h>

#include <algorithm>
#include <vector>

namespace programs {
namespace {

// The first Bluetooth port without a printer; empty: none.
std::string free_port() {
    const std::vector<SpoolerPrinter> printers = spooler_printers();
    for (const std::string& port : spooler_ports()) {
        const bool is_taken = std::any_of(printers.begin(), printers.end(),
                                          [&port](const SpoolerPrinter& each) { return each.port == port; });
        if (!is_taken && VlCm_IsBTPort(port.c_str())) return port;
    }
    return {};
}

std::string add_printer(std::string port) {
    std::vector<std::string> known = spooler_drivers();
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
    std::string answer = add_printer(free_port());
    tell_done();
    return answer;
}

}  // namespace programs
