// The shell's link objects that the library makes: real ones, behind a layer that writes down what is
// asked of them and fails where it is told to.
#pragma once

#include "support/call_patch.h"

#include <shlobj.h>

#include <string>
#include <vector>

namespace sendto_test {

class LinkWatch {
public:
    LinkWatch();
    ~LinkWatch();
    LinkWatch(const LinkWatch&) = delete;
    LinkWatch& operator=(const LinkWatch&) = delete;

    // In order: "create", "SetPath C:\\x", "Load x.lnk, 0", "Save x.lnk, 1", ... Files without folders.
    [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }
    [[nodiscard]] size_t count(const std::string& method) const;
    void forget() { calls_.clear(); }
    // Objects that still have a reference; the file side counts with its object.
    [[nodiscard]] int live() const { return live_; }

    // Makes the nth call (from 1, counted from now) of a method fail: "create" and the interfaces' own
    // names. 0: every call.
    void fail(const std::string& method, size_t nth, HRESULT result);

private:
    friend class WatchedLink;
    HRESULT note(const std::string& method, const std::string& rest = {});

    std::vector<std::string> calls_;
    std::string failing_;
    size_t nth_ = 0, seen_ = 0;
    HRESULT failure_ = S_OK;
    int live_ = 0;
    support::CallPatch<HRESULT(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)> create_{"CoCreateInstance",
                                                                                     CoCreateInstance};
};

}  // namespace sendto_test
