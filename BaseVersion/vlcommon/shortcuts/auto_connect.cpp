#include "auto_connect.h"

#include "frame/frame.h"
#include "frame/settings.h"
#include "vlcm/companions.h"
#include "vlcm/settings.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {

// The file's sections print byte 0 first, the reverse of shortcut names. A device whose address the
// stack does not tell has the section of the zero address.
ShortcutName auto_connect_shortcut(BtHandle device) {
    uint8_t address[6] = {};
    Btsdk_GetRemoteDeviceAddress(device, address);
    char section[64];
    format_bounded(section, sizeof section, "%02X:%02X:%02X:%02X:%02X:%02X", address[0], address[1],
                   address[2], address[3], address[4], address[5]);
    PathBuffer file;
    VlCm_GetRmoteDeviniPath(file.data(), PathBuffer::size());
    ShortcutName name;
    settings::read_text(section, "AutoConnectShc", "", name.text, sizeof name.text, file.text());
    return name;
}

namespace {

// The tray agent makes the connection.
void connect_by_name(const char* name) {
    constexpr uint16_t kRequest = 0x0203;
    constexpr uint16_t kConnectShortcut = 0x4908;
    const BtHandle shortcut = Btsdk_GetShortCutByName(name);
    if (shortcut != 0) VlCm_PostMsg2Vltray(kRequest, kConnectShortcut, static_cast<LPARAM>(shortcut));
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" BOOL VlCm_ShouldShowDefaultConn(uint32_t device) {
    return shortcuts::auto_connect_shortcut(device).text[0] != 0;
}

extern "C" void VlCm_ConnectDefaultShcByDevhdl(uint32_t device) {
    const shortcuts::ShortcutName name = shortcuts::auto_connect_shortcut(device);
    if (name.text[0] != 0) shortcuts::connect_by_name(name.text);
}
