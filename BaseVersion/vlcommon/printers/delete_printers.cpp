// Deleting Bluetooth printers: one by its device, or all.
#include "frame/frame.h"
#include "printer_file.h"
#include "printer_record.h"
#include "spooler.h"
#include "vlcm/companions.h"

namespace vl::printers {
namespace {

// The tray agent tells the user that only an administrator may do this.
void tell_refused() {
    constexpr uint16_t kRequest = 0x0203;
    constexpr uint16_t kNoRights = 0x491C;
    VlCm_PostMsg2Vltray(kRequest, kNoRights, 0);
}

// A test that cannot be made permits: the spooler has the last word.
bool is_permitted() {
    BOOL administrator = FALSE;
    if (!VlCm_IsCurrentUserAdmin(&administrator)) {
        trace_line("Can not check authority of the current user\r\n");
        return true;
    }
    if (administrator) return true;
    trace_line("not legal user!\r\n");
    tell_refused();
    return false;
}

UniquePrinter open_for_deletion(const char* name) {
    UniquePrinter printer = open_printer(name);
    if (!printer && GetLastError() == ERROR_ACCESS_DENIED) {
        trace_line("access denied!\r\n");
        tell_refused();
    }
    return printer;
}

bool delete_idle(HANDLE printer) {
    if (is_busy(printer)) return false;
    if (DeletePrinter(printer)) {
        trace_line("can delete printer!\r\n");
        return true;
    }
    trace_line("can not delete printer, last error is %d!\r\n", GetLastError());
    return false;
}

BOOL delete_by_address(const uint8_t* address) {
    VlPrinterRecord record{};
    if (!is_permitted() || !read_record(address, &record)) return FALSE;
    const UniquePrinter printer = open_for_deletion(record.printerName);
    if (!printer || !delete_idle(printer.get())) return FALSE;
    remove_record(address);
    return TRUE;
}

// The answer is that of the last printer's port, and yes when there is no printer: callers rely on it.
BOOL delete_all(ProfileCalls calls) {
    TraceScope scope("hlp_DeleteAllBTPrinter");
    bool last_is_bluetooth = true;
    for (const PRINTER_INFO_2A& entry : enum_printers()) {
        const UniquePrinter printer = open_printer(entry.pPrinterName);
        last_is_bluetooth = is_bluetooth_port(entry.pPortName, calls);
        if (printer && last_is_bluetooth) DeletePrinter(printer.get());
    }
    return last_is_bluetooth;
}

}  // namespace
}  // namespace vl::printers

using namespace vl;

extern "C" BOOL VlCm_DeleteMyPrinterByBDAddr(const uint8_t* address) {
    TraceScope scope("hlp_DeleteMyPrinterByBDAddr");
    return address != nullptr && printers::delete_by_address(address);
}

extern "C" BOOL VlCm_DeleteAllBTPrinter() { return printers::delete_all(printers::ProfileCalls::kStack); }

extern "C" BOOL VlCm_DeleteAllBTPrinterNew() {
    return printers::delete_all(printers::ProfileCalls::kWindows);
}
