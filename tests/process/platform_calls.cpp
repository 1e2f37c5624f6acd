#include "platform_calls.h"

#include <shellapi.h>
#include <string.h>

#include <algorithm>
#include <cstdio>
#include <type_traits>

namespace process_test {
namespace {

constexpr DWORD kDeadlineMs = 20000;
constexpr const char* kOwnHandles[] = {"key", "mutex", "process", "thread", "worker"};

std::string hex(unsigned long long value) {
    char digits[32];
    snprintf(digits, sizeof digits, "0x%llx", value);
    return digits;
}

bool is_zero(const void* bytes, size_t size) {
    const auto first = static_cast<const char*>(bytes);
    return std::all_of(first, first + size, [](char byte) { return byte == 0; });
}

// By its size field; every other byte has to be zero.
std::string show_startup(STARTUPINFOA info) {
    const std::string size = info.cb == sizeof info ? "own size" : "size " + std::to_string(info.cb);
    info.cb = 0;
    return size + (is_zero(&info, sizeof info) ? "" : " and rubbish");
}

}  // namespace

template <typename T>
std::string PlatformCalls::show(T value) const {
    if constexpr (std::is_same_v<T, const char*> || std::is_same_v<T, char*>) {
        return value ? "\"" + std::string(value) + "\"" : "null";
    } else if constexpr (std::is_same_v<T, STARTUPINFOA*>) {
        return show_startup(*value);
    } else if constexpr (std::is_same_v<T, PROCESS_INFORMATION*>) {
        return is_zero(value, sizeof *value) ? "zeroed" : "rubbish";
    } else if constexpr (std::is_same_v<T, DWORD*>) {
        return value ? std::to_string(*value) : "null";
    } else if constexpr (std::is_pointer_v<T>) {
        return value ? name_of(reinterpret_cast<const void*>(value)) : "null";
    } else if constexpr (std::is_same_v<T, WPARAM>) {
        return value ? name_of(reinterpret_cast<const void*>(value)) : "0";
    } else if constexpr (std::is_same_v<T, UINT>) {
        return hex(value);
    } else if constexpr (std::is_same_v<T, DWORD>) {
        return value > 0xFFFF ? hex(value) : std::to_string(value);
    } else {
        return std::to_string(value);
    }
}

// The function's calls are recorded and end with `failure` when that was asked for; the others go to
// run(patch, arguments...).
template <typename Run, typename R, typename... A>
void PlatformCalls::watch(const char* function, R (*type)(A...), R failure, Run run) {
    auto patch = std::make_shared<support::CallPatch<R(A...)>>(function, type, library_);
    patch->answer([this, function, failure, run, watched = patch.get()](A... arguments) -> R {
        if (record(function, {show(arguments)...})) return failure;
        return run(*watched, arguments...);
    });
    patches_.push_back(std::move(patch));
}

template <typename R, typename... A>
void PlatformCalls::watch(const char* function, R (*type)(A...), R failure) {
    watch(function, type, failure, [](auto& patch, A... arguments) { return patch.real(arguments...); });
}

void PlatformCalls::watch_windows() {
    watch("FindWindowA", FindWindowA, HWND{},
          [this](auto& patch, const char* window_class, const char* title) {
              const bool found = windows_found_ && !is_late(title);
              return found ? patch.real(window_class, title) : nullptr;
          });
    watch("IsWindow", IsWindow, FALSE);
    watch("PostMessageA", PostMessageA, FALSE);
    watch("SetForegroundWindow", SetForegroundWindow, FALSE);
    watch("SetWindowPos", SetWindowPos, FALSE);
    watch("GetWindowLongPtrA", GetWindowLongPtrA, LONG_PTR{});
    watch("SetWindowLongPtrA", SetWindowLongPtrA, LONG_PTR{});
}

BOOL PlatformCalls::pretend_program(PROCESS_INFORMATION* handles) {
    if (on_create_process) return on_create_process(handles);
    handles->hProcess = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    handles->hThread = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    return TRUE;
}

void PlatformCalls::watch_programs() {
    watch("CreateProcessA", CreateProcessA, FALSE, [this](auto& patch, auto... arguments) {
        auto handles = std::get<sizeof...(arguments) - 1>(std::make_tuple(arguments...));
        const BOOL created = start_programs ? patch.real(arguments...) : pretend_program(handles);
        program_started_ = created != FALSE;
        if (start_programs && created) keep(program_, handles->hProcess);
        if (handles->hProcess) named(handles->hProcess, "process");
        if (handles->hThread) named(handles->hThread, "thread");
        return created;
    });
    constexpr auto kFileNotFound = static_cast<ULONG_PTR>(SE_ERR_FNF);
    watch("ShellExecuteA", ShellExecuteA, reinterpret_cast<HINSTANCE>(kFileNotFound),
          [this](auto& patch, auto... arguments) {
              return start_programs ? patch.real(arguments...) : reinterpret_cast<HINSTANCE>(ULONG_PTR{42});
          });
    watch("WaitForSingleObject", WaitForSingleObject, DWORD{WAIT_FAILED},
          [this](auto& patch, HANDLE object, DWORD milliseconds) {
              return start_programs ? patch.real(object, milliseconds) : DWORD{WAIT_TIMEOUT};
          });
}

void PlatformCalls::watch_threads() {
    auto sleep = std::make_shared<support::CallPatch<void(DWORD)>>("Sleep", Sleep, library_);
    sleep->answer([this](DWORD milliseconds) {
        record("Sleep", {show(milliseconds)});
        for (auto& [title, sleeps] : late_) --sleeps;
        if (on_sleep) on_sleep(milliseconds);
    });
    patches_.push_back(std::move(sleep));
    // Suspended until it is named: the thread's own calls come behind this one.
    watch("CreateThread", CreateThread, HANDLE{},
          [this](auto& patch, SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE routine,
                 void* argument, DWORD flags, DWORD* identifier) {
              HANDLE thread =
                  patch.real(security, stack, routine, argument, flags | CREATE_SUSPENDED, identifier);
              keep(worker_, thread);
              named(thread, "worker");
              ResumeThread(thread);
              return thread;
          });
    auto exit = std::make_shared<support::CallPatch<void(HMODULE, DWORD)>>(
        "FreeLibraryAndExitThread", FreeLibraryAndExitThread, library_);
    exit->answer([this, watched = exit.get()](HMODULE module, DWORD code) {
        record("FreeLibraryAndExitThread", {show(module), show(code)});
        --library_references_;
        watched->real(module, code);
    });
    patches_.push_back(std::move(exit));
}

void PlatformCalls::watch_handles() {
    watch("OpenMutexA", OpenMutexA, HANDLE{},
          [this](auto& patch, DWORD access, BOOL inherit, const char* name) {
              return named(patch.real(access, inherit, name), "mutex");
          });
    auto close = std::make_shared<support::CallPatch<BOOL(HANDLE)>>("CloseHandle", CloseHandle, library_);
    close->answer([this, watched = close.get()](HANDLE handle) {
        const std::string text = show(handle);
        if (forget(handle)) record("CloseHandle", {text});
        return watched->real(handle);
    });
    patches_.push_back(std::move(close));
    auto reference = std::make_shared<support::CallPatch<BOOL(DWORD, const char*, HMODULE*)>>(
        "GetModuleHandleExA", GetModuleHandleExA, library_);
    reference->answer([this, watched = reference.get()](DWORD flags, const char* address, HMODULE* module) {
        if (record("GetModuleHandleExA", {show(flags)})) return FALSE;
        ++library_references_;
        return watched->real(flags, address, module);
    });
    patches_.push_back(std::move(reference));
    auto release = std::make_shared<support::CallPatch<BOOL(HMODULE)>>("FreeLibrary", FreeLibrary, library_);
    release->answer([this, watched = release.get()](HMODULE module) {
        if (module == library_) {
            record("FreeLibrary", {show(module)});
            --library_references_;
        }
        return watched->real(module);
    });
    patches_.push_back(std::move(release));
}

void PlatformCalls::watch_registry() {
    watch("RegOpenKeyExA", RegOpenKeyExA, LSTATUS{ERROR_ACCESS_DENIED},
          [this](auto& patch, HKEY root, const char* name, DWORD options, REGSAM access, HKEY* key) {
              const LSTATUS status = patch.real(root, name, options, access, key);
              if (status == ERROR_SUCCESS && *key != root) named(*key, "key");
              return status;
          });
    watch("RegQueryValueExA", RegQueryValueExA, LSTATUS{ERROR_FILE_NOT_FOUND},
          [this](auto& patch, HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                 DWORD* size) {
              if (!is_zero(data, *size)) record("rubbish in the buffer", {});
              return patch.real(key, name, reserved, type, data, size);
          });
    watch("RegCloseKey", RegCloseKey, LSTATUS{ERROR_INVALID_HANDLE}, [this](auto& patch, HKEY key) {
        if (key != HKEY_LOCAL_MACHINE) forget(key);
        return patch.real(key);
    });
}

PlatformCalls::PlatformCalls(HMODULE library) : library_(library) {
    name(HWND_TOPMOST, "topmost");
    name(HWND_NOTOPMOST, "not topmost");
    name(HKEY_LOCAL_MACHINE, "HKLM");
    name(library, "library");
    watch_windows();
    watch_programs();
    watch_threads();
    watch_handles();
    watch_registry();
}

PlatformCalls::~PlatformCalls() {
    if (worker_ != nullptr) {
        WaitForSingleObject(worker_, kDeadlineMs);  // it makes calls that are watched
        CloseHandle(worker_);
    }
    patches_.clear();
    if (program_ != nullptr) CloseHandle(program_);
}

template <typename T>
T PlatformCalls::named(T handle, const char* text) {
    if (handle != nullptr) name(handle, text);
    return handle;
}

Lines PlatformCalls::open_handles() const {
    Lines open;
    for (const char* own : kOwnHandles) open.insert(open.end(), handles_named(own).size(), own);
    return open;
}

void PlatformCalls::close_handles() {
    for (const char* own : {"process", "thread"}) {
        for (const void* handle : handles_named(own)) {
            forget(handle);
            CloseHandle(const_cast<void*>(handle));
        }
    }
}

void PlatformCalls::find_late(const std::string& title, int sleeps) { late_[title] = sleeps; }

bool PlatformCalls::is_late(const char* title) const {
    const auto late = title ? late_.find(title) : late_.end();
    return late != late_.end() && (!program_started_ || late->second > 0);
}

void PlatformCalls::keep(HANDLE& slot, HANDLE source) {
    if (slot != nullptr) CloseHandle(slot);
    DuplicateHandle(GetCurrentProcess(), source, GetCurrentProcess(), &slot, 0, FALSE, DUPLICATE_SAME_ACCESS);
}

bool PlatformCalls::worker_ended() const {
    return worker_ != nullptr && WaitForSingleObject(worker_, kDeadlineMs) == WAIT_OBJECT_0;
}

}  // namespace process_test
