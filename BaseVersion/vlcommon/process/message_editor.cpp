#include "message_editor.h"

#include "frame/settings.h"
#include "vlcm/localctl.h"
#include "vlcm/mobile.h"

#include <shellapi.h>

namespace vl::process {
namespace {

constexpr uint16_t kMessageAccess = 0x1132;

bool wanted_for(BtHandle phone) {
    return VlCm_IsMobileActive() == 0 || VlCm_IsSupportService(phone, kMessageAccess);
}

}  // namespace

void start_message_editor(BtHandle phone) {
    if (!wanted_for(phone)) return;
    const PathBuffer folder = settings::install_path("\\");
    ShellExecuteA(nullptr, "open", "MAP_VlSMSEditor.exe", nullptr, folder.text(), SW_SHOW);
}

}  // namespace vl::process
