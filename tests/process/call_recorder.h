// An ordered record of calls as lines of text, `SetForegroundWindow(agent)`, and which of them fail.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace process_test {

using Lines = std::vector<std::string>;

// May be used from several threads: the dialling worker makes calls of its own.
class CallRecorder {
public:
    // The calls so far, which are then forgotten.
    Lines take();
    // How often `call`, a whole recorded line, was made since the last take().
    [[nodiscard]] size_t count(const std::string& call) const;
    // Adds a call; true when it is to fail.
    bool record(const std::string& function, const Lines& arguments);

    // How a handle is called in the lines.
    void name(const void* handle, const std::string& text);
    [[nodiscard]] std::string name_of(const void* handle) const;  // "given" without a name
    // The handles of one name.
    [[nodiscard]] std::vector<const void*> handles_named(const std::string& text) const;
    // Takes a handle's name away; false when it had none.
    bool forget(const void* handle);

    // Lets the nth call from now of a function fail and do nothing.
    void fail(const std::string& function, int nth = 1);
    // Takes back failures that no call has met yet; how many there were.
    size_t drop_failures();

    std::function<void(const std::string& line)> on_call;  // sees each line as it is recorded

private:
    struct Failure {
        std::string function;
        int nth;
    };
    class Locked;

    mutable SRWLOCK lock_ = SRWLOCK_INIT;
    Lines lines_;
    std::map<const void*, std::string> names_;
    std::vector<Failure> failures_;
};

}  // namespace process_test
