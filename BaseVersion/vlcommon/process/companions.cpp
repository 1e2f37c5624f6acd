// The voice companion and the send tool: started when their switch is on, closed by a message.
#include "vlcm/companions.h"
#include "frame/frame.h"
#include "frame/settings.h"
#include "window_message.h"

#include <shellapi.h>

namespace vl::process {
namespace {

struct Companion {
    const char* file;  // in the installation folder
    const char* title;
    const char* switch_key;  // in section "LocalBluetooth" of the personal settings file
};

constexpr Companion kVoiceCompanion = {"\\veltrin voip.exe", "{95DFDC9E-F427-4FBC-A090-E420DC98CDE4}",
                                       "SupportVOIP"};
constexpr Companion kSendTool = {"\\Veltrin Quill.exe", "{3B1A61DA-6444-4c4a-B01F-2E2EEE6374C2}",
                                 "SupportQuill"};

void start_up(const Companion& companion) {
    if (Btsdk_IsBluetoothReady() == 0) return;
    const PathBuffer path = settings::install_path(companion.file);
    const PathBuffer file = settings::personal_file();
    if (settings::read_number("LocalBluetooth", companion.switch_key, 0, file) != 1) return;
    ShellExecuteA(nullptr, nullptr, path.text(), nullptr, nullptr, SW_SHOWNORMAL);
}

void shut_down(const Companion& companion) { post_to_window(nullptr, companion.title, WM_QUIT); }

}  // namespace
}  // namespace vl::process

using namespace vl;

extern "C" void VlCm_StartUpNimbrel() { process::start_up(process::kVoiceCompanion); }

extern "C" void VlCm_ShutDownNimbrel() { process::shut_down(process::kVoiceCompanion); }

extern "C" void VlCm_StartUpQuill() { process::start_up(process::kSendTool); }

extern "C" void VlCm_ShutDownQuill() { process::shut_down(process::kSendTool); }
