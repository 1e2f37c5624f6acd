// A list in columns, one row chosen.
#pragma once

#include "dpi.h"
#include "icons.h"

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrin {

struct ListColumn {
    UINT title;  // text identifier
    int width;   // at 96 dots per inch; of the last column, the least
};

struct ListRow {
    uint32_t key;  // tells the row from others; not 0
    IconId icon;
    std::vector<std::wstring> cells;
};

class ListView {
public:
    // `icon_size` is wanted at 96 dots per inch.
    ListView(HWND parent, int id, std::vector<ListColumn> columns, int icon_size);
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;

    [[nodiscard]] HWND window() const { return window_; }
    // Shows these rows. What was chosen stays chosen; when it is gone, the row in its place is.
    void show(const std::vector<ListRow>& rows);
    // The chosen row: its place, -1 when there is none, and its key, 0 then.
    [[nodiscard]] int chosen_place() const;
    [[nodiscard]] uint32_t chosen_key() const { return key_at(chosen_place()); }
    // The key of the row at a point of the screen; 0: there is none.
    [[nodiscard]] uint32_t key_at_point(POINT screen) const;
    void choose(uint32_t key);
    // While rows are shown anew, notices of changes mean nothing.
    [[nodiscard]] bool is_filling() const { return filling_; }

    // The rows have to be shown anew then: their icons are other ones.
    void set_resolution(const IconLibrary& library, UINT dpi, HFONT font);
    // Gives the last column the room that is left.
    void fit_columns() const;

private:
    [[nodiscard]] uint32_t key_at(int place) const;
    [[nodiscard]] int count() const;
    void put(int place, const ListRow& row) const;
    void choose_place(int place) const;

    HWND window_;
    std::vector<ListColumn> columns_;
    int icon_size_;
    std::unique_ptr<IconList> icons_;
    UINT dpi_ = kUsualDpi;
    bool filling_ = false;
};

}  // namespace veltrin
