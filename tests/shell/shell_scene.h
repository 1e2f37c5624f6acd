// A phone with file transfer, and the library's item lists of it, given out or handed over.
#pragma once

#include "item_bytes.h"

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <shellapi.h>

#include <functional>
#include <optional>

namespace shell_test {

using Lines = std::vector<std::string>;

inline constexpr char kSection[] = "SHARE_MEM_FTPPIDL";

inline constexpr BtHandle kPhone = 7;
inline constexpr uint32_t kPhoneClass = 0x5A020C;
const Bytes kPhoneAddress{0x01, 0x5E, 0x2D, 0x38, 0xC1, 0xA4};  // A4:C1:38:2D:5E:01
const Item kPhoneItem{0x40000012, kPhoneClass, 0, kPhoneAddress, ""};
const Item kFilesItem{0xC0000302, kPhoneClass, 0x1106, kPhoneAddress, "OBEX File Transfer"};
const Item kPhonebookItem{0xC0080002, kPhoneClass, 0, kPhoneAddress, ""};

// Stands for the namespace root: the items of other extensions are not looked into.
const Bytes kRootItem{8, 0, 'r', 'o', 'o', 't', 0, 1};
const Bytes kRoot = list_of({kRootItem});

// What a receiver finds in the section.
struct HandedOver {
    uint32_t state, size;
    Bytes list;
    bool operator==(const HandedOver&) const = default;
};

// The section while it exists.
class OpenSection {
public:
    OpenSection() : section_(OpenFileMappingA(FILE_MAP_READ | FILE_MAP_WRITE, FALSE, kSection)) {
        if (section_ != nullptr) view_ = MapViewOfFile(section_, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, 0);
    }
    ~OpenSection() {
        if (view_ != nullptr) UnmapViewOfFile(view_);
        if (section_ != nullptr) CloseHandle(section_);
    }
    OpenSection(const OpenSection&) = delete;
    OpenSection& operator=(const OpenSection&) = delete;

    explicit operator bool() const { return view_ != nullptr; }
    [[nodiscard]] HandedOver read() const {
        const auto* const words = static_cast<const uint32_t*>(view_);
        const auto* const list = reinterpret_cast<const uint8_t*>(words + 2);
        return {words[0], words[1], {list, list + words[1]}};
    }
    void set_state(uint32_t state) { *static_cast<volatile uint32_t*>(view_) = state; }

private:
    HANDLE section_;
    void* view_ = nullptr;
};

inline bool section_exists() { return static_cast<bool>(OpenSection()); }

class ShellTest : public support::SuiteTest {
protected:
    ShellTest() {
        set_scene(kPhoneScene);
        settings().common("General", "InstallDir", "C:\\Veltrin\\");
        started_.answer([this](HWND window, const char* verb, const char* file, const char* arguments,
                               const char* folder, INT show) {
            starts.push_back({window, verb, file, arguments, folder, show});
            const OpenSection section;
            if (section) handed.push_back(section.read());
            if (on_start) on_start();
            return reinterpret_cast<HINSTANCE>(33);
        });
        // Waiting ends as soon as it begins; tests of the waiting itself replace this.
        sleeps.on_sleep([](size_t) { OpenSection().set_state(2); });
    }

    static void set_scene(const std::string& json) {
        EXPECT_EQ(VlSim_LoadScenario(json.c_str()), 0U) << json;
        support::clear_sdk_log();
    }

    static constexpr char kPhoneScene[] = R"({
      "ready": true,
      "devices": [
        { "handle": 6, "address": "00:1A:7D:DA:71:06", "name": "Access point", "class": "0x020300",
          "services": [ { "handle": 61, "class": "0x1116", "name": "Network Access Point" } ] },
        { "handle": 7, "address": "A4:C1:38:2D:5E:01", "name": "Phone", "class": "0x5A020C",
          "services": [
            { "handle": 71, "class": "0x1106", "name": "OBEX File Transfer" },
            { "handle": 72, "class": "0x112F", "name": "Phonebook Access" } ] } ],
      "shortcuts": [
        { "handle": 21, "device": 6, "service": 61, "name": "point" },
        { "handle": 22, "device": 7, "service": 72, "name": "book" },
        { "handle": 23, "device": 7, "service": 71, "name": "files" },
        { "handle": 24, "device": 7, "service": 71, "name": "more files" } ] })";

    struct Start {
        HWND window;
        std::string verb, file, arguments, folder;
        INT show;
        bool operator==(const Start&) const = default;
    };
    std::vector<Start> starts;
    std::vector<HandedOver> handed;  // at each start
    std::function<void()> on_start;
    support::SleepPatch sleeps;

private:
    support::CallPatch<HINSTANCE(HWND, const char*, const char*, const char*, const char*, INT)> started_{
        "ShellExecuteA", ShellExecuteA};
};

}  // namespace shell_test
