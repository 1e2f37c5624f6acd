// "veltrin voip.exe": the voice companion. WM_QUIT, posted to its window, ends it.
#include "hidden_window.h"
#include "protocol.h"

using namespace programs;

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    const HiddenWindow window(log, kVoiceTitle);
    return window.run();
}
