// The modem that the system has attached to a COM port, on the registry's modem class.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <limits.h>
#include <string.h>

using namespace shortcuts_test;

namespace {

#define MODEM_CLASS "SYSTEM\\CurrentControlSet\\Control\\Class\\{4D36E96D-E325-11CE-BFC1-08002BE10318}"

constexpr uint16_t kRoom = 300;

const std::string kOpenClass = "Btsdk_RegOpenKey(HKEY_LOCAL_MACHINE, \"" MODEM_CLASS "\", out) = ";
const std::string kAttachedTo = "Btsdk_RegQueryStringValue(key, \"AttachedTo\", out, 260) = ";
const std::string kFriendlyName = "Btsdk_RegQueryStringValue(key, \"FriendlyName\", out, 260) = ";
const std::string kClose = "Btsdk_RegCloseKey(key) = 0";

std::wstring wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

std::string enum_key(int index, uint32_t result) {
    return "Btsdk_RegEnumKey(key, " + std::to_string(index) + ", out, 260) = " + std::to_string(result);
}
std::string open_subkey(const char* name, uint32_t result) {
    return std::string("Btsdk_RegOpenKey(HKEY_LOCAL_MACHINE, \"" MODEM_CLASS "\\") + name +
           "\", out) = " + std::to_string(result);
}

class ModemName : public support::SuiteTest {
protected:
    // null: the subkey lacks the value.
    void modem(const char* subkey, const char* port, const char* name) {
        const std::string key = std::string(MODEM_CLASS "\\") + subkey;
        registry_.make_key(HKEY_LOCAL_MACHINE, key.c_str());
        if (port != nullptr) registry_.set(HKEY_LOCAL_MACHINE, key.c_str(), "AttachedTo", port);
        if (name != nullptr) registry_.set(HKEY_LOCAL_MACHINE, key.c_str(), "FriendlyName", name);
    }
    support::RegistryScope& registry() { return registry_; }

    struct Answer {
        BOOL result;
        uint16_t size;
        std::string name;  // what was written; the rest of the buffer was not
    };
    static Answer ask(int port, uint16_t size = kRoom) {
        const support::GuardedBuffer buffer(size);
        Answer answer{FALSE, size, ""};
        support::clear_sdk_log();
        support::clear_trace_log();
        answer.result = VlCm_FindModemNameByComPort(port, buffer.as(), &answer.size);
        const size_t written = answer.result ? answer.size : 0;
        if (written != 0) answer.name.assign(buffer.as(), written - 1);
        if (written != 0) {
            EXPECT_EQ(buffer.as()[written - 1], 0);
        }
        EXPECT_TRUE(buffer.untouched_from(written));
        return answer;
    }
    static void expect_found(int port, const std::string& name) {
        const Answer answer = ask(port);
        EXPECT_EQ(answer.result, TRUE) << port;
        EXPECT_EQ(answer.name, name);
        EXPECT_EQ(answer.size, name.size() + 1);
    }
    static void expect_none(int port) {
        const Answer answer = ask(port);
        EXPECT_EQ(answer.result, FALSE) << port;
        EXPECT_EQ(answer.size, kRoom);
    }

private:
    support::RegistryScope registry_;
};

}  // namespace

TEST_F(ModemName, IsTheFriendlyNameOfTheSubkeyAttachedToThePort) {
    modem("0000", "COM1", "First modem");
    modem("0001", "COM3", "Second modem");
    modem("0002", "COM3", "Never reached");
    expect_found(3, "Second modem");
    EXPECT_EQ(support::sdk_calls(), (Lines{kOpenClass + "0", enum_key(0, 0), open_subkey("0000", 0),
                                           kAttachedTo + "0", kClose, enum_key(1, 0), open_subkey("0001", 0),
                                           kAttachedTo + "0", kFriendlyName + "0", kClose, kClose}));
    EXPECT_EQ(support::trace_log(),
              (Lines{">512 VlCm_MatchModemNameByComPort", "=512 ComName is COM3,\r\n",
                     "=512 Attached to COM1 \r\n", "=512 Attached to COM3 \r\n",
                     "=512 Modem is Second modem \r\n", "<512 VlCm_MatchModemNameByComPort"}));
}

TEST_F(ModemName, OfAPortWithoutAModemIsNoneAndTheOutputsStay) {
    modem("0000", "COM1", "First modem");
    expect_none(3);
    EXPECT_EQ(support::sdk_calls(),
              (Lines{kOpenClass + "0", enum_key(0, 0), open_subkey("0000", 0), kAttachedTo + "0", kClose,
                     enum_key(1, ERROR_NO_MORE_ITEMS), kClose}));
    EXPECT_EQ(support::trace_lines(), (Lines{"ComName is COM3,\r\n", "Attached to COM1 \r\n"}));
}

TEST_F(ModemName, HeedsTheWholePortNameButNotItsCase) {
    modem("0000", "COM25", "Of 25");
    modem("0001", "com256", "Of 256");
    modem("0002", "Com2", "Of 2");
    modem("0003", "COM100", "Of 100");
    modem("0004", "COM1 ", "With a blank");
    expect_found(2, "Of 2");
    expect_found(25, "Of 25");
    expect_found(256, "Of 256");
    EXPECT_TRUE(support::has_line(support::trace_lines(), "ComName is COM256,\r\n"));
    expect_found(100, "Of 100");
    EXPECT_TRUE(support::has_line(support::trace_lines(), "ComName is COM100,\r\n"));
    expect_none(1);
    expect_none(10);
}

TEST_F(ModemName, OfAPortOutOfRangeOrWithoutOutputsIsInvalid) {
    for (const int port : {0, 257, -1, 1000, INT_MIN, INT_MAX}) {
        expect_none(port);
        EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_MatchModemNameByComPort", "=512 Invalid input \r\n",
                                               "<512 VlCm_MatchModemNameByComPort"}))
            << port;
        EXPECT_TRUE(support::sdk_calls().empty());
    }
    support::clear_trace_log();
    char buffer[8] = "x";
    uint16_t size = sizeof buffer;
    EXPECT_EQ(VlCm_FindModemNameByComPort(3, nullptr, &size), FALSE);
    EXPECT_EQ(VlCm_FindModemNameByComPort(3, buffer, nullptr), FALSE);
    EXPECT_EQ(VlCm_FindModemNameByComPort(0, nullptr, nullptr), FALSE);
    EXPECT_EQ(support::trace_lines(), Lines(3, "Invalid input \r\n"));
    EXPECT_EQ(size, sizeof buffer);
    EXPECT_STREQ(buffer, "x");
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ModemName, OfTheFirstAndTheLastPortIsLookedFor) {
    modem("0000", "COM1", "One");
    modem("0001", "COM256", "Last");
    expect_found(1, "One");
    expect_found(256, "Last");
}

TEST_F(ModemName, NeedsRoomForOneByteMoreThanItTakes) {
    modem("0000", "COM3", "Modem");
    const struct {
        const char* label;
        uint16_t size;
        BOOL expected;
    } rows[] = {
        {"none", 0, FALSE},    {"one", 1, FALSE},          {"without its end", 5, FALSE},
        {"exactly", 6, FALSE}, {"one byte more", 7, TRUE}, {"much", 0xFFFF, TRUE},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Answer answer = ask(3, row.size);
        EXPECT_EQ(answer.result, row.expected);
        EXPECT_EQ(answer.size, 6);
        Lines lines{"ComName is COM3,\r\n", "Attached to COM3 \r\n", "Modem is Modem \r\n"};
        if (!row.expected) lines.emplace_back(" buffer too small \r\n");
        EXPECT_EQ(support::trace_lines(), lines);
    });
}

TEST_F(ModemName, MayBeEmpty) {
    modem("0000", "COM3", "");
    EXPECT_EQ(ask(3, 1).result, FALSE);
    const Answer answer = ask(3, 2);
    EXPECT_EQ(answer.result, TRUE);
    EXPECT_EQ(answer.size, 1);
}

TEST_F(ModemName, MayFillTheWorkBuffer) {
    modem("0000", "COM1", std::string(258, 'a').c_str());
    modem("0001", "COM2", std::string(259, 'b').c_str());
    modem("0002", "COM3", std::string(260, 'c').c_str());  // cannot be read into it
    modem("0003", "COM3", "Shorter");
    expect_found(1, std::string(258, 'a'));
    expect_found(2, std::string(259, 'b'));
    EXPECT_EQ(ask(2, 260).result, FALSE);
    EXPECT_EQ(ask(2, 261).result, TRUE);
    expect_found(3, "Shorter");
}

TEST_F(ModemName, IsLookedForBehindASubkeyThatDoesNotOpen) {
    modem("0000", "COM3", "Closed");
    modem("0001", "COM3", "Open");
    VlSim_Fail("Btsdk_RegOpenKey", 2, ERROR_ACCESS_DENIED);
    expect_found(3, "Open");
    EXPECT_EQ(
        support::sdk_calls(),
        (Lines{kOpenClass + "0", enum_key(0, 0), open_subkey("0000", ERROR_ACCESS_DENIED), enum_key(1, 0),
               open_subkey("0001", 0), kAttachedTo + "0", kFriendlyName + "0", kClose, kClose}));
    EXPECT_EQ(support::trace_lines(), (Lines{"ComName is COM3,\r\n", "Attached to  \r\n",
                                             "Attached to COM3 \r\n", "Modem is Open \r\n"}));
}

TEST_F(ModemName, IsLookedForBehindASubkeyWithoutIt) {
    modem("0000", "COM3", nullptr);
    modem("0001", nullptr, "Attached to nothing");
    modem("0002", "COM3", "Named");
    expect_found(3, "Named");
    EXPECT_EQ(support::trace_lines(),
              (Lines{"ComName is COM3,\r\n", "Attached to COM3 \r\n", "Attached to  \r\n",
                     "Attached to COM3 \r\n", "Modem is Named \r\n"}));
}

TEST_F(ModemName, OfAnotherTypeDoesNotCount) {
    registry().set(HKEY_LOCAL_MACHINE, MODEM_CLASS "\\0000", "AttachedTo", 3UL);
    modem("0001", "COM3", nullptr);
    registry().set(HKEY_LOCAL_MACHINE, MODEM_CLASS "\\0001", "FriendlyName", 3UL);
    expect_none(3);
}

TEST_F(ModemName, OfASubkeyWhosePathIsTooLongIsNotFound) {
    modem("b", "COM3", "Reached");
    // By a wide call: the path is too long for the narrow ones here.
    const std::wstring path = wide(MODEM_CLASS "\\" + std::string(250, 'a'));
    HKEY deep = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, path.c_str(), &deep), ERROR_SUCCESS);
    RegSetValueExA(deep, "AttachedTo", 0, REG_SZ, reinterpret_cast<const BYTE*>("COM3"), 5);
    RegSetValueExA(deep, "FriendlyName", 0, REG_SZ, reinterpret_cast<const BYTE*>("Deep"), 5);
    expect_found(3, "Reached");
    const std::string cut = (std::string(MODEM_CLASS "\\") + std::string(250, 'a')).substr(0, 259);
    EXPECT_TRUE(support::has_line(support::sdk_calls(),
                                  "Btsdk_RegOpenKey(HKEY_LOCAL_MACHINE, \"" + cut + "\", out) = 2"));
    EXPECT_EQ(support::trace_lines()[1], "Attached to  \r\n");
    RegCloseKey(deep);
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, path.c_str());
}

TEST_F(ModemName, OfAClassThatDoesNotOpenIsNone) {
    modem("0000", "COM3", "Modem");
    VlSim_Fail("Btsdk_RegOpenKey", 1, ERROR_ACCESS_DENIED);
    expect_none(3);
    EXPECT_EQ(support::sdk_calls(), Lines{kOpenClass + "5"});
    EXPECT_EQ(support::trace_lines(), Lines{"ComName is COM3,\r\n"});
}

TEST_F(ModemName, TheWalkEndsWhenItFails) {
    modem("0000", "COM1", "First");
    modem("0001", "COM3", "Second");
    for (const uint32_t nth : {1U, 2U}) {
        VlSim_Fail("Btsdk_RegEnumKey", nth, ERROR_ACCESS_DENIED);
        expect_none(3);
        EXPECT_EQ(support::sdk_calls("Btsdk_RegEnumKey").size(), nth);
        EXPECT_EQ(support::sdk_calls().back(), kClose);
    }
}

TEST_F(ModemName, WhatAFailedReadLeftBehindIsNotLookedAt) {
    modem("0000", nullptr, nullptr);
    modem("0001", nullptr, nullptr);
    support::CallPatch query("Btsdk_RegQueryStringValue", Btsdk_RegQueryStringValue);
    query.answer([&](HKEY, const char* value, char* text, uint32_t size) {
        EXPECT_EQ(text[0], 0) << query.count();
        EXPECT_EQ(size, 260u);
        const bool port = strcmp(value, "AttachedTo") == 0;
        strcpy(text, port ? "COM3" : "Left behind");
        // The first subkey's port fails, the second one's name.
        return query.count() == 1 || !port ? kFailed : 0U;
    });
    expect_none(3);
    EXPECT_EQ(query.count(), 3u);
    EXPECT_EQ(support::trace_lines(),
              (Lines{"ComName is COM3,\r\n", "Attached to  \r\n", "Attached to COM3 \r\n"}));
}

TEST_F(ModemName, AKeyThatAFailedOpenLeftBehindIsNotUsed) {
    modem("0000", "COM3", "Modem");
    support::CallPatch open("Btsdk_RegOpenKey", Btsdk_RegOpenKey);
    size_t failing = 1;
    open.answer([&](HKEY root, const char* sub, HKEY* key) {
        if (open.count() != failing) return open.real(root, sub, key);
        *key = reinterpret_cast<HKEY>(uintptr_t{0x1234});
        return kFailed;
    });
    expect_none(3);
    failing = 3;
    expect_none(3);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_RegOpenKey", "Btsdk_RegEnumKey", "Btsdk_RegEnumKey", "Btsdk_RegCloseKey"}));
}

TEST_F(ModemName, WithoutMemoryIsNoneAndNothingIsAskedOrTraced) {
    modem("0000", "COM3", "Modem");
    for (size_t n = 1; n <= 3; ++n) {
        blocks().fail_nth(n);
        expect_none(3);
        EXPECT_TRUE(support::sdk_calls().empty()) << n;
        EXPECT_TRUE(support::trace_lines().empty()) << n;
    }
    blocks().fail_nth(4);  // there is no fourth one
    expect_found(3, "Modem");
}

TEST_F(ModemName, KeysAreClosedWhateverFails) {
    modem("0000", "COM1", "First");
    modem("0001", "COM3", "Second");
    const size_t calls = fail_each_operation(ERROR_ACCESS_DENIED, [] { ask(3); });
    EXPECT_EQ(calls, 11u);
}
