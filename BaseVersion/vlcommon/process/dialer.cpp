// The dialer: a number is left in the personal settings file, then the dialer is woken or started.
#include "frame/frame.h"
#include "frame/settings.h"
#include "program.h"
#include "vlcm/companions.h"
#include "window_message.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace vl::process {
namespace {

void leave_number(const char* address, const char* number) {
    const PathBuffer file = settings::personal_file();
    Btsdk_WritePrivateProfileString("DialParameter", "DeviceAddress", address, file.text());
    Btsdk_WritePrivateProfileString("DialParameter", "PhoneNum", number, file.text());
}

bool wake_dialer() {
    constexpr UINT kDialNow = 0x584;
    return post_to_window(nullptr, "Veltrin Dialer", kDialNow);
}

void wake_dialer_once_it_is_up() {
    constexpr int kTries = 10;
    constexpr DWORD kPauseMs = 500;
    TraceScope scope("DialPhone_Thread");
    for (int tries = 0; tries < kTries && !wake_dialer(); ++tries) Sleep(kPauseMs);
}

// The thread owns a reference to the library, which its caller may unload meanwhile.
DWORD WINAPI DialPhone_Thread(void* /*unused*/) {
    wake_dialer_once_it_is_up();
    FreeLibraryAndExitThread(reinterpret_cast<HMODULE>(&__ImageBase), 0);
}

UniqueModule own_reference() {
    UniqueModule library;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const char*>(&__ImageBase),
                       library.receive());
    return library;
}

void start_wake_up_thread() {
    UniqueModule library = own_reference();
    if (!library) return;
    const UniqueHandle thread(CreateThread(nullptr, 0, DialPhone_Thread, nullptr, 0, nullptr));
    if (thread) (void)library.release();  // the thread gives it back
}

void dial(const char* address, const char* number) {
    leave_number(address, number);
    if (wake_dialer()) return;
    const bool started = start_file(settings::install_path("\\VlDialer.exe").text()).started;
    if (started) start_wake_up_thread();
}

}  // namespace
}  // namespace vl::process

extern "C" void VlCm_DialPhone(const char* address, const char* number) {
    vl::TraceScope scope("VlCm_DialPhone");
    if (address != nullptr && number != nullptr) vl::process::dial(address, number);
}
