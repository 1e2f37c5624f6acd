// VlExecuteModule.exe WORD [ARGUMENTS]: carries out one command of another program and ends.
#include "event_log.h"
#include "text.h"

#include <windows.h>

using namespace programs;

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    const EventLog log;
    log.line("command " + utf8_from_narrow(arguments));
    return 0;
}
