#include "list_view.h"

#include "texts.h"

#include <algorithm>
#include <utility>

namespace veltrin {
namespace {

HWND make_list(HWND parent, int id) {
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL |
                             LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_NOSORTHEADER;
    constexpr DWORD kExtendedStyle =
        LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP | LVS_EX_INFOTIP;
    const HWND window = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"", kStyle, 0, 0, 0, 0, parent,
                                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                        GetModuleHandleW(nullptr), nullptr);
    ListView_SetExtendedListViewStyle(window, kExtendedStyle);
    return window;
}

void set_text(HWND window, int place, int column, const std::wstring& text) {
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    SendMessageW(window, LVM_SETITEMTEXTW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
}

}  // namespace

ListView::ListView(HWND parent, int id, std::vector<ListColumn> columns, int icon_size)
    : window_(make_list(parent, id)), columns_(std::move(columns)), icon_size_(icon_size) {
    for (size_t i = 0; i < columns_.size(); ++i) {
        std::wstring title = text(columns_[i].title);
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = title.data();
        column.cx = columns_[i].width;
        SendMessageW(window_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
}

int ListView::count() const { return ListView_GetItemCount(window_); }

int ListView::chosen_place() const { return ListView_GetNextItem(window_, -1, LVNI_SELECTED); }

uint32_t ListView::key_at(int place) const {
    if (place < 0) return 0;
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.iItem = place;
    SendMessageW(window_, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return static_cast<uint32_t>(item.lParam);
}

uint32_t ListView::key_at_point(POINT screen) const {
    LVHITTESTINFO hit = {};
    hit.pt = screen;
    ScreenToClient(window_, &hit.pt);
    return key_at(ListView_HitTest(window_, &hit));
}

// Rows that are there take new texts in place: the list keeps its scroll position and does not flicker.
void ListView::show(const std::vector<ListRow>& rows) {
    const int place = chosen_place();
    const uint32_t key = key_at(place);
    filling_ = true;
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    const int wanted = static_cast<int>(rows.size());
    while (count() > wanted) ListView_DeleteItem(window_, count() - 1);
    for (int i = 0; i < wanted; ++i) put(i, rows[static_cast<size_t>(i)]);
    choose_place(std::clamp(place, 0, std::max(wanted - 1, 0)));
    choose(key);
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    filling_ = false;
}

void ListView::put(int place, const ListRow& row) const {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE | LVIF_PARAM;
    item.iItem = place;
    item.iImage = icons_->index_of(row.icon);
    item.lParam = static_cast<LPARAM>(row.key);
    const UINT message = place < count() ? LVM_SETITEMW : LVM_INSERTITEMW;
    SendMessageW(window_, message, 0, reinterpret_cast<LPARAM>(&item));
    for (size_t i = 0; i < row.cells.size(); ++i) set_text(window_, place, static_cast<int>(i), row.cells[i]);
}

void ListView::choose(uint32_t key) {
    for (int i = 0; key != 0 && i < count(); ++i) {
        if (key_at(i) == key) return choose_place(i);
    }
}

void ListView::choose_place(int place) const {
    constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(window_, -1, 0, kChosen);
    ListView_SetItemState(window_, place, kChosen, kChosen);
    ListView_EnsureVisible(window_, place, FALSE);
}

void ListView::set_resolution(const IconLibrary& library, UINT dpi, HFONT font) {
    dpi_ = dpi;
    auto icons = std::make_unique<IconList>(library, sharp_size(scaled(icon_size_, dpi)));
    ListView_SetImageList(window_, icons->handle(), LVSIL_SMALL);
    icons_ = std::move(icons);
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    for (size_t i = 0; i + 1 < columns_.size(); ++i) {
        ListView_SetColumnWidth(window_, static_cast<int>(i), scaled(columns_[i].width, dpi));
    }
}

void ListView::fit_columns() const {
    RECT area;
    GetClientRect(window_, &area);
    const int last = static_cast<int>(columns_.size()) - 1;
    int left = area.right;
    for (int i = 0; i < last; ++i) left -= ListView_GetColumnWidth(window_, i);
    ListView_SetColumnWidth(window_, last, std::max(left, scaled(columns_.back().width, dpi_)));
}

}  // namespace veltrin
