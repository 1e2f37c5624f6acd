// What the window is made of: the adapter's line, the two lists and the status bar.
#pragma once

#include "device_list.h"
#include "dpi.h"
#include "service_list.h"

#include <string>

namespace veltrin {

class Panes {
public:
    explicit Panes(HWND parent);
    Panes(const Panes&) = delete;
    Panes& operator=(const Panes&) = delete;

    [[nodiscard]] DeviceList& devices() { return devices_; }
    [[nodiscard]] ServiceList& services() { return services_; }

    // Fonts, icons and sizes for a resolution; refresh() belongs after it.
    void set_resolution(UINT dpi);
    void lay_out();
    // Asks anew for all that is shown.
    void refresh();
    // The services of the chosen device.
    void refresh_services();
    void say(const std::wstring& what);

    // The list that has the keyboard, or had it last.
    void focus() const;
    void focus_next();
    void note_focus(HWND list);
    [[nodiscard]] bool services_have_focus() const { return focused_ == services_.view().window(); }

private:
    [[nodiscard]] HWND child(int id) const { return GetDlgItem(parent_, id); }
    void refresh_adapter();
    void place(int id, int top, int height, int left) const;

    HWND parent_;
    IconLibrary library_;
    UniqueIcon adapter_icon_, window_icon_;
    UniqueFont font_, bold_font_;
    UINT dpi_ = kUsualDpi;
    HWND status_bar_;
    DeviceList devices_;
    ServiceList services_;
    HWND focused_;
};

}  // namespace veltrin
