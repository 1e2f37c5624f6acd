#include "spooler.h"

#include "frame/frame.h"

#include <algorithm>
#include <new>

namespace vl::printers {
namespace {

// What an enumeration writes into the trace; readers of traces look for these texts.
struct Wording {
    const char* scope;
    const char* sized;    // last error
    const char* read;     // last error, result
    const char* counted;  // number of entries
};
constexpr Wording kPrinters = {"MyEnumPrinter", "1 EnumPrinter err: %x\r\n",
                               "2 EnumPrinter err=%x ret= %x \r\n", "3 EnumPrinter num of Prnt=%d \r\n"};
constexpr Wording kJobs = {"MyEnumJobs", "1 EnumJobs err: %x\r\n", "2 EnumJobs err=%x ret=%x \r\n",
                           "3 EnumJobs num of job=%d \r\n"};
constexpr Wording kPorts = {"MyEnumPorts", "1 EnumPorts err: %x\r\n", "2 EnumPorts err= %x ret= %x \r\n",
                            "EnumPorts num of port= %d\r\n"};

template <typename Info, typename Ask>
SpoolerList<Info> enumerate(const Wording& wording, Ask ask) {
    TraceScope scope(wording.scope);
    DWORD needed = 0;
    DWORD count = 0;
    ask(nullptr, 0, &needed, &count);
    trace_line(wording.sized, GetLastError());

    BYTE no_room = 0;  // without memory the spooler is asked all the same, and refuses
    DWORD size = std::max<DWORD>(needed, 1);
    std::unique_ptr<BYTE[]> block(new (std::nothrow) BYTE[size]());
    if (!block) size = sizeof no_room;
    const BOOL read = ask(block ? block.get() : &no_room, size, &needed, &count);
    trace_line(wording.read, GetLastError(), read);
    if (!read || !block) {
        block.reset();
        count = 0;
    }
    trace_line(wording.counted, count);
    return SpoolerList<Info>(std::move(block), count);
}

}  // namespace

SpoolerList<PRINTER_INFO_2A> enum_printers() {
    return enumerate<PRINTER_INFO_2A>(kPrinters, [](BYTE* list, DWORD size, DWORD* needed, DWORD* count) {
        return EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, list, size, needed, count);
    });
}

SpoolerList<JOB_INFO_1A> enum_jobs(HANDLE printer) {
    constexpr DWORD kAll = 0xFFFFFFFF;
    return enumerate<JOB_INFO_1A>(kJobs, [printer](BYTE* list, DWORD size, DWORD* needed, DWORD* count) {
        return EnumJobsA(printer, 0, kAll, 1, list, size, needed, count);
    });
}

SpoolerList<PORT_INFO_2A> enum_ports() {
    return enumerate<PORT_INFO_2A>(kPorts, [](BYTE* list, DWORD size, DWORD* needed, DWORD* count) {
        return EnumPortsA(nullptr, 2, list, size, needed, count);
    });
}

UniquePrinter open_printer(const char* name) {
    PRINTER_DEFAULTSA defaults{nullptr, nullptr, PRINTER_ALL_ACCESS};
    UniquePrinter printer;
    if (!OpenPrinterA(const_cast<char*>(or_empty(name)), printer.receive(), &defaults)) {
        (void)printer.release();  // whatever a refused call left there is no handle
    }
    return printer;
}

bool is_busy(HANDLE printer) {
    TraceScope scope("hlp_IsPrinterBusy");
    return enum_jobs(printer).size() != 0;
}

}  // namespace vl::printers

using namespace vl;

extern "C" BOOL VlCm_IsPrinterBusy(HANDLE printer) { return printers::is_busy(printer); }

extern "C" BOOL VlCm_IsPrinterBusyNew(HANDLE printer) { return printers::is_busy(printer); }
