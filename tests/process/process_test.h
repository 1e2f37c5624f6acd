// What the tests of this folder share: the fixture and the things that stand in for other programs.
#pragma once

#include "platform_calls.h"

#include "VlCommon.h"
#include "VlSim.h"
#include "VlTraceLog.h"
#include "support/import_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace process_test {

inline constexpr char kTrayTitle[] = "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}";
inline constexpr char kTrayMutex[] = "Veltrin2_VLTray";

// Lists of lines are put together with +.
Lines operator+(Lines first, const Lines& second);
Lines repeated(int times, const Lines& lines);

// Lines of PlatformCalls.
std::string look_for(const std::string& title);
std::string sleep_of(DWORD milliseconds);
std::string start_of_file(const std::string& path);             // CreateProcessA with a path
std::string start_of_command_line(const std::string& command);  // CreateProcessA with a command line
const Lines& close_program();

// Entries of the trace log.
Lines scope_of(const std::string& name);
Lines nested(const std::string& name, const Lines& inside);

std::string lower_case(std::string text);

// The suite is installed in "C:\Suite"; every call of the library to the platform is recorded.
class ProcessTest : public support::SuiteTest {
protected:
    ProcessTest() { install_dir("C:\\Suite"); }
    ~ProcessTest() override;

    void install_dir(const std::string& folder) { common_setting("General", "InstallDir", folder); }
    void common_setting(const char* section, const char* key, const std::string& value) {
        settings().common(section, key, value);
        calls.take();
    }
    void personal_setting(const char* section, const char* key, const std::string& value) {
        settings().personal(section, key, value);
        calls.take();
    }
    static std::string personal_setting(const char* section, const char* key) {
        return support::SettingsScope::get(support::SettingsFile::kPersonal, section, key);
    }
    // The trace log so far, which is then emptied.
    static Lines trace();

    PlatformCalls calls;
};

// A hidden window of the test's own thread: what is posted to it stays in the queue, WM_QUIT too.
class QueueWindow {
public:
    // window_class: a class of its own is registered when it is not one of the system's.
    explicit QueueWindow(const char* title, const char* window_class = "STATIC");
    ~QueueWindow() { DestroyWindow(handle_); }
    QueueWindow(const QueueWindow&) = delete;
    QueueWindow& operator=(const QueueWindow&) = delete;
    [[nodiscard]] HWND handle() const { return handle_; }
    // Takes a posted message off the queue; false when there is none.
    [[nodiscard]] bool got(UINT message) const;

private:
    HWND handle_;
};

// A mutex of that name that another thread of the suite would own.
class Mutex {
public:
    explicit Mutex(const char* name) : handle_(CreateMutexA(nullptr, FALSE, name)) {}
    ~Mutex() { CloseHandle(handle_); }
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;
    [[nodiscard]] HANDLE handle() const { return handle_; }

private:
    HANDLE handle_;
};

// A window of that title that is found only after a program was started and so many Sleeps were made.
class LateWindow {
public:
    LateWindow(PlatformCalls& calls, const char* title, int sleeps) : window_(title) {
        calls.find_late(title, sleeps);
        calls.name(window_.handle(), "late");
    }

private:
    QueueWindow window_;
};

// Answers instead of the stack's relay and records what it is given as "relay(message, parameter)".
class RelayRecorder {
public:
    explicit RelayRecorder(PlatformCalls& calls);
    ~RelayRecorder();
    RelayRecorder(const RelayRecorder&) = delete;
    RelayRecorder& operator=(const RelayRecorder&) = delete;
    uint32_t answer = 0;

private:
    static uint32_t relay(uint32_t message, uint32_t parameter);
    static inline RelayRecorder* current_ = nullptr;
    PlatformCalls& calls_;
};

// A key under HKEY_LOCAL_MACHINE that exists during a scope.
class LauncherKey {
public:
    explicit LauncherKey(const char* path) : path_(path) { registry_.make_key(HKEY_LOCAL_MACHINE, path); }
    void set(const char* value, const std::string& text) {
        registry_.set(HKEY_LOCAL_MACHINE, path_, value, text);
    }
    void set(const char* value, DWORD type, const std::string& bytes) {
        registry_.set(HKEY_LOCAL_MACHINE, path_, value, type, std::vector<BYTE>(bytes.begin(), bytes.end()));
    }

private:
    support::RegistryScope registry_;
    const char* path_;
};

}  // namespace process_test
