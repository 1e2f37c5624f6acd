// What the user makes the window do: connect, and send files.
#pragma once

#include "background_job.h"
#include "event_log.h"
#include "panes.h"
#include "send_list.h"

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace veltrin {

class UserActions {
public:
    // `done` is posted to `window` when something that was started has ended: finish() belongs to it.
    UserActions(HWND window, UINT done, Panes& panes, const programs::EventLog& log)
        : window_(window), done_(done), panes_(panes), log_(log) {}

    // Whether the command makes sense for what is chosen now.
    [[nodiscard]] bool can(int command) const;

    // The chosen service, if the list of services has the keyboard, else the chosen device.
    void connect();
    // Asks for the files.
    void choose_and_send(int command);
    // To the device on which they were dropped, else to the chosen one.
    void send_dropped(HDROP drop);
    void finish();

private:
    [[nodiscard]] const programs::SendWay* way_of(int command, const std::vector<ServiceRow>& services) const;
    [[nodiscard]] const DeviceRow* device_at(POINT point) const;
    void connect_chosen_service();
    void connect_chosen_device();
    void send(const DeviceRow& device, const programs::SendWay* way, const std::vector<std::wstring>& files);
    void start(const std::wstring& what, BackgroundJob::Work work);
    void report(const Outcome& outcome);

    HWND window_;
    UINT done_;
    Panes& panes_;
    const programs::EventLog& log_;
    BackgroundJob job_;
};

}  // namespace veltrin
