// Start of the main program through the launcher that an OEM's installer registered.
#include "frame/frame.h"
#include "program.h"
#include "vlcm/companions.h"
#include "vlcm/switches.h"

namespace vl::process {
namespace {

struct LauncherRow {
    int edition;
    const char* key;    // under HKEY_LOCAL_MACHINE
    const char* value;  // the command line
};

// Frozen names of the OEMs' installers, "LauchVeltrin" included. Another edition has no launcher:
// HKEY_LOCAL_MACHINE itself is opened, no value is read and the empty command line starts nothing.
constexpr LauncherRow kLaunchers[] = {
    {1, "SOFTWARE\\Marlow\\Corvana6.0", "LauchVeltrin"},
    {2, "SOFTWARE\\Marlow\\Freeline", "LaunchVeltrin"},
    {4, "SOFTWARE\\Marlow\\BluetoothApplication", "LaunchVeltrin"},
};
constexpr LauncherRow kNoLauncher = {0, nullptr, nullptr};

const LauncherRow& launcher_of(int edition) {
    for (const LauncherRow& row : kLaunchers) {
        if (row.edition == edition) return row;
    }
    return kNoLauncher;
}

constexpr DWORD kCommandSize = 260;

bool read_command(HKEY key, const char* value, char (&command)[kCommandSize]) {
    if (value == nullptr) return true;
    DWORD size = kCommandSize;
    auto bytes = reinterpret_cast<BYTE*>(command);
    if (RegQueryValueExA(key, value, nullptr, nullptr, bytes, &size) != ERROR_SUCCESS) return false;
    command[kCommandSize - 1] = 0;  // a stored text need not be terminated
    return true;
}

void run_launcher(char* command) {
    constexpr DWORD kLongestRunMs = 5000;
    const Program launcher = start_command_line(command);
    if (launcher.started) WaitForSingleObject(launcher.process.get(), kLongestRunMs);
}

void launch_for_edition() {
    const LauncherRow& launcher = launcher_of(VlCm_GetCustomVersion());
    UniqueRegistryKey key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, launcher.key, 0, KEY_ALL_ACCESS, key.receive()) != ERROR_SUCCESS) {
        trace_line("VlCm_OpenVluiExe when reg error in Vlcm_OpenVluiDll");
        VlCm_OpenVluiExe();
        return;
    }
    char command[kCommandSize] = {};
    if (read_command(key.get(), launcher.value, command)) {
        run_launcher(command);
    } else {
        key.reset();
        VlCm_OpenVluiExe();
    }
}

}  // namespace
}  // namespace vl::process

extern "C" void VlCm_OpenVluiDll() {
    vl::TraceScope scope("Vlcm_OpenVluiDll");  // the older spelling, which trace readers look for
    vl::process::launch_for_edition();
}
