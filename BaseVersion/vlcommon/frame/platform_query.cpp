#include "platform_query.h"

#include "vlcm/settings.h"

namespace vl {

BOOL GetWow64Flag() {
    using IsWow64ProcessCall = BOOL(WINAPI*)(HANDLE, BOOL*);
    const auto query = reinterpret_cast<IsWow64ProcessCall>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "IsWow64Process")));
    BOOL flag = FALSE;
    if (query != nullptr) query(GetCurrentProcess(), &flag);
    return flag;
}

}  // namespace vl

extern "C" BOOL VlCm_IsX64Platform() { return TRUE; }

extern "C" BOOL VlCm_IsWindowsVistaAbove() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExA(&version);  // a failed call leaves major version 0
    return version.dwMajorVersion >= 6;
}
