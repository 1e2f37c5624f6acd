// VlMgr.exe VALUE: the connection manager; VALUE says what to open, e.g. 0x000000ff.
#include "hidden_window.h"
#include "protocol.h"
#include "text.h"

#include <stdlib.h>

using namespace programs;

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    const EventLog log;
    log.line("open " + hex(strtoul(arguments, nullptr, 16)));
    const HiddenWindow window(log, kManagerTitle);
    return window.run();
}
