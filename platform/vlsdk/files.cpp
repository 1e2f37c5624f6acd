// Files: the Win32 operations, with a ledger of what is open.
#include "VlSDK.h"
#include "live.h"
#include "misuse.h"
#include "operation.h"

namespace vlsim {
namespace {

Ledger<HANDLE, bool> open_files;

HANDLE create_file(const char* path, uint32_t access, uint32_t disposition, uint32_t attributes,
                   HANDLE pattern) {
    const HANDLE file = CreateFileA(path, access, FILE_SHARE_READ, nullptr, disposition, attributes, pattern);
    if (file != INVALID_HANDLE_VALUE) open_files.add(file, true);
    return file;
}

BOOL write_file(HANDLE file, const void* data, uint32_t size, uint32_t* written, void* overlapped) {
    DWORD count = 0;
    const BOOL done = WriteFile(file, data, size, &count, static_cast<OVERLAPPED*>(overlapped));
    if (written) *written = count;
    return done;
}

BOOL close_handle(HANDLE file) {
    if (open_files.remove(file)) return CloseHandle(file);
    report_misuse("Btsdk_CloseHandle", "file closed twice or not opened here");
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

}  // namespace

uint32_t live_files() { return open_files.count(); }

}  // namespace vlsim

using vlsim::call;

HANDLE Btsdk_CreateFile(const char* path, uint32_t access, uint32_t disposition, uint32_t attributes,
                        HANDLE pattern) {
    return call<"Btsdk_CreateFile">(vlsim::create_file, path, access, disposition, attributes, pattern);
}

BOOL Btsdk_WriteFile(HANDLE file, const void* data, uint32_t size, uint32_t* written, void* overlapped) {
    return call<"Btsdk_WriteFile">(vlsim::write_file, file, data, size, written, overlapped);
}

BOOL Btsdk_CloseHandle(HANDLE file) { return call<"Btsdk_CloseHandle">(vlsim::close_handle, file); }
