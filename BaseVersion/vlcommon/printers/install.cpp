// Installing a new printer for a device.
#include "frame/frame.h"
#include "installer.h"
#include "printer_record.h"
#include "spooler.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <new>

namespace vl::printers {
namespace {

using PrinterList = SpoolerList<PRINTER_INFO_2A>;

std::atomic<bool> g_installing{false};  // a plain flag: nobody waits for it

// A second installation at the same time is refused. Its end clears the flag too, so that the next one
// is let through even while the first still runs.
class InstallationFlag {
public:
    InstallationFlag() : taken_(g_installing) { g_installing = true; }
    ~InstallationFlag() { g_installing = false; }
    InstallationFlag(const InstallationFlag&) = delete;
    InstallationFlag& operator=(const InstallationFlag&) = delete;
    [[nodiscard]] bool was_taken() const { return taken_; }

private:
    bool taken_;
};

bool has_printer(const PrinterList& list, const char* name) {
    return std::any_of(list.begin(), list.end(), [name](const PRINTER_INFO_2A& each) {
        return strcmp(or_empty(each.pPrinterName), name) == 0;
    });
}

const PRINTER_INFO_2A* first_new(const PrinterList& before, const PrinterList& after) {
    const PRINTER_INFO_2A* const found = std::find_if(
        after.begin(), after.end(),
        [&](const PRINTER_INFO_2A& each) { return !has_printer(before, or_empty(each.pPrinterName)); });
    return found != after.end() ? found : nullptr;
}

// Recorded whether it opens or not.
HANDLE take_new_printer(const uint8_t* address, const PrinterList& before, VlPrinterRecord& record) {
    const PrinterList after = enum_printers();
    if (!after.complete()) return nullptr;
    if (after.size() == before.size()) {
        trace_line("The number of printers is not increased!\r\n");
        return nullptr;
    }
    const PRINTER_INFO_2A* const printer = first_new(before, after);
    if (printer == nullptr) return nullptr;
    UniquePrinter opened = open_printer(printer->pPrinterName);
    record = record_of(*printer);
    write_record(address, &record, nullptr);
    return opened.release();  // the caller closes it
}

HANDLE install(const uint8_t* address) {
    const InstallationFlag flag;
    if (flag.was_taken()) return nullptr;
    const std::unique_ptr<VlPrinterRecord> record(new (std::nothrow) VlPrinterRecord());
    if (!record) return nullptr;
    const PrinterList before = enum_printers();
    Installer installer;
    if (!before.complete() || !run_installer(installer)) return nullptr;
    return take_new_printer(address, before, *record);
}

}  // namespace
}  // namespace vl::printers

using namespace vl;

extern "C" HANDLE VlCm_InstallANewPrinter(const uint8_t* address) {
    TraceScope scope("hlp_InstallANewPrinter");
    return address != nullptr ? printers::install(address) : nullptr;
}
