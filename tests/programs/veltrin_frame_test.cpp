// The main window itself: keys, resolution, icons, and how it is woken and closed.
#include "veltrin_window.h"

#include "icons.h"
#include "protocol.h"
#include "text.h"

#include <algorithm>

using namespace programs;
using namespace suite;

namespace {

class VeltrinFrame : public VeltrinWindow {
protected:
    // As Windows tells a window that it is on a monitor of another resolution.
    void change_resolution(WORD dpi, const RECT& area) const {
        const RemoteMemory memory(window(), sizeof area);
        memory.write(&area, sizeof area);
        SendMessageW(window(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                     reinterpret_cast<LPARAM>(memory.address()));
    }
    [[nodiscard]] int row_height(const RemoteList& list) const {
        const RECT area = list.area(0);
        return area.bottom - area.top;
    }
};

class VeltrinResources : public SuitePrograms {
protected:
    [[nodiscard]] static vl::UniqueModule load(const char* file) {
        return vl::UniqueModule(LoadLibraryExA((support::bin_folder() + file).c_str(), nullptr,
                                               LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
    }
};

// The colours of an icon.
std::vector<uint32_t> pixels(HICON icon, int size) {
    ICONINFO info = {};
    GetIconInfo(icon, &info);
    BITMAPINFO format = {};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<uint32_t> colours(static_cast<size_t>(size) * static_cast<size_t>(size));
    const HDC screen = GetDC(nullptr);
    GetDIBits(screen, info.hbmColor, 0, static_cast<UINT>(size), colours.data(), &format, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return colours;
}

}  // namespace

TEST_F(VeltrinFrame, ShowsItselfWhenItIsStarted) {
    open();
    EXPECT_TRUE(IsWindowVisible(window()));
    EXPECT_EQ(GetWindowLongPtrW(window(), GWLP_USERDATA), 0x396);
    EXPECT_TRUE(IsWindowUnicode(window()));
}

TEST_F(VeltrinFrame, RestoresItselfWhenItIsWokenAsAnIcon) {
    open();
    ShowWindow(window(), SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(window()));
    VlCm_OpenVluiExe();
    EXPECT_TRUE(logged("shown"));
    EXPECT_FALSE(IsIconic(window()));
}

TEST_F(VeltrinFrame, StaysMaximizedWhenItIsWoken) {
    open();
    ShowWindow(window(), SW_MAXIMIZE);
    ASSERT_TRUE(IsZoomed(window()));
    VlCm_OpenVluiExe();
    EXPECT_TRUE(logged("shown"));
    EXPECT_TRUE(IsZoomed(window()));
}

TEST_F(VeltrinFrame, MovesTheKeyboardBetweenTheListsByTab) {
    open();
    EXPECT_EQ(focused(), IDW_DEVICES);
    press(IDW_DEVICES, VK_TAB);
    EXPECT_EQ(focused(), IDW_SERVICES);
    press(IDW_SERVICES, VK_TAB);
    EXPECT_EQ(focused(), IDW_DEVICES);
}

TEST_F(VeltrinFrame, EndsByTheMenuAndByTheCompanionsMessage) {
    const struct {
        const char* label;
        UINT message;
        WPARAM wparam;
    } rows[] = {{"Exit", WM_COMMAND, IDC_EXIT}, {"WM_CLOSE", WM_CLOSE, 0}, {"WM_QUIT", WM_QUIT, 0}};
    support::for_each_row(rows, [&](const auto& row) {
        open();
        PostMessageW(window(), row.message, row.wparam, 0);
        EXPECT_EQ(program().wait(), 0u);
        EXPECT_EQ(log_lines(L"Veltrin").back(), "ended");
    });
}

TEST_F(VeltrinFrame, GrowsWithTheResolution) {
    open();
    const int device = row_height(devices()), service = row_height(services());
    const RECT wanted = {40, 50, 840, 700};
    change_resolution(192, wanted);
    RECT area;
    GetWindowRect(window(), &area);
    EXPECT_TRUE(EqualRect(&area, &wanted));
    EXPECT_GE(row_height(devices()), 2 * 32);
    EXPECT_GE(row_height(services()), 2 * 20 - 8);  // the drawn size next to it
    EXPECT_GT(row_height(services()), service);
    EXPECT_GE(devices().icon(kPhone), 0);
    change_resolution(96, {40, 50, 740, 650});
    EXPECT_EQ(row_height(devices()), device);
    EXPECT_EQ(row_height(services()), service);
}

TEST_F(VeltrinFrame, GivesTheListsAllItsWidth) {
    open();
    for (const LONG width : {600, 1200}) {
        SetWindowPos(window(), nullptr, 0, 0, width, 700, SWP_NOZORDER);
        RECT inside, list;
        GetClientRect(window(), &inside);
        for (const int id : {IDW_DEVICES, IDW_SERVICES}) {
            GetWindowRect(child(id), &list);
            EXPECT_EQ(list.right - list.left, inside.right - 20) << width;
        }
        const RECT row = devices().area(kPhone);
        EXPECT_GE(row.right - row.left, inside.right - 60) << width;  // less a scroll bar
    }
}

TEST_F(VeltrinFrame, CannotBeMadeTooSmallForItsLists) {
    open();
    SetWindowPos(window(), nullptr, 0, 0, 10, 10, SWP_NOZORDER);
    for (const int id : {IDW_DEVICES, IDW_SERVICES}) {
        RECT list;
        GetWindowRect(child(id), &list);
        EXPECT_GT(list.bottom - list.top, 40) << id;
        EXPECT_GT(list.right - list.left, 400) << id;
    }
}

TEST_F(VeltrinResources, BindKeysToCommands) {
    const struct {
        const char* label;
        BYTE flags;
        WORD key, command;
    } rows[] = {
        {"Ctrl+O", FVIRTKEY | FCONTROL, 'O', IDC_SEND},
        {"Ctrl+S", FVIRTKEY | FCONTROL, 'S', IDC_SEND_TRANSFER},
        {"Ctrl+P", FVIRTKEY | FCONTROL, 'P', IDC_SEND_PRINT},
        {"F5", FVIRTKEY, VK_F5, IDC_REFRESH},
        {"Tab", FVIRTKEY, VK_TAB, IDC_NEXT_LIST},
        {"Shift+Tab", FVIRTKEY | FSHIFT, VK_TAB, IDC_NEXT_LIST},
    };
    const vl::UniqueModule program = load("Veltrin.exe");
    ACCEL keys[16] = {};
    const HACCEL table = LoadAcceleratorsW(program.get(), MAKEINTRESOURCEW(IDR_MAIN));
    const int count = CopyAcceleratorTableW(table, keys, 16);
    EXPECT_EQ(count, 6);
    support::for_each_row(rows, [&](const auto& row) {
        const bool found = std::any_of(keys, keys + count, [&row](const ACCEL& key) {
            return (key.fVirt & 0x1F) == row.flags && key.key == row.key && key.cmd == row.command;
        });
        EXPECT_TRUE(found);
    });
}

TEST_F(VeltrinResources, AskForTheResolutionOfEachMonitor) {
    const vl::UniqueModule program = load("Veltrin.exe");
    const HRSRC found = FindResourceW(program.get(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    ASSERT_NE(found, nullptr);
    const std::string manifest(static_cast<const char*>(LockResource(LoadResource(program.get(), found))),
                               SizeofResource(program.get(), found));
    EXPECT_NE(manifest.find(">true/pm</dpiAware>"), std::string::npos);
    EXPECT_NE(manifest.find(">PerMonitorV2, PerMonitor</dpiAwareness>"), std::string::npos);
    EXPECT_NE(manifest.find("Microsoft.Windows.Common-Controls"), std::string::npos);
}

TEST_F(VeltrinResources, FallBackToTheBaseIcon) {
    const veltrin::IconLibrary library;
    const std::vector<uint32_t> base = pixels(library.load({285, 285}, 32).get(), 32);
    for (const unsigned int state : {287u, 288u, 289u}) {
        EXPECT_EQ(pixels(library.load({state, 285}, 32).get(), 32), base) << state;
    }
    EXPECT_NE(pixels(library.load({286, 285}, 32).get(), 32), base);
}

TEST_F(VeltrinResources, HaveNoIconForIdentifier0) {
    const veltrin::IconLibrary library;
    EXPECT_FALSE(library.load({0, 0}, 32));
    EXPECT_FALSE(library.load({0, 21}, 32));
    EXPECT_FALSE(library.load({60000, 60000}, 32));
    EXPECT_TRUE(library.load({21, 21}, 32));
}

TEST_F(VeltrinResources, DrawIconsAtASharpSize) {
    const struct {
        const char* label;
        int wanted, sharp;
    } rows[] = {{"100 %", 32, 32},       {"125 %", 40, 32},  {"150 %", 48, 48},
                {"small 125 %", 25, 24}, {"tiny", 8, 16},    {"below", 18, 16},
                {"large", 64, 64},       {"larger", 96, 96}, {"between", 60, 48}};
    support::for_each_row(rows,
                          [](const auto& row) { EXPECT_EQ(veltrin::sharp_size(row.wanted), row.sharp); });
}
