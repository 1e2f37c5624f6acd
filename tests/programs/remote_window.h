// Windows of another process, seen as a screen reader sees them: by the messages of the controls. What a
// control's message points at has to lie in its own process.
#pragma once

#include "frame/unique.h"

#include <windows.h>

#include <string>
#include <vector>

namespace suite {

// Memory in a window's process.
class RemoteMemory {
public:
    RemoteMemory(HWND window, size_t size);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    // Its address there.
    [[nodiscard]] char* address() const { return address_; }
    // Both fail the test when they cannot.
    void write(const void* bytes, size_t size, size_t offset = 0) const;
    void read(void* bytes, size_t size, size_t offset = 0) const;
    // It belongs to the other process from now on.
    void give_away() { address_ = nullptr; }

private:
    vl::UniqueHandle process_;
    char* address_;
};

using Row = std::vector<std::wstring>;

// A list view in columns.
class RemoteList {
public:
    explicit RemoteList(HWND window) : window_(window) {}
    [[nodiscard]] HWND window() const { return window_; }

    [[nodiscard]] int count() const;
    [[nodiscard]] std::vector<Row> rows() const;
    // One column of all rows.
    [[nodiscard]] Row column(size_t index) const;
    // The place of the chosen row; -1: none.
    [[nodiscard]] int chosen() const;
    void choose(int place) const;
    // The number of the row's icon in the list's icons; I_IMAGENONE: none.
    [[nodiscard]] int icon(int place) const;
    // The row's rectangle in the list's client area.
    [[nodiscard]] RECT area(int place) const;

private:
    [[nodiscard]] int columns() const;
    [[nodiscard]] std::wstring cell(int place, int column) const;

    HWND window_;
};

[[nodiscard]] std::wstring text_of_window(HWND window);
// The text of a part of a status bar.
[[nodiscard]] std::wstring status_text(HWND bar, int part);

}  // namespace suite
