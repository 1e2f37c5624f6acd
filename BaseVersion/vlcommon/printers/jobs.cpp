// Print jobs on Bluetooth ports: whether there are any, and cancelling them all.
#include "frame/frame.h"
#include "frame/unique_heap.h"
#include "printer_file.h"
#include "spooler.h"
#include "vlcm/printers.h"

#include <algorithm>

namespace vl::printers {
namespace {

BOOL is_any_busy(ProfileCalls calls) {
    for (const PRINTER_INFO_2A& entry : enum_printers()) {
        if (!is_bluetooth_port(entry.pPortName, calls)) continue;
        const UniquePrinter printer = open_printer(entry.pPrinterName);
        if (!printer) {
            trace_line("Can not open printer : %s\r\n", or_empty(entry.pPrinterName));
        } else if (is_busy(printer.get())) {
            return TRUE;
        }
    }
    return FALSE;
}

// A printer's level-2 properties, read again and again.
class Properties {
public:
    explicit Properties(HANDLE printer) : printer_(printer) {
        DWORD needed = 0;
        GetPrinterA(printer, 2, nullptr, 0, &needed);
        size_ = std::max<DWORD>(needed, sizeof(PRINTER_INFO_2A));
        block_.reset(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, size_));
    }
    explicit operator bool() const { return static_cast<bool>(block_); }
    [[nodiscard]] bool read() {
        DWORD needed = 0;
        return GetPrinterA(printer_, 2, static_cast<BYTE*>(block_.get()), size_, &needed) != FALSE;
    }
    [[nodiscard]] DWORD jobs() const { return static_cast<const PRINTER_INFO_2A*>(block_.get())->cJobs; }

private:
    HANDLE printer_;
    DWORD size_ = 0;
    UniqueHeapBlock block_;
};

void purge(HANDLE printer) {
    SetPrinterA(printer, 0, nullptr, PRINTER_CONTROL_PURGE);
    trace_line("Setprinter err=%x\r\n", GetLastError());
}

// A job that is being printed ends when the device lets it: the wait has no limit. False: the printer
// could not be read while it had jobs.
bool cancel_jobs(HANDLE printer, Properties& properties) {
    constexpr DWORD kPause_ms = 1000;
    purge(printer);
    (void)properties.read();  // not tested: without an answer there is nothing to wait for
    while (properties.jobs() != 0) {
        Sleep(kPause_ms);
        if (!properties.read()) {
            trace_line("Can not retrieve information from the specified printer\r\n");
            return false;
        }
        purge(printer);
    }
    return true;
}

// Callers rely on the inverted sense: FALSE is success.
BOOL cancel_all_jobs(ProfileCalls calls) {
    TraceScope scope("CancelJobs");
    for (const PRINTER_INFO_2A& entry : enum_printers()) {
        const UniquePrinter printer = open_printer(entry.pPrinterName);
        if (!printer) continue;
        Properties properties(printer.get());
        if (!properties) return FALSE;
        if (is_bluetooth_port(entry.pPortName, calls) && !cancel_jobs(printer.get(), properties)) return TRUE;
    }
    return FALSE;
}

}  // namespace
}  // namespace vl::printers

using namespace vl::printers;

extern "C" BOOL VlCm_IsBtPortBusy() { return is_any_busy(ProfileCalls::kStack); }

extern "C" BOOL VlCm_IsBtPortBusyNew() { return is_any_busy(ProfileCalls::kWindows); }

extern "C" BOOL VlCm_DoCancelAllPrintJob() { return cancel_all_jobs(ProfileCalls::kStack); }

extern "C" BOOL VlCm_DoCancelAllPrintJobNew() { return cancel_all_jobs(ProfileCalls::kWindows); }
