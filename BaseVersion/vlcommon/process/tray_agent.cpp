#include "tray_agent.h"

#include "frame/frame.h"
#include "frame/settings.h"
#include "program.h"
#include "vlcm/companions.h"

namespace vl::process {
namespace {

constexpr UINT kRegisterWindow = 0x4902;
constexpr UINT kUnregisterWindow = 0x4903;

// The agent holds this mutex from its start on, before it has a window. It is only looked for, never
// taken: which of two agents that were started together stays is settled among them.
bool is_starting() {
    const UniqueHandle running(OpenMutexA(MUTEX_ALL_ACCESS, TRUE, "Veltrin2_VLTray"));
    return static_cast<bool>(running);
}

// A creation that succeeded has set the handle already; the wait is part of the start all the same.
void await_process_handle(const Program& agent) {
    constexpr int kTries = 100;
    constexpr DWORD kPauseMs = 10;
    for (int tries = 0; !agent.process && tries < kTries; ++tries) Sleep(kPauseMs);
}

bool start_agent_program() {
    const Program agent = start_file(settings::install_path("\\VlTray.exe").text());
    if (agent.started) await_process_handle(agent);
    return agent.started;
}

// The last pause comes whether the window was found or not: a new window needs it to take messages.
void await_window() {
    constexpr int kTries = 50;
    constexpr DWORD kPauseMs = 100;
    constexpr DWORD kLastPauseMs = 500;
    for (int tries = 0; tray_window() == nullptr && tries < kTries; ++tries) Sleep(kPauseMs);
    Sleep(kLastPauseMs);
}

void start_agent() {
    if (tray_window() != nullptr || is_starting()) return;
    if (start_agent_program()) await_window();
}

void tell_agent_about(HWND window, UINT message) {
    if (window == nullptr || !IsWindow(window)) return;
    const HWND agent = tray_window();
    if (agent != nullptr) PostMessageA(agent, message, reinterpret_cast<WPARAM>(window), 0);
}

void relay_to_agent(uint16_t low, uint16_t high, LPARAM parameter) {
    VlCm_StartVltrayProc();
    const uint32_t message = (uint32_t{high} << 16) | low;
    Btsdk_PostMessageToCtrlCenter(message, static_cast<uint32_t>(parameter));
}

}  // namespace

HWND tray_window() { return FindWindowA(nullptr, "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}"); }

void bring_tray_to_front() {
    const HWND agent = tray_window();
    if (agent != nullptr) SetForegroundWindow(agent);
}

}  // namespace vl::process

using namespace vl;

extern "C" void VlCm_StartVltrayProc() { process::start_agent(); }

extern "C" void VlCm_RegisterWindowToVltray(HWND window) {
    TraceScope scope("VlCm_RegisterWindowToVltray");
    process::tell_agent_about(window, process::kRegisterWindow);
}

extern "C" void VlCm_UnregisterWindowToVltray(HWND window) {
    TraceScope scope("VlCm_UnregisterWindowToVltray");
    process::tell_agent_about(window, process::kUnregisterWindow);
}

extern "C" void VlCm_PostMsg2Vltray(uint16_t low, uint16_t high, LPARAM parameter) {
    TraceScope scope("VlCm_PostMsg2Vltray");
    process::relay_to_agent(low, high, parameter);
}

extern "C" LRESULT VlCm_SendMsg2Vltray(uint16_t low, uint16_t high, LPARAM parameter) {
    TraceScope scope("VlCm_SendMsg2Vltray");
    VlCm_PostMsg2Vltray(low, high, parameter);
    return 0;
}

extern "C" void VlCm_SetTrayWindowToTop() {
    TraceScope scope("Vlcm_SetTrayWindowToTop");  // the older spelling, which trace readers look for
    process::bring_tray_to_front();
}
