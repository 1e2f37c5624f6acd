#include "remote_window.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace suite {
namespace {

constexpr size_t kText = 260;

HANDLE process_of(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
}

}  // namespace

RemoteMemory::RemoteMemory(HWND window, size_t size)
    : process_(process_of(window)),
      address_(
          static_cast<char*>(VirtualAllocEx(process_.get(), nullptr, size, MEM_COMMIT, PAGE_READWRITE))) {
    EXPECT_NE(address_, nullptr);
}

RemoteMemory::~RemoteMemory() {
    if (address_) VirtualFreeEx(process_.get(), address_, 0, MEM_RELEASE);
}

void RemoteMemory::write(const void* bytes, size_t size, size_t offset) const {
    EXPECT_TRUE(WriteProcessMemory(process_.get(), address_ + offset, bytes, size, nullptr));
}

void RemoteMemory::read(void* bytes, size_t size, size_t offset) const {
    EXPECT_TRUE(ReadProcessMemory(process_.get(), address_ + offset, bytes, size, nullptr));
}

int RemoteList::count() const { return static_cast<int>(SendMessageW(window_, LVM_GETITEMCOUNT, 0, 0)); }

int RemoteList::columns() const {
    const auto header = reinterpret_cast<HWND>(SendMessageW(window_, LVM_GETHEADER, 0, 0));
    return static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
}

std::wstring RemoteList::cell(int place, int column) const {
    const RemoteMemory memory(window_, sizeof(LVITEMW) + kText * sizeof(wchar_t));
    LVITEMW item = {};
    item.iSubItem = column;
    item.cchTextMax = kText;
    item.pszText = reinterpret_cast<wchar_t*>(memory.address() + sizeof item);
    memory.write(&item, sizeof item);
    SendMessageW(window_, LVM_GETITEMTEXTW, static_cast<WPARAM>(place),
                 reinterpret_cast<LPARAM>(memory.address()));
    wchar_t text[kText] = L"";
    memory.read(text, sizeof text, sizeof item);
    return text;
}

std::vector<Row> RemoteList::rows() const {
    std::vector<Row> rows(static_cast<size_t>(count()));
    for (size_t i = 0; i < rows.size(); ++i) {
        for (int column = 0; column < columns(); ++column) {
            rows[i].push_back(cell(static_cast<int>(i), column));
        }
    }
    return rows;
}

Row RemoteList::column(size_t index) const {
    Row cells;
    for (const Row& row : rows()) cells.push_back(row.at(index));
    return cells;
}

int RemoteList::chosen() const {
    return static_cast<int>(SendMessageW(window_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void RemoteList::choose(int place) const {
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    const RemoteMemory memory(window_, sizeof item);
    memory.write(&item, sizeof item);
    SendMessageW(window_, LVM_SETITEMSTATE, static_cast<WPARAM>(place),
                 reinterpret_cast<LPARAM>(memory.address()));
}

int RemoteList::icon(int place) const {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = place;
    const RemoteMemory memory(window_, sizeof item);
    memory.write(&item, sizeof item);
    SendMessageW(window_, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory.address()));
    memory.read(&item, sizeof item);
    return item.iImage;
}

RECT RemoteList::area(int place) const {
    RECT area = {LVIR_BOUNDS, 0, 0, 0};
    const RemoteMemory memory(window_, sizeof area);
    memory.write(&area, sizeof area);
    SendMessageW(window_, LVM_GETITEMRECT, static_cast<WPARAM>(place),
                 reinterpret_cast<LPARAM>(memory.address()));
    memory.read(&area, sizeof area);
    return area;
}

std::wstring text_of_window(HWND window) {
    wchar_t text[kText] = L"";
    SendMessageW(window, WM_GETTEXT, kText, reinterpret_cast<LPARAM>(text));
    return text;
}

std::wstring status_text(HWND bar, int part) {
    const RemoteMemory memory(bar, kText * sizeof(wchar_t));
    SendMessageW(bar, SB_GETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(memory.address()));
    wchar_t text[kText] = L"";
    memory.read(text, sizeof text);
    return text;
}

}  // namespace suite
