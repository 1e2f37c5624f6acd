// The message filter that Vista put between programs of different rights.
#include "frame/frame.h"
#include "frame/system_library.h"
#include "vlcm/companions.h"
#include "vlcm/settings.h"

namespace vl::process {
namespace {

constexpr DWORD kLetThrough = 1;  // MSGFLT_ADD, which the headers declare for Vista on only
constexpr DWORD kHoldBack = 2;    // MSGFLT_REMOVE

using FilterCall = BOOL(WINAPI*)(UINT message, DWORD flag);

// Earlier systems lack the function, so that it is resolved by name.
FilterCall filter_call() {
    return reinterpret_cast<FilterCall>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("User32.dll"), "ChangeWindowMessageFilter")));
}

BOOL change_filter(uint32_t message, BOOL add) {
    const UniqueModule user32(load_system_library("user32.dll"));  // a console program may not have it
    const FilterCall filter = filter_call();
    if (filter == nullptr) {
        trace_line("Error GetProcAddress ChangeWindowMessageFilter");
        return FALSE;
    }
    return filter(message, add ? kLetThrough : kHoldBack);
}

}  // namespace
}  // namespace vl::process

extern "C" BOOL VlCm_ChangeMsgFiter(uint32_t message, BOOL add) {
    vl::TraceScope scope("VlCm_ChangeMsgFiter");
    return VlCm_IsWindowsVistaAbove() ? vl::process::change_filter(message, add) : TRUE;
}
