#include "installer.h"

#include "frame/frame.h"
#include "frame/system_library.h"
#include "vlcm/settings.h"

#include <shellapi.h>

namespace vl::printers {
namespace {

constexpr GUID kPrinterClass = {0x4D36E979, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

PathBuffer execution_module() {
    constexpr unsigned kFolderRoom = 259;
    PathBuffer path;
    VlCm_GetInstallDir(path.data(), kFolderRoom);
    path.append("\\").append("VlExecuteModule.exe");
    return path;
}

}  // namespace

bool run_execution_module(Installer& installer) {
    constexpr INT_PTR kLastFailure = 32;
    installer.done.reset(CreateEventA(nullptr, FALSE, FALSE, "InstPrnt"));
    if (!installer.done) return false;
    const PathBuffer path = execution_module();
    const HINSTANCE started = ShellExecuteA(GetDesktopWindow(), "open", path.text(),
                                            "QVN_VLEXECUTEMODULE_INSTALLPRINTER", nullptr, SW_SHOWNORMAL);
    if (reinterpret_cast<INT_PTR>(started) <= kLastFailure) return false;
    WaitForSingleObject(installer.done.get(), INFINITE);
    return true;
}

bool run_device_installer(Installer& installer) {
    using InstallNewDevice = BOOL(WINAPI*)(HWND, const GUID*, DWORD*);
    installer.newdev.reset(load_system_library("NewDev.dll"));
    if (!installer.newdev) return false;
    const auto install = reinterpret_cast<InstallNewDevice>(
        reinterpret_cast<void*>(GetProcAddress(installer.newdev.get(), "InstallNewDevice")));
    if (install == nullptr) return false;
    DWORD reboot = 0;
    if (install(nullptr, &kPrinterClass, &reboot)) return true;
    trace_line("InstallNewDevice Fail err=%x\r\n", GetLastError());
    return false;
}

bool run_installer(Installer& installer) {
    const bool old_system = !VlCm_IsWindowsVistaAbove() && !VlCm_IsX64Platform();
    return old_system ? run_device_installer(installer) : run_execution_module(installer);
}

}  // namespace vl::printers
