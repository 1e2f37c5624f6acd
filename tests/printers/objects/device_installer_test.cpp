// The installer of old systems, which this build does not run: its platform is 64-bit.
#include "printers/installer.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <string.h>

using vl::printers::Installer;
using vl::printers::run_device_installer;

namespace {

using Lines = std::vector<std::string>;

// What the entry was given, and what it gives.
struct Entry {
    size_t calls = 0;
    HWND parent = nullptr;
    GUID device_class{};
    bool has_reboot_flag = false;
    BOOL result = TRUE;
} g_entry;

BOOL WINAPI install_new_device(HWND parent, const GUID* device_class, DWORD* reboot) {
    ++g_entry.calls;
    g_entry.parent = parent;
    g_entry.device_class = *device_class;
    g_entry.has_reboot_flag = reboot != nullptr && *reboot == 0;
    SetLastError(ERROR_CANCELLED);
    return g_entry.result;
}

// NewDev.dll is played by a library that every process has.
class DeviceInstaller : public support::SuiteTest {
protected:
    DeviceInstaller() {
        g_entry = {};
        loading_.answer([this](const char* path, HANDLE, DWORD) {
            path_ = path;
            return missing_ ? nullptr : LoadLibraryA("version.dll");
        });
        look_up_.answer([this](HMODULE, const char* name) {
            name_ = name;
            return missing_entry_ ? nullptr
                                  : reinterpret_cast<FARPROC>(reinterpret_cast<void*>(install_new_device));
        });
    }

    bool missing_ = false, missing_entry_ = false;
    std::string path_, name_;
    support::CallPatch<decltype(FreeLibrary)> freed_{"FreeLibrary", FreeLibrary};

private:
    support::CallPatch<decltype(LoadLibraryExA)> loading_{"LoadLibraryExA", LoadLibraryExA};
    support::CallPatch<decltype(GetProcAddress)> look_up_{"GetProcAddress", GetProcAddress};
};

}  // namespace

TEST_F(DeviceInstaller, IsTheEntryOfNewDev) {
    {
        Installer installer;
        EXPECT_TRUE(run_device_installer(installer));
        EXPECT_EQ(g_entry.calls, 1u);
        EXPECT_EQ(g_entry.parent, nullptr);
        const GUID printers = {0x4D36E979, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};
        EXPECT_EQ(memcmp(&g_entry.device_class, &printers, sizeof printers), 0);
        EXPECT_TRUE(g_entry.has_reboot_flag);
        EXPECT_EQ(path_.substr(path_.rfind('\\') + 1), "NewDev.dll");
        EXPECT_EQ(name_, "InstallNewDevice");
        EXPECT_EQ(freed_.count(), 0u) << "it stays until the new printer is recorded";
    }
    EXPECT_EQ(freed_.count(), 1u);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DeviceInstaller, ThatFailsIsTraced) {
    g_entry.result = FALSE;
    Installer installer;
    EXPECT_FALSE(run_device_installer(installer));
    EXPECT_EQ(support::trace_log(), Lines{"=512 InstallNewDevice Fail err=4c7\r\n"});
}

TEST_F(DeviceInstaller, ThatIsMissingStopsSilently) {
    missing_ = true;
    Installer without_library;
    EXPECT_FALSE(run_device_installer(without_library));
    missing_ = false;
    missing_entry_ = true;
    Installer without_entry;
    EXPECT_FALSE(run_device_installer(without_entry));
    EXPECT_EQ(g_entry.calls, 0u);
    EXPECT_TRUE(support::trace_log().empty());
}
