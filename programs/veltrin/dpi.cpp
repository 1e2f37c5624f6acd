#include "dpi.h"

namespace veltrin {
namespace {

// Functions that Windows 7 lacks; null there.
template <typename Function>
Function user32_function(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

UINT desktop_dpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? static_cast<UINT>(dpi) : kUsualDpi;
}

// At the desktop's resolution.
LOGFONTW desktop_font() {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics.lfMessageFont;
}

}  // namespace

UINT dpi_of(HWND window) {
    using Query = UINT(WINAPI*)(HWND);
    const auto query = user32_function<Query>("GetDpiForWindow");
    const UINT dpi = query ? query(window) : 0;
    return dpi != 0 ? dpi : desktop_dpi();
}

int scaled(int length, UINT dpi) {
    return MulDiv(length, static_cast<int>(dpi), static_cast<int>(kUsualDpi));
}

UniqueFont message_font(UINT dpi, bool bold) {
    LOGFONTW font = desktop_font();
    font.lfHeight = MulDiv(font.lfHeight, static_cast<int>(dpi), static_cast<int>(desktop_dpi()));
    if (bold) font.lfWeight = FW_BOLD;
    return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace veltrin
