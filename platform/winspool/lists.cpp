// Jobs of a printer, ports and drivers: listed.
#include "answers.h"
#include "call.h"
#include "handles.h"

#include <winspool.h>

namespace vlspool {
namespace {

BOOL unsupported(const char* function, DWORD level) {
    vlsim::report_misuse(function, "level " + std::to_string(level));
    SetLastError(ERROR_INVALID_LEVEL);
    return FALSE;
}

JOB_INFO_1A job_info(const json& job, Texts& texts) {
    JOB_INFO_1A info{};
    info.JobId = job.value("id", 0U);
    info.pDocument = texts.place(job, "document");
    info.pUserName = texts.place(job, "user");
    return info;
}

BOOL list_jobs(HANDLE handle, DWORD first, DWORD level, const Room& room, DWORD* count) {
    const auto opened = printer_of("EnumJobsA", handle);
    if (!opened) return FALSE;
    if (level != 1 || first != 0) return unsupported("EnumJobsA", level);
    json document = read_document();
    const json* const printer = find_printer(document, opened->name);
    if (printer == nullptr) {
        SetLastError(ERROR_PRINTER_DELETED);
        return FALSE;
    }
    return give_list(printer->at("jobs"), room, count, job_info);
}

BOOL list_ports(DWORD level, const Room& room, DWORD* count) {
    if (level != 2) return unsupported("EnumPortsA", level);
    return give_list(read_document().at("ports"), room, count, [](const json& port, Texts& texts) {
        PORT_INFO_2A info{};
        info.pPortName = texts.place(port, "name");
        info.pMonitorName = texts.place(port, "monitor");
        info.pDescription = texts.place(port, "description");
        return info;
    });
}

BOOL list_drivers(DWORD level, const Room& room, DWORD* count) {
    if (level != 1) return unsupported("EnumPrinterDriversA", level);
    return give_list(read_document().at("drivers"), room, count, [](const json& driver, Texts& texts) {
        DRIVER_INFO_1A info{};
        info.pName = texts.place(driver, "name");
        return info;
    });
}

std::string asked(DWORD level, const BYTE* block, DWORD size) {
    return std::to_string(level) + (block ? ", out" : ", null, " + std::to_string(size));
}

}  // namespace
}  // namespace vlspool

using vlspool::asked;
using vlspool::call;
using vlspool::Room;

extern "C" BOOL WINAPI EnumJobsA(HANDLE handle, DWORD first, DWORD number, DWORD level, LPBYTE block,
                                 DWORD size, LPDWORD needed, LPDWORD count) {
    const std::string from = "printer, " + std::to_string(first) + ", " + std::to_string(number) + ", ";
    return call<"EnumJobsA">(from + asked(level, block, size), [=] {
        return vlspool::list_jobs(handle, first, level, Room{block, size, needed}, count);
    });
}

extern "C" BOOL WINAPI EnumPortsA(LPSTR /*server*/, DWORD level, LPBYTE block, DWORD size, LPDWORD needed,
                                  LPDWORD count) {
    return call<"EnumPortsA">(asked(level, block, size), [=] {
        return vlspool::list_ports(level, Room{block, size, needed}, count);
    });
}

extern "C" BOOL WINAPI EnumPrinterDriversA(LPSTR /*server*/, LPSTR /*environment*/, DWORD level, LPBYTE block,
                                           DWORD size, LPDWORD needed, LPDWORD count) {
    return call<"EnumPrinterDriversA">(asked(level, block, size), [=] {
        return vlspool::list_drivers(level, Room{block, size, needed}, count);
    });
}
