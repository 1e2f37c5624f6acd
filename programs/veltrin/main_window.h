// The suite's main window: its messages, its menu and its keys.
#pragma once

#include "event_log.h"
#include "hidden_window.h"
#include "panes.h"
#include "user_actions.h"

#include <windows.h>

#include <optional>
#include <string>

namespace veltrin {

class MainWindow {
public:
    // The window's user-data word bears the mark of the suite's main window before it has its title, so
    // that whoever finds it by the title sees the mark.
    MainWindow(const programs::EventLog& log, const std::wstring& title);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // Runs until the window is closed. Returns the program's exit code; 1 when there is no window.
    [[nodiscard]] int run(int show_command);

private:
    static LRESULT CALLBACK on_message(HWND window, UINT number, WPARAM wparam, LPARAM lparam);
    bool handle(UINT number, WPARAM wparam, LPARAM lparam);
    void handle_notice(const NMHDR& notice);
    void handle_protocol(const programs::Message& message);
    void handle_command(int command);

    void make_parts();
    void bring_forward() const;
    void refresh();
    void take_resolution(UINT dpi, const RECT& area);
    void enable_commands(HMENU menu) const;
    void show_menu(POINT point) const;

    const programs::EventLog& log_;
    HWND window_;
    std::optional<Panes> panes_;
    std::optional<UserActions> actions_;
};

}  // namespace veltrin
