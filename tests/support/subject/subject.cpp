#define SUBJECT_API
#include "subject.h"

#include <objbase.h>
#include <oleauto.h>
#include <shlwapi.h>
#include <stdlib.h>
#include <string.h>

#include <new>

namespace {
void* volatile g_sink;  // keeps the optimiser from removing a pair of calls
void* keep(void* taken) {
    g_sink = taken;
    return taken;
}
HWND g_window = nullptr;
}  // namespace

extern "C" {

void* subject_leak_block() { return keep(malloc(10)); }
void* subject_leak_object() { return keep(new (std::nothrow) int[5]); }
void* subject_leak_heap_block() { return keep(HeapAlloc(GetProcessHeap(), 0, 10)); }
void* subject_leak_task_block() { return keep(CoTaskMemAlloc(10)); }
void* subject_leak_local_block() { return keep(LocalAlloc(LMEM_FIXED, 10)); }
void* subject_leak_global_block() { return keep(GlobalAlloc(GMEM_FIXED, 10)); }
void* subject_leak_string() { return keep(SysAllocString(L"text")); }
void* subject_leak_view(HANDLE section) { return MapViewOfFile(section, FILE_MAP_READ, 0, 0, 0); }
HMODULE subject_leak_module() { return LoadLibraryA("VlTrace.dll"); }
HMODULE subject_leak_system_module() {
    char path[MAX_PATH];
    GetSystemDirectoryA(path, MAX_PATH);
    return LoadLibraryExA(strcat(path, "\\shlwapi.dll"), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}
HANDLE subject_leak_event() { return CreateEventW(nullptr, FALSE, FALSE, L"SubjectEvent"); }
void subject_leak_window() {
    g_window = CreateWindowExA(0, "STATIC", "Left behind", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}
void subject_destroy_window() { DestroyWindow(g_window); }
void subject_free_block(void* block) { free(block); }

void subject_balanced_blocks() {
    g_sink = malloc(10);
    g_sink = realloc(g_sink, 5000);
    free(g_sink);
    int* object = new (std::nothrow) int;
    g_sink = object;
    delete object;
    g_sink = _strdup("text");
    free(g_sink);
    g_sink = HeapAlloc(GetProcessHeap(), 0, 10);
    HeapFree(GetProcessHeap(), 0, g_sink);
}
void subject_balanced_other_memory() {
    CoTaskMemFree(subject_leak_task_block());
    LocalFree(subject_leak_local_block());
    GlobalFree(subject_leak_global_block());
    SysFreeString(static_cast<BSTR>(subject_leak_string()));
    FreeLibrary(subject_leak_module());
}
void subject_balanced_handles() {
    CloseHandle(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &key);
    RegCloseKey(key);
}
BOOL subject_allocation_works() {
    int* object = new (std::nothrow) int;
    g_sink = object;
    delete object;
    return object != nullptr;
}

DWORD subject_ticks() { return GetTickCount(); }
BOOL subject_is_relative(const wchar_t* path) { return PathIsRelativeW(path); }
DWORD subject_resolved_at_run_time() {
    const auto function = reinterpret_cast<DWORD(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetCurrentProcessId")));
    return function ? function() : 0;
}
BOOL subject_delete_file(const char* path) { return DeleteFileA(path); }
void subject_wait(DWORD length_ms, DWORD times) {
    for (DWORD i = 0; i < times; ++i) Sleep(length_ms);
}
void subject_say() {
    OutputDebugStringA("narrow ");
    OutputDebugStringW(L"wide");
}
int subject_ask() { return MessageBoxW(nullptr, L"Go on?", L"Subject", MB_YESNO | MB_ICONQUESTION); }
}
