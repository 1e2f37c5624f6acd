// What the tests of this folder share: the tray agent, to which the requests go, and the message boxes.
#pragma once

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/test_window.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"
#include "vlcm/localctl.h"

#include <map>
#include <string>
#include <vector>

namespace localctl_test {

using Lines = std::vector<std::string>;

Lines operator+(Lines first, const Lines& second);

// The built-in neighbourhood's devices.
inline constexpr unsigned kPhone = 1, kHeadset = 2, kPrinter = 3, kKeyboard = 4, kLaptop = 5,
                          kAccessPoint = 6, kCamera = 7, kBelt = 8, kSpeaker = 9, kNameless = 10;

// Entries of the trace log.
Lines nested(const std::string& name, const Lines& inside = {});
std::string line(const std::string& text);

// A text of the language resource library.
std::wstring text_of(unsigned id);
std::wstring local_to_wide(const std::string& text);

// The agent's window is there, so that no request starts a program.
class LocalControlTest : public support::SuiteTest {
protected:
    // A request as the stack is asked to relay it: code << 16 | 515.
    static std::string relayed(uint32_t message, unsigned value);
    static Lines requests() { return support::sdk_calls("Btsdk_PostMessageToCtrlCenter"); }
    static void connect(unsigned device);
    static void set_type(unsigned device, unsigned type);

private:
    support::TestWindow agent_{{.title = "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}"}};
};

struct Box {
    bool wide;
    HWND owner;
    std::wstring text, caption;
    UINT type;
    std::wstring shown_text, shown_caption;  // as they stood on the screen; empty: not shown
    bool operator==(const Box&) const = default;
};

// The message boxes of the library: answered on the screen, or not shown at all.
class MessageBoxes {
public:
    MessageBoxes();

    // Presses this button (IDYES when nothing is said; a box with OK alone is always answered by it).
    void press(int button) { button_ = button; }
    // Shows none: this is what the call gives.
    void show_none(int result);
    [[nodiscard]] const std::vector<Box>& seen() const { return seen_; }
    [[nodiscard]] size_t count() const { return seen_.size(); }
    void forget() { seen_.clear(); }

private:
    template <typename Show>
    int meet(Box box, Show show);

    int button_ = IDYES;
    bool hidden_ = false;
    int result_ = 0;
    std::vector<Box> seen_;
    support::CallPatch<int(HWND, LPCSTR, LPCSTR, UINT)> narrow_{"MessageBoxA", MessageBoxA};
    support::CallPatch<int(HWND, LPCWSTR, LPCWSTR, UINT)> wide_{"MessageBoxW", MessageBoxW};
};

// Loads of the language resource library's texts: some answered by other texts, all recorded.
class TextLoads {
public:
    struct Load {
        bool wide;
        unsigned id;
        int size;
        bool zeroed;  // the buffer, before the call
        bool operator==(const Load&) const = default;
    };
    TextLoads();

    // The bytes or characters that are loaded for this text, cut as LoadString does.
    void replace(unsigned id, const std::wstring& text) { texts_[id] = text; }
    // The text is missing: nothing is written.
    void remove(unsigned id) { texts_[id].clear(); }
    [[nodiscard]] const std::vector<Load>& seen() const { return seen_; }

private:
    template <typename Char, typename Real>
    int load(unsigned id, Char* buffer, int size, Real real);

    std::map<unsigned, std::wstring> texts_;
    std::vector<Load> seen_;
    support::CallPatch<int(HINSTANCE, UINT, LPSTR, int)> narrow_{"LoadStringA", LoadStringA};
    support::CallPatch<int(HINSTANCE, UINT, LPWSTR, int)> wide_{"LoadStringW", LoadStringW};
};

// The language resource library: how often it was asked for, and whether it can be loaded.
class LanguageLibraryLoads {
public:
    LanguageLibraryLoads();
    void fail() { missing_ = true; }
    [[nodiscard]] size_t count() const { return loads_; }
    void forget() { loads_ = 0; }
    [[nodiscard]] static bool is_loaded() { return GetModuleHandleA("Vl2Res.dll") != nullptr; }

private:
    bool missing_ = false;
    size_t loads_ = 0;
    support::CallPatch<HMODULE(LPCSTR)> patch_{"LoadLibraryA", LoadLibraryA};
};

}  // namespace localctl_test
