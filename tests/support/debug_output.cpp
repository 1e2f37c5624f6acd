#include "support/debug_output.h"

namespace support {
namespace {

SRWLOCK g_lock = SRWLOCK_INIT;
std::vector<std::string> g_lines;

void collect(ULONG_PTR text) {
    AcquireSRWLockExclusive(&g_lock);
    g_lines.emplace_back(reinterpret_cast<const char*>(text));
    ReleaseSRWLockExclusive(&g_lock);
}

LONG CALLBACK on_exception(EXCEPTION_POINTERS* pointers) {
    constexpr DWORD kAnsi = 0x40010006, kWide = 0x4001000A;
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == kWide) {
        collect(record.ExceptionInformation[3]);  // the same text in the ANSI code page
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    if (record.ExceptionCode == kAnsi) {
        collect(record.ExceptionInformation[1]);
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

DebugOutput::DebugOutput() : handler_(AddVectoredExceptionHandler(1, on_exception)) { g_lines.clear(); }

DebugOutput::~DebugOutput() { RemoveVectoredExceptionHandler(handler_); }

std::vector<std::string> DebugOutput::lines() const {
    AcquireSRWLockShared(&g_lock);
    std::vector<std::string> lines = g_lines;
    ReleaseSRWLockShared(&g_lock);
    return lines;
}

std::string DebugOutput::text() const {
    std::string text;
    for (const std::string& line : lines()) text += line;
    return text;
}

}  // namespace support
