#include "file_watch.h"

#include <algorithm>

namespace programs {
namespace {

// A change that the system did not report (a folder on another kind of file system) is seen at the
// next look.
constexpr DWORD kLookAgain_ms = 500;

class ChangeNotification {
public:
    explicit ChangeNotification(const std::wstring& folder)
        : handle_(FindFirstChangeNotificationW(
              folder.c_str(), FALSE,
              FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE)) {}
    ~ChangeNotification() {
        if (handle_ != INVALID_HANDLE_VALUE) FindCloseChangeNotification(handle_);
    }
    ChangeNotification(const ChangeNotification&) = delete;
    ChangeNotification& operator=(const ChangeNotification&) = delete;

    void wait(DWORD timeout_ms) const {
        if (handle_ == INVALID_HANDLE_VALUE) {
            Sleep(std::min<DWORD>(timeout_ms, 20));
        } else if (WaitForSingleObject(handle_, timeout_ms) == WAIT_OBJECT_0) {
            FindNextChangeNotification(handle_);
        }
    }

private:
    HANDLE handle_;
};

}  // namespace

bool wait_in_folder(const std::wstring& folder, DWORD timeout_ms, const std::function<bool()>& condition) {
    const ChangeNotification changes(folder);  // before the first look: nothing falls between
    const ULONGLONG deadline = GetTickCount64() + timeout_ms;
    for (;;) {
        if (condition()) return true;
        const ULONGLONG now = GetTickCount64();
        if (now >= deadline) return false;
        changes.wait(std::min(static_cast<DWORD>(deadline - now), kLookAgain_ms));
    }
}

}  // namespace programs
