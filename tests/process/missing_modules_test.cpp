// What happens where Windows lacks one of the modules that are bound at the first call.
#include "library_copy.h"
#include "process_test.h"

#include <shellapi.h>

using namespace process_test;

namespace {

// A copy of the library for which one module is not there.
class MissingModule : public ProcessTest {
protected:
    void miss(const std::string& module) {
        loading_.answer([this, module](const char* path, HANDLE file, DWORD flags) -> HMODULE {
            const std::string whole = lower_case(path);
            if (whole.substr(whole.rfind('\\') + 1) == module) return nullptr;
            return loading_.real(path, file, flags);
        });
    }
    LibraryCopy copy_;
    support::CallPatch<HMODULE(const char*, HANDLE, DWORD)> loading_{"LoadLibraryExA", LoadLibraryExA,
                                                                     copy_.module()};
};

TEST_F(MissingModule, WithoutUser32NoWindowIsFound) {
    miss("user32.dll");
    const QueueWindow window(kTrayTitle);
    SetWindowLongPtrA(window.handle(), GWLP_USERDATA, 5);
    copy_.entry<void(HWND)>("VlCm_RegisterWindowToVltray")(window.handle());
    copy_.entry<void()>("VlCm_SetTrayWindowToTop")();
    copy_.entry<void()>("VlCm_ShutDownQuill")();
    EXPECT_EQ(copy_.entry<LONG(HWND, int)>("Vlcm_GetWindowLong")(window.handle(), GWLP_USERDATA), 0);
    EXPECT_EQ(copy_.entry<LONG(HWND, int, LONG)>("Vlcm_SetWindowLong")(window.handle(), GWLP_USERDATA, 6), 0);
    EXPECT_EQ(GetWindowLongPtrA(window.handle(), GWLP_USERDATA), 5);
    EXPECT_FALSE(window.got(0x4902));
}

TEST_F(MissingModule, WithoutAdvapi32TheMainWindowIsOpened) {
    miss("advapi32.dll");
    support::CallPatch start("ShellExecuteA", ShellExecuteA, copy_.module());
    start.fail_from(1, HINSTANCE{});
    copy_.entry<void()>("VlCm_OpenVluiDll")();
    EXPECT_EQ(trace(), nested("Vlcm_OpenVluiDll",
                              scope_of("VlCm_GetCustomVersion") +
                                  Lines{"=512 VlCm_OpenVluiExe when reg error in Vlcm_OpenVluiDll"} +
                                  nested("Vlcm_OpenVluiExe", scope_of("VlCm_GetInstallDir"))));
}

TEST_F(MissingModule, WithoutShell32NothingIsStarted) {
    miss("shell32.dll");
    copy_.entry<void()>("VlCm_OpenVluiExe")();
    EXPECT_EQ(trace(), nested("Vlcm_OpenVluiExe", scope_of("VlCm_GetInstallDir")));
}

}  // namespace
