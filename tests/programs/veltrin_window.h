// The fixture of the main window's tests: the real program in a neighbourhood of four devices.
#pragma once

#include "remote_window.h"
#include "suite_programs.h"

#include "resources.h"

#include <memory>
#include <optional>

namespace suite {

class VeltrinWindow : public SuitePrograms {
protected:
    VeltrinWindow();

    // Places of the devices in the list, and handles of shortcuts.
    enum Place { kPhone = 0, kPrinter = 1, kHeadset = 2, kNameless = 3 };
    static constexpr BtHandle kPrinterHandle = 1002;
    static constexpr BtHandle kPushShortcut = 100, kTransferShortcut = 101, kSerialShortcut = 102;

    // Starts the program and waits for its window.
    void open(const std::string& program = "Veltrin.exe", const support::ChildOptions& options = {});
    [[nodiscard]] support::ChildProcess& program() { return *program_; }
    [[nodiscard]] HWND window() const { return window_; }
    [[nodiscard]] HWND child(int id) const { return GetDlgItem(window_, id); }
    [[nodiscard]] RemoteList devices() const { return RemoteList(child(IDW_DEVICES)); }
    [[nodiscard]] RemoteList services() const { return RemoteList(child(IDW_SERVICES)); }
    // What it told last, and its counter of devices.
    [[nodiscard]] std::wstring told() const { return status_text(child(IDW_STATUS_BAR), 0); }
    [[nodiscard]] std::wstring counted() const { return status_text(child(IDW_STATUS_BAR), 1); }
    [[nodiscard]] int focused() const;

    // All that was posted to the window before is done when this comes back.
    void drain();
    // A key, pressed while a child window has the keyboard.
    void press(int child_id, WORD key);
    void command(int id) const { PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    // Waits for a line of the program's log.
    [[nodiscard]] static ::testing::AssertionResult logged(const std::string& line, size_t times = 1) {
        return logs(L"Veltrin", line, times);
    }
    // Waits until something the user started has ended, and gives what the window tells then.
    [[nodiscard]] std::wstring outcome(const std::string& beginning);

    // Drops files on the window, at a point of its client area.
    void drop(const std::vector<std::wstring>& files, POINT point = {0, 0});
    // The middle of a device's row, in the window's client area.
    [[nodiscard]] POINT point_of(Place device) const;

    // Waits until exactly these files have arrived at a device.
    [[nodiscard]] static ::testing::AssertionResult arrived(BtHandle device,
                                                            const std::vector<std::wstring>& names);

    // A tray agent for tests that connect or send.
    void run_agent() { agent_.emplace(); }

private:
    std::optional<AgentProcess> agent_;
    std::unique_ptr<support::ChildProcess> program_;
    HWND window_ = nullptr;
    WPARAM marks_ = 0;
    size_t starts_ = 0;
};

}  // namespace suite
