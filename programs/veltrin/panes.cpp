#include "panes.h"

#include "resources.h"
#include "texts.h"

namespace veltrin {
namespace {

// At 96 dots per inch.
constexpr int kMargin = 10;
constexpr int kAdapterIcon = 32;
constexpr int kLine = 18;
constexpr int kCountWidth = 140;
constexpr unsigned int kSuiteIcon = 161;

HMENU as_menu(int id) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)); }

HWND make_label(HWND parent, int id, DWORD style) {
    return CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent, as_menu(id),
                           GetModuleHandleW(nullptr), nullptr);
}

HWND make_status_bar(HWND parent) {
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP;
    return CreateWindowExW(0, STATUSCLASSNAMEW, L"", kStyle, 0, 0, 0, 0, parent, as_menu(IDW_STATUS_BAR),
                           GetModuleHandleW(nullptr), nullptr);
}

std::wstring count_text(size_t devices) {
    if (devices == 0) return text(IDS_NO_DEVICES);
    return devices == 1 ? text(IDS_ONE_DEVICE) : text(IDS_DEVICE_COUNT, std::to_wstring(devices));
}

void set_status(HWND bar, WPARAM part, const std::wstring& what) {
    SendMessageW(bar, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(what.c_str()));
}

int height_of(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    return area.bottom - area.top;
}

}  // namespace

Panes::Panes(HWND parent)
    : parent_(parent),
      status_bar_(make_status_bar(parent)),
      devices_(parent),
      services_(parent),
      focused_(devices_.view().window()) {
    constexpr DWORD kText = SS_NOPREFIX | SS_ENDELLIPSIS;
    make_label(parent, IDW_ADAPTER_ICON, SS_ICON | SS_CENTERIMAGE);
    for (const int id : {IDW_ADAPTER_STATUS, IDW_ADAPTER_KIND, IDW_DEVICES_TITLE, IDW_SERVICES_TITLE}) {
        make_label(parent, id, kText);
    }
    SetWindowTextW(child(IDW_DEVICES_TITLE), text(IDS_DEVICES).c_str());
    set_resolution(dpi_of(parent));
    say(text(IDS_HINT));
}

void Panes::set_resolution(UINT dpi) {
    dpi_ = dpi;
    UniqueFont font = message_font(dpi, false), bold = message_font(dpi, true);
    devices_.view().set_resolution(library_, dpi, font.get());
    services_.view().set_resolution(library_, dpi, font.get());
    const auto use = [this](int id, const UniqueFont& given) {
        SendMessageW(child(id), WM_SETFONT, reinterpret_cast<WPARAM>(given.get()), TRUE);
    };
    for (const int id : {IDW_ADAPTER_KIND, IDW_STATUS_BAR}) use(id, font);
    for (const int id : {IDW_ADAPTER_STATUS, IDW_DEVICES_TITLE, IDW_SERVICES_TITLE}) use(id, bold);
    font_ = std::move(font);
    bold_font_ = std::move(bold);
    window_icon_ = library_.load({kSuiteIcon, kSuiteIcon}, sharp_size(scaled(16, dpi)));
    SendMessageW(parent_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(window_icon_.get()));
}

void Panes::place(int id, int top, int height, int left) const {
    RECT area;
    GetClientRect(parent_, &area);
    const int margin = scaled(kMargin, dpi_);
    MoveWindow(child(id), left, top, area.right - left - margin, height, TRUE);
}

// From top to bottom: the adapter, the devices (two thirds of the rest and a little), the services, the
// status bar.
void Panes::lay_out() {
    SendMessageW(status_bar_, WM_SIZE, 0, 0);
    RECT area;
    GetClientRect(parent_, &area);
    const int margin = scaled(kMargin, dpi_), line = scaled(kLine, dpi_), icon = scaled(kAdapterIcon, dpi_);
    const int beside_icon = margin + icon + margin;
    MoveWindow(child(IDW_ADAPTER_ICON), margin, margin, icon, icon, TRUE);
    place(IDW_ADAPTER_STATUS, margin, line, beside_icon);
    place(IDW_ADAPTER_KIND, margin + line, line, beside_icon);

    const int top = margin + 2 * line + margin;
    const int lists = area.bottom - height_of(status_bar_) - margin - top - 2 * line - margin;
    const int devices = lists * 11 / 16;
    place(IDW_DEVICES_TITLE, top, line, margin);
    place(IDW_DEVICES, top + line, devices, margin);
    const int below = top + line + devices + margin;
    place(IDW_SERVICES_TITLE, below, line, margin);
    place(IDW_SERVICES, below + line, lists - devices, margin);

    const int parts[] = {area.right - scaled(kCountWidth, dpi_), -1};
    SendMessageW(status_bar_, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(parts));
    devices_.view().fit_columns();
    services_.view().fit_columns();
}

void Panes::refresh() {
    refresh_adapter();
    devices_.refresh();
    set_status(status_bar_, 1, count_text(devices_.size()));
    refresh_services();
}

void Panes::refresh_adapter() {
    const AdapterFacts facts = adapter_facts();
    SetWindowTextW(child(IDW_ADAPTER_STATUS), text(IDS_ADAPTER_STATUS, facts.status).c_str());
    SetWindowTextW(child(IDW_ADAPTER_KIND), text(IDS_ADAPTER_KIND, facts.kind).c_str());
    UniqueIcon icon = library_.load(facts.icon, sharp_size(scaled(kAdapterIcon, dpi_)));
    SendMessageW(child(IDW_ADAPTER_ICON), STM_SETICON, reinterpret_cast<WPARAM>(icon.get()), 0);
    adapter_icon_ = std::move(icon);
    if (!has_texts()) say(text(IDS_NO_TEXTS));
}

void Panes::refresh_services() {
    const DeviceRow* device = devices_.chosen();
    services_.refresh(device ? device->handle : 0);
    const std::wstring title = device ? text(IDS_SERVICES_OF, device->name) : text(IDS_SERVICES);
    SetWindowTextW(child(IDW_SERVICES_TITLE), title.c_str());
}

void Panes::say(const std::wstring& what) { set_status(status_bar_, 0, what); }

void Panes::focus() const { SetFocus(focused_); }

void Panes::focus_next() {
    focused_ = services_have_focus() ? devices_.view().window() : services_.view().window();
    focus();
}

void Panes::note_focus(HWND list) { focused_ = list; }

}  // namespace veltrin
