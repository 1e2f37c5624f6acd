// Records, in order, the calls by which the library deals with windows, programs, threads and the
// registry. Texts stand in quotation marks, handles by their names: "mutex", "process", "thread", "worker"
// and "key" for those that the library is given, "library" for itself. Closing and freeing is recorded for
// named handles only. Sleeping is never real; programs are started only when asked for.
#pragma once

#include "call_recorder.h"
#include "support/call_patch.h"

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace process_test {

class PlatformCalls : public CallRecorder {
public:
    explicit PlatformCalls(HMODULE library = support::library_under_test());
    ~PlatformCalls();
    PlatformCalls(const PlatformCalls&) = delete;
    PlatformCalls& operator=(const PlatformCalls&) = delete;

    // Which of its own handles the library has not closed, sorted.
    [[nodiscard]] Lines open_handles() const;
    // Closes what the library left open.
    void close_handles();
    // References to the library that its thread took and nobody gave back.
    [[nodiscard]] int library_references() const { return library_references_; }

    // Windows of this title are found only after a program was started and so many Sleeps were made.
    void find_late(const std::string& title, int sleeps);
    // Whether windows are found at all.
    void find_windows(bool found) { windows_found_ = found; }

    std::function<void(DWORD)> on_sleep;  // runs instead of each Sleep
    // Answers instead of CreateProcessA; without it every start succeeds with two handles.
    std::function<BOOL(PROCESS_INFORMATION*)> on_create_process;
    // CreateProcessA, ShellExecuteA and WaitForSingleObject do the real thing.
    bool start_programs = false;

    // The library's last worker thread and the last program started in earnest; null: none.
    [[nodiscard]] HANDLE worker() const { return worker_; }
    [[nodiscard]] HANDLE program() const { return program_; }
    // Waits for the worker's end.
    [[nodiscard]] bool worker_ended() const;

private:
    template <typename Run, typename R, typename... A>
    void watch(const char* function, R (*type)(A...), R failure, Run run);
    template <typename R, typename... A>
    void watch(const char* function, R (*type)(A...), R failure);
    void watch_windows();
    void watch_programs();
    void watch_threads();
    void watch_handles();
    void watch_registry();

    template <typename T>
    std::string show(T value) const;
    template <typename T>
    T named(T handle, const char* text);
    void keep(HANDLE& slot, HANDLE source);
    bool is_late(const char* title) const;
    BOOL pretend_program(PROCESS_INFORMATION* handles);

    HMODULE library_;
    HANDLE worker_ = nullptr, program_ = nullptr;
    bool windows_found_ = true;
    std::map<std::string, int> late_;  // title -> Sleeps to go, counted from a program's start
    bool program_started_ = false;
    int library_references_ = 0;
    std::vector<std::shared_ptr<void>> patches_;
};

}  // namespace process_test
