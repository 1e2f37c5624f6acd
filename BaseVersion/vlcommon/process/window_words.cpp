// 32-bit access to the words of a window, whose real width follows the pointer.
#include "vlcm/companions.h"

extern "C" LONG Vlcm_SetWindowLong(HWND window, int index, LONG value) {
    return static_cast<LONG>(SetWindowLongPtrA(window, index, LONG_PTR{value}));
}

extern "C" LONG Vlcm_GetWindowLong(HWND window, int index) {
    return static_cast<LONG>(GetWindowLongPtrA(window, index));
}
