#include "hand_over.h"

#include "protocol.h"

namespace programs {

DWORD run_agent() {
    VlCm_StartVltrayProc();
    const HWND window = FindWindowA(nullptr, kTrayTitle);
    DWORD process = 0;
    if (window) GetWindowThreadProcessId(window, &process);
    return process;
}

// The receiver marks a list as taken before it copies it: the section may outlive the hand-off by that
// moment, and the next one is refused until then.
uint32_t hand_over(const VlSendRecord* list, uint32_t device) {
    constexpr int kTries = 100;
    constexpr DWORD kPause_ms = 20;
    uint32_t status = VLCM_RESOURCE_FAILURE;
    for (int tries = 0; tries < kTries; ++tries) {
        status = VlCm_SendFilestoBtDevice(list, device, 0, 0);
        if (status != VLCM_RESOURCE_FAILURE) break;
        Sleep(kPause_ms);
    }
    return status;
}

}  // namespace programs
