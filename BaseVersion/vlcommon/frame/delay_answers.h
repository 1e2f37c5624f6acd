// What a delay-loaded call returns when its DLL or function is missing. Zero means failure for
// BOOL, handles, pointers and counts, but success for HRESULT, LSTATUS and GDI+'s status: those have rows.
#pragma once

#include <windows.h>

#include <string.h>

namespace vl {

template <LRESULT value>
LRESULT WINAPI delay_answer() {
    SetLastError(ERROR_PROC_NOT_FOUND);
    return value;
}

inline FARPROC delay_answer_for(const char* dll, const char* function) {
    struct Row {
        const char* dll;
        const char* prefix;  // of the function; the first row that fits holds
        LRESULT(WINAPI* answer)();
    };
    constexpr LRESULT kFail = static_cast<HRESULT>(0x80004005);  // E_FAIL
    static constexpr Row kRows[] = {
        {"shell32.dll", "SHGetFolderPath", delay_answer<kFail>},
        {"ole32.dll", "CLSIDFromString", delay_answer<kFail>},
        {"ole32.dll", "CoTaskMem", delay_answer<0>},
        {"ole32.dll", "Co", delay_answer<kFail>},
        {"advapi32.dll", "Reg", delay_answer<ERROR_PROC_NOT_FOUND>},
        {"gdiplus.dll", "Gdip", delay_answer<18>},  // GdiplusNotInitialized
    };
    for (const Row& row : kRows) {
        if (_stricmp(dll, row.dll) == 0 && strncmp(function, row.prefix, strlen(row.prefix)) == 0) {
            return reinterpret_cast<FARPROC>(row.answer);
        }
    }
    return reinterpret_cast<FARPROC>(delay_answer<0>);
}

}  // namespace vl
