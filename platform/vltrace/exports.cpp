// The exported functions. Constructor and destructor of the platform's usual compiler are plain
// functions on x64: `this` is the first argument, and the constructor returns it.
#include "VlTraceLog.h"
#include "facility.h"

#include <stdarg.h>
#include <stdio.h>
#include <string.h>

#include <algorithm>

using vltrace::g_facility;
using vltrace::ScopeObject;

namespace {

// The conversions are those of the system's own C runtime, as for every program of the suite. What
// it cannot format is shown as it was passed.
std::string format_line(const char* format, va_list values) {
    char text[2048];
    const int length = _vsnprintf(text, sizeof text - 1, format, values);
    text[sizeof text - 1] = '\0';
    return length == 0 && *format != '\0' ? format : text;
}

uint32_t copy_out(const std::string& value, char* text, uint32_t size) {
    if (text != nullptr && size != 0) {
        const size_t length = std::min<size_t>(value.size(), size - 1);
        memcpy(text, value.data(), length);
        text[length] = '\0';
    }
    return static_cast<uint32_t>(value.size());
}

uint32_t copy_out(const std::vector<std::string>& lines, uint32_t index, char* text, uint32_t size) {
    return copy_out(index < lines.size() ? lines[index] : std::string(), text, size);
}

}  // namespace

extern "C" {

ScopeObject* trace_construct(ScopeObject* self, unsigned long module, char* function) noexcept {
    self->mark = vltrace::kQuiet;
    if (g_facility.listening()) g_facility.enter(*self, module, function);
    return self;
}

void trace_destroy(ScopeObject* self) noexcept {
    if (self->mark != vltrace::kQuiet && g_facility.listening()) {
        g_facility.leave(*self);
    } else {
        self->mark = vltrace::kLeft;
    }
}

void VlTrace_UserDef(unsigned long module, const char* format, ...) noexcept {
    if (!g_facility.listening() || format == nullptr) return;
    va_list values;
    va_start(values, format);
    const std::string text = format_line(format, values);
    va_end(values);
    g_facility.write(module, format, text);
}

void VlTraceLog_Enable(uint32_t on) { g_facility.enable_log(on != 0); }
void VlTraceLog_Clear(void) { g_facility.clear_log(); }
uint32_t VlTraceLog_Count(void) { return static_cast<uint32_t>(g_facility.log_size()); }
uint32_t VlTraceLog_Get(uint32_t index, char* text, uint32_t size) {
    return copy_out(g_facility.log_entry(index).text, text, size);
}
uint32_t VlTraceLog_GetFormat(uint32_t index, char* text, uint32_t size) {
    return copy_out(g_facility.log_entry(index).format, text, size);
}
uint32_t VlTraceLog_OpenScopes(void) { return static_cast<uint32_t>(g_facility.open_scopes().size()); }
uint32_t VlTraceLog_GetOpenScope(uint32_t index, char* text, uint32_t size) {
    return copy_out(g_facility.open_scopes(), index, text, size);
}
uint32_t VlTraceLog_Unbalanced(void) { return static_cast<uint32_t>(g_facility.reports().size()); }
uint32_t VlTraceLog_GetReport(uint32_t index, char* text, uint32_t size) {
    return copy_out(g_facility.reports(), index, text, size);
}

BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, void* /*reserved*/) {
    switch (reason) {
        case DLL_PROCESS_ATTACH:
            g_facility.attach();
            break;
        case DLL_THREAD_DETACH:
            g_facility.end_thread();
            break;
        case DLL_PROCESS_DETACH:
            g_facility.detach();
            break;
        default:
            break;
    }
    return TRUE;
}
}
