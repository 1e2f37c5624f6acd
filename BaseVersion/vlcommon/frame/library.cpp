// Attach and detach.
#include <windows.h>

namespace {
// Held while the library is loaded; nothing waits on it.
HANDLE g_library_semaphore = nullptr;
}  // namespace

// The system's entry point; always answers TRUE.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, void* /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_library_semaphore = CreateSemaphoreA(nullptr, 1, 1, nullptr);
    } else if (reason == DLL_PROCESS_DETACH && g_library_semaphore != nullptr) {
        CloseHandle(g_library_semaphore);
        g_library_semaphore = nullptr;
    }
    return TRUE;
}
