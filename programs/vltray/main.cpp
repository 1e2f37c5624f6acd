// VlTray.exe: the tray agent. It takes the lists that other programs hand over and delivers the files.
#include "frame/unique.h"
#include "hidden_window.h"
#include "protocol.h"
#include "registrations.h"
#include "requests.h"

using namespace programs;

namespace {

class TrayAgent {
public:
    explicit TrayAgent(const EventLog& log) : requests_(log), registrations_(log) {}

    void handle(const Message& message) {
        switch (message.number) {
            case kRegisterWindow:
                registrations_.add(reinterpret_cast<HWND>(message.wparam));
                break;
            case kUnregisterWindow:
                registrations_.remove(reinterpret_cast<HWND>(message.wparam));
                break;
            case VLSIM_RELAY_MESSAGE:
                requests_.handle(static_cast<uint32_t>(message.wparam),
                                 static_cast<uint32_t>(message.lparam));
                registrations_.tell(message.wparam, message.lparam);
                break;
            default:
                break;
        }
    }

private:
    Requests requests_;
    Registrations registrations_;
};

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    // Held until the process ends: it tells others that the agent is there before its window is.
    const vl::UniqueHandle single(CreateMutexA(nullptr, TRUE, kTrayMutex));
    if (!single || GetLastError() == ERROR_ALREADY_EXISTS) {
        log.line("another copy is running");
        return 0;
    }
    TrayAgent agent(log);
    const HiddenWindow window(log, kTrayTitle, [&agent](const Message& message) { agent.handle(message); });
    return window.run();
}
