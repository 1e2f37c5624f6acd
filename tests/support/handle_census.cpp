#include "support/handle_census.h"

#include <objbase.h>
#include <shlobj.h>

namespace support {
namespace {

struct Entry {
    void* object;
    ULONG_PTR process, handle;
    ULONG access;
    USHORT trace, type;
    ULONG attributes, reserved;
};
struct Table {
    ULONG_PTR count, reserved;
    Entry entries[1];
};

template <typename F>
F native(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), name)));
}

std::string query_text(HANDLE handle, ULONG information) {
    using Query = LONG(WINAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);
    static const auto query = native<Query>("NtQueryObject");
    struct {
        USHORT bytes, room;
        const wchar_t* text;
        char rest[2048];
    } answer{};
    ULONG needed = 0;
    if (query(handle, information, &answer, sizeof answer, &needed) != 0) return "?";
    std::string text;
    for (size_t i = 0; i < answer.bytes / sizeof(wchar_t); ++i) text += static_cast<char>(answer.text[i]);
    return text;
}

std::string describe_handle(HANDLE handle) {
    constexpr ULONG kObjectName = 1, kObjectType = 2;
    return std::to_string(reinterpret_cast<ULONG_PTR>(handle)) + " " + query_text(handle, kObjectType) +
           " \"" + query_text(handle, kObjectName) + "\"";
}

DWORD WINAPI do_nothing(void*) { return 0; }

void open_registry_roots() {
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT, HKEY_USERS}) {
        HKEY key = nullptr;
        if (RegOpenKeyExA(root, "Software", 0, KEY_READ, &key) == ERROR_SUCCESS) RegCloseKey(key);
    }
}

void open_desktop() {
    HWND window = CreateWindowExA(0, "STATIC", "warm-up", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    FindWindowA(nullptr, "no such window");
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
    DestroyWindow(window);
}

void open_shell() {
    char path[MAX_PATH];
    SHGetFolderPathA(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 1, path);
    SHGetFolderPathA(nullptr, CSIDL_WINDOWS, nullptr, 1, path);
    CoTaskMemFree(CoTaskMemAlloc(1));
    for (const char* dll : {"advapi32.dll", "shlwapi.dll", "oleaut32.dll", "user32.dll"}) LoadLibraryA(dll);
}

void open_threads_and_files() {
    HANDLE thread = CreateThread(nullptr, 0, do_nothing, nullptr, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    GetPrivateProfileIntA("none", "none", 0, "C:\\none.ini");
}

void open_named_objects() {
    CloseHandle(CreateEventA(nullptr, FALSE, FALSE, "vlcm warm-up"));
    OutputDebugStringA("");
}

}  // namespace

HandleCensus::Handles HandleCensus::take() {
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    static const auto query = native<Query>("NtQuerySystemInformation");
    constexpr ULONG kExtendedHandleInformation = 64;
    constexpr LONG kLengthMismatch = static_cast<LONG>(0xC0000004);
    static std::vector<char> room(1 << 16);  // static: must not open anything itself
    LONG status = 0;
    ULONG needed = 0;
    while ((status = query(kExtendedHandleInformation, room.data(), static_cast<ULONG>(room.size()),
                           &needed)) == kLengthMismatch) {
        room.resize(room.size() * 2);
    }
    Handles own;
    if (status != 0) return own;
    const auto table = reinterpret_cast<const Table*>(room.data());
    for (ULONG_PTR i = 0; i < table->count; ++i) {
        const Entry& entry = table->entries[i];
        if (entry.process == GetCurrentProcessId()) own[entry.handle] = entry.type;
    }
    return own;
}

std::vector<HANDLE> HandleCensus::opened() const {
    std::vector<HANDLE> opened;
    for (const auto& [handle, type] : take()) {
        const auto before = handles_.find(handle);
        if (before == handles_.end() || before->second != type) {
            opened.push_back(reinterpret_cast<HANDLE>(handle));
        }
    }
    return opened;
}

std::vector<std::string> HandleCensus::describe() const {
    std::vector<std::string> lines;
    for (HANDLE handle : opened()) lines.push_back(describe_handle(handle));
    return lines;
}

void warm_up_process() {
    static bool done = false;
    if (done) return;
    done = true;
    open_registry_roots();
    open_desktop();
    open_shell();
    open_threads_and_files();
    open_named_objects();
}

}  // namespace support
