// Whether a device's printer is installed: in the printer file, the registry and the spooler.
#include "frame/frame.h"
#include "printer_file.h"
#include "printer_record.h"
#include "spooler.h"

namespace vl::printers {
namespace {

// 0: found; otherwise the code that ended the walk.
LSTATUS find_subkey(HKEY printers, const char* name) {
    for (DWORD i = 0;; ++i) {
        char subkey[kPathSize] = {};
        DWORD size = sizeof subkey;
        const LSTATUS code = RegEnumKeyExA(printers, i, subkey, &size, nullptr, nullptr, nullptr, nullptr);
        if (code != ERROR_SUCCESS || strcmp(subkey, name) == 0) return code;
    }
}

UniqueRegistryKey open_printers() {
    UniqueRegistryKey printers;
    const LSTATUS code =
        RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\", 0,
                      KEY_READ, printers.receive());
    if (code != ERROR_SUCCESS) {
        (void)printers.release();
        trace_line("RegOpenKey 2 --- err= %x\r\n", code);
    }
    return printers;
}

bool is_in_registry(const char* name) {
    TraceScope scope("IsPrinterExistNew");
    trace_line("input %s\r\n", name);
    const UniqueRegistryKey printers = open_printers();
    if (!printers) return false;
    const LSTATUS code = find_subkey(printers.get(), name);
    if (code == ERROR_SUCCESS) {
        trace_line("Find target =%s\r\n", name);
    } else if (code == ERROR_NO_MORE_ITEMS) {
        trace_line("end enum key\r\n");
    } else {
        trace_line("IsPrinterExistNew --- err= %x \r\n", code);
    }
    return code == ERROR_SUCCESS;
}

// A recorded printer that the system does not know any more is forgotten.
BOOL confirm_record(const uint8_t* address) {
    VlPrinterRecord record{};
    if (read_record(address, &record) && is_in_registry(record.printerName)) {
        trace_line("The printer information exists in .ini and register!\r\n");
        return TRUE;
    }
    remove_record(address);
    trace_line("The printer information exists in .ini, but not in system! We delete it!\r\n");
    return FALSE;
}

BOOL adopt_from_spooler(const uint8_t* address) {
    VlPrinterRecord record{};
    if (!VlCm_IsPrinterInfoInSystem(address, &record)) return FALSE;
    trace_line("The printer set up from system-property-sheet, write it to .ini\r\n");
    write_record(address, &record, nullptr);
    return TRUE;
}

BOOL is_installed(const uint8_t* address) {
    switch (find_entry(address)) {
        case Entry::kPresent:
            return confirm_record(address);
        case Entry::kAbsent:
            return adopt_from_spooler(address);
        default:
            return FALSE;
    }
}

BOOL find_in_spooler(const uint8_t* address, VlPrinterRecord* record) {
    const AddressText wanted = address_text(address);
    for (const PRINTER_INFO_2A& printer : enum_printers()) {
        const PortDevice device = port_device(or_empty(printer.pPortName), ProfileCalls::kStack);
        if (_stricmp(device.text, wanted.text) != 0) continue;
        trace_line("This printer already exists!\r\n");
        if (record != nullptr) *record = record_of(printer);
        return TRUE;
    }
    return FALSE;
}

}  // namespace
}  // namespace vl::printers

using namespace vl;

extern "C" BOOL VlCm_IsPrinterInstalled(const uint8_t* address) {
    TraceScope scope("hlp_IsPrinterInstalled");
    return address != nullptr && printers::is_installed(address);
}

extern "C" BOOL VlCm_IsPrinterInfoInSystem(const uint8_t* address, VlPrinterRecord* record) {
    if (address != nullptr) return printers::find_in_spooler(address, record);
    trace_line("the address is invalid!\r\n");
    return FALSE;
}
