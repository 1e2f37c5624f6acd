// VlExecuteModule.exe WORD [ARGUMENTS]: carries out one command of another program and ends.
#include "event_log.h"
#include "install_printer.h"
#include "text.h"

#include <windows.h>

#include <string.h>

using namespace programs;

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    const EventLog log;
    log.line("command " + utf8_from_narrow(arguments));
    if (strcmp(arguments, "QVN_VLEXECUTEMODULE_INSTALLPRINTER") == 0) log.line(install_printer());
    return 0;
}
