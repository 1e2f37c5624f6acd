// VlDialer.exe: dials the number that the library left in the personal settings file.
#include "hidden_window.h"
#include "protocol.h"
#include "text.h"

using namespace programs;

namespace {

// Address and number are read only now: a later request overwrites them while the dialer runs.
void dial(const EventLog& log) {
    const std::string address = personal_setting("DialParameter", "DeviceAddress");
    const std::string number = personal_setting("DialParameter", "PhoneNum");
    log.line("dial DeviceAddress=" + utf8_from_narrow(address) + " PhoneNum=" + utf8_from_narrow(number));
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    const HiddenWindow window(log, kDialerTitle, [&log](const Message& message) {
        if (message.number == kDialNow) dial(log);
    });
    return window.run();
}
