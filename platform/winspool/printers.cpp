// Printers: listed, opened, read, controlled, added, deleted.
#include "answers.h"
#include "call.h"
#include "handles.h"

#include <winspool.h>

namespace vlspool {
namespace {

PRINTER_INFO_2A printer_info(const json& printer, Texts& texts) {
    PRINTER_INFO_2A info{};
    info.pPrinterName = texts.place(printer, "name");
    info.pPortName = texts.place(printer, "port");
    info.pDriverName = texts.place(printer, "driver");
    info.pPrintProcessor = texts.place(printer, "processor", "WinPrint");
    info.pComment = texts.place(printer, "comment");
    info.cJobs = static_cast<DWORD>(printer.at("jobs").size());
    info.Attributes = PRINTER_ATTRIBUTE_LOCAL;
    return info;
}

bool supported(const char* function, DWORD level) {
    if (level == 2) return true;
    vlsim::report_misuse(function, "level " + std::to_string(level));
    SetLastError(ERROR_INVALID_LEVEL);
    return false;
}

// The error with which a printer refuses an operation, by its scenario.
bool refuses(const json& printer, const char* operation) {
    const uint32_t error = printer.value("refuses", json::object()).value(operation, 0U);
    if (error != 0) SetLastError(error);
    return error != 0;
}

bool may_administer(const OpenedPrinter& opened) {
    const bool allowed = (opened.access & PRINTER_ACCESS_ADMINISTER) != 0;
    if (!allowed) SetLastError(ERROR_ACCESS_DENIED);
    return allowed;
}

// Runs on the printer of a handle, in the document, and writes it back; FALSE when it is gone.
template <typename Change>
BOOL change_printer(const OpenedPrinter& opened, Change change) {
    DWORD error = ERROR_WRITE_FAULT;
    const bool changed = change_document([&](json& document) {
        json* const printer = find_printer(document, opened.name);
        SetLastError(ERROR_PRINTER_DELETED);
        const bool done = printer != nullptr && change(document, *printer);
        if (!done) error = GetLastError();
        return done;
    });
    if (!changed) SetLastError(error);
    return changed;
}

BOOL list(DWORD flags, DWORD level, const Room& room, DWORD* count) {
    if (!supported("EnumPrintersA", level)) return FALSE;
    const json document = read_document();
    const bool local = (flags & PRINTER_ENUM_LOCAL) != 0;
    return give_list(local ? document.at("printers") : json::array(), room, count, printer_info);
}

BOOL open(const char* name, HANDLE* handle, const PRINTER_DEFAULTSA* defaults) {
    json document = read_document();
    const json* const printer = find_printer(document, utf8_text(name));
    if (printer == nullptr) {
        SetLastError(ERROR_INVALID_PRINTER_NAME);
        return FALSE;
    }
    if (refuses(*printer, "open")) return FALSE;
    *handle = new_handle(printer->at("name"), defaults ? defaults->DesiredAccess : PRINTER_ACCESS_USE);
    return TRUE;
}

BOOL close(HANDLE handle) {
    if (!printer_of("ClosePrinter", handle)) return FALSE;
    drop_handle(handle);
    return TRUE;
}

// A job that is being printed ends after a number of readings.
void let_jobs_proceed(json& printer) {
    json left = json::array();
    for (json& job : printer.at("jobs")) {
        if (job.contains("reads")) {
            const uint32_t reads = job.at("reads");
            if (reads <= 1) continue;
            job["reads"] = reads - 1;
        }
        left.push_back(job);
    }
    printer["jobs"] = left;
}

BOOL read(HANDLE handle, DWORD level, const Room& room) {
    const auto opened = printer_of("GetPrinterA", handle);
    if (!opened || !supported("GetPrinterA", level)) return FALSE;
    return change_printer(*opened, [&](json&, json& printer) {
        if (refuses(printer, "read") || !give(json::array({printer}), room, printer_info)) return false;
        let_jobs_proceed(printer);
        return true;
    });
}

BOOL control(HANDLE handle, DWORD level, DWORD command) {
    const auto opened = printer_of("SetPrinterA", handle);
    if (!opened || !may_administer(*opened)) return FALSE;
    if (level != 0 || command != PRINTER_CONTROL_PURGE) {
        vlsim::report_misuse("SetPrinterA", "only purging is simulated");
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return change_printer(*opened, [](json&, json& printer) {
        if (refuses(printer, "purge")) return false;
        json left = json::array();
        for (const json& job : printer.at("jobs")) {
            if (job.contains("reads")) left.push_back(job);  // what is being printed is not stopped
        }
        printer["jobs"] = left;
        return true;
    });
}

BOOL remove(HANDLE handle) {
    const auto opened = printer_of("DeletePrinter", handle);
    if (!opened || !may_administer(*opened)) return FALSE;
    return change_printer(*opened, [](json& document, json& printer) {
        if (refuses(printer, "delete")) return false;
        json& printers = document.at("printers");
        printers.erase(static_cast<size_t>(&printer - &printers[0]));
        return true;
    });
}

bool has_named(const json& items, const std::string& name) {
    for (const json& item : items) {
        if (_stricmp(item.at("name").get_ref<const std::string&>().c_str(), name.c_str()) == 0) return true;
    }
    return false;
}

bool can_add(json& document, const json& printer) {
    DWORD error = ERROR_SUCCESS;
    if (find_printer(document, printer.at("name"))) error = ERROR_PRINTER_ALREADY_EXISTS;
    if (!has_named(document.at("drivers"), printer.at("driver"))) error = ERROR_UNKNOWN_PRINTER_DRIVER;
    if (!has_named(document.at("ports"), printer.at("port"))) error = ERROR_UNKNOWN_PORT;
    SetLastError(error);
    return error == ERROR_SUCCESS;
}

HANDLE add(DWORD level, const BYTE* record) {
    if (!supported("AddPrinterA", level)) return nullptr;
    const auto& info = *reinterpret_cast<const PRINTER_INFO_2A*>(record);
    const json printer = {{"name", utf8_text(info.pPrinterName)},
                          {"driver", utf8_text(info.pDriverName)},
                          {"port", utf8_text(info.pPortName)},
                          {"processor", utf8_text(info.pPrintProcessor)}};
    const bool added = change_document([&](json& document) {
        if (!can_add(document, printer)) return false;
        document.at("printers").push_back(printer);
        return true;
    });
    return added ? new_handle(printer.at("name"), PRINTER_ALL_ACCESS) : nullptr;
}

}  // namespace

std::string access_text(const void* defaults) {
    char text[32] = "no access";
    if (defaults) {
        snprintf(text, sizeof text, "access 0x%lx",
                 static_cast<const PRINTER_DEFAULTSA*>(defaults)->DesiredAccess);
    }
    return text;
}

}  // namespace vlspool

using vlspool::call;
using vlspool::Room;

namespace {

// `null, 0` when only the size is asked for.
std::string sized(const BYTE* block, DWORD size) { return block ? "out" : "null, " + std::to_string(size); }

}  // namespace

extern "C" BOOL WINAPI EnumPrintersA(DWORD flags, LPSTR name, DWORD level, LPBYTE block, DWORD size,
                                     LPDWORD needed, LPDWORD count) {
    std::string text;
    vlsim::append_value(text, static_cast<const char*>(name));
    text = std::to_string(flags) + ", " + text + ", " + std::to_string(level) + ", " + sized(block, size);
    return call<"EnumPrintersA">(text, [=] {
        return vlspool::list(flags, level, Room{block, size, needed}, count);
    });
}

extern "C" BOOL WINAPI OpenPrinterA(LPSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSA defaults) {
    std::string text;
    vlsim::append_value(text, static_cast<const char*>(name));
    return call<"OpenPrinterA">(text + ", " + vlspool::access_text(defaults),
                                [=] { return vlspool::open(name, handle, defaults); });
}

extern "C" BOOL WINAPI ClosePrinter(HANDLE handle) {
    return call<"ClosePrinter">("printer", [=] { return vlspool::close(handle); });
}

extern "C" BOOL WINAPI GetPrinterA(HANDLE handle, DWORD level, LPBYTE block, DWORD size, LPDWORD needed) {
    return call<"GetPrinterA">("printer, " + std::to_string(level) + ", " + sized(block, size), [=] {
        return vlspool::read(handle, level, Room{block, size, needed});
    });
}

extern "C" BOOL WINAPI SetPrinterA(HANDLE handle, DWORD level, LPBYTE /*record*/, DWORD command) {
    return call<"SetPrinterA">("printer, " + std::to_string(level) + ", " + std::to_string(command),
                               [=] { return vlspool::control(handle, level, command); });
}

extern "C" BOOL WINAPI DeletePrinter(HANDLE handle) {
    return call<"DeletePrinter">("printer", [=] { return vlspool::remove(handle); });
}

extern "C" HANDLE WINAPI AddPrinterA(LPSTR /*server*/, DWORD level, LPBYTE record) {
    return call<"AddPrinterA">(std::to_string(level), [=] { return vlspool::add(level, record); });
}
