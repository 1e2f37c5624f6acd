// Records, in order, the calls by which the library deals with windows, programs, threads and the
// registry. Sleeping is never real; programs are started only when asked for.
#pragma once

#include "support/call_patch.h"

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace process_test {

using Lines = std::vector<std::string>;

class PlatformCalls {
public:
    explicit PlatformCalls(HMODULE library = support::library_under_test());
    ~PlatformCalls();
    PlatformCalls(const PlatformCalls&) = delete;
    PlatformCalls& operator=(const PlatformCalls&) = delete;

    // The calls so far, which are then forgotten: `SetForegroundWindow(agent)`. Texts stand in quotation
    // marks, handles by their names; closing and freeing is recorded for named handles only.
    Lines take();
    // How often `call`, a whole recorded line, was made since the last take().
    [[nodiscard]] size_t count(const std::string& call) const;
    // Adds a line of the test's own; true when a failure was asked for under that name.
    bool record(const std::string& function, const Lines& arguments);

    // How a handle is called in the lines. The library's own take "mutex", "process", "thread", "worker"
    // and "key"; the library itself is "library".
    void name(const void* handle, const std::string& text);
    // Which of its own handles the library has not closed, sorted.
    [[nodiscard]] Lines open_handles() const;
    // Closes what the library left open.
    void close_handles();
    // References to the library that its thread took and nobody gave back.
    [[nodiscard]] int library_references() const { return library_references_; }

    // Lets the nth call from now of a function fail and do nothing.
    void fail(const std::string& function, int nth = 1);
    // Takes back failures that no call has met yet; how many there were.
    size_t drop_failures();

    // Windows of this title are found only after a program was started and so many Sleeps were made.
    void find_late(const std::string& title, int sleeps);
    // Whether windows are found at all.
    void find_windows(bool found) { windows_found_ = found; }

    std::function<void(const std::string& line)> on_call;  // sees each line as it is recorded
    std::function<void(DWORD)> on_sleep;                   // runs instead of each Sleep
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
    struct Failure {
        std::string function;
        int nth;
    };
    class Locked;

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
    std::string name_of(const void* handle) const;
    template <typename T>
    T named(T handle, const char* text);
    bool forget(const void* handle);
    void keep(HANDLE& slot, HANDLE source);
    bool is_late(const char* title) const;
    BOOL pretend_program(PROCESS_INFORMATION* handles);

    HMODULE library_;
    HANDLE worker_ = nullptr, program_ = nullptr;
    bool windows_found_ = true;
    std::map<std::string, int> late_;  // title -> Sleeps to go, counted from a program's start
    bool program_started_ = false;
    int library_references_ = 0;
    mutable SRWLOCK lock_ = SRWLOCK_INIT;  // the dialling worker makes calls of its own
    Lines lines_;
    std::map<const void*, std::string> names_;
    std::vector<Failure> failures_;
    std::vector<std::shared_ptr<void>> patches_;
};

}  // namespace process_test
