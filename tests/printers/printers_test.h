// What the tests of this folder share: the simulated spooler, the printer file, the tray agent.
#pragma once

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/test_window.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"
#include "VlSpool.h"
#include "vlcm/printers.h"

#include <winspool.h>

#include <string>
#include <vector>

namespace printers_test {

using Lines = std::vector<std::string>;

Lines operator+(Lines first, const Lines& second);

inline constexpr uint8_t kAddress[6] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66};
inline constexpr char kKey[] = "66:55:44:33:22:11";
inline constexpr uint8_t kOther[6] = {0xAB, 0xCD, 0xEF, 0x01, 0x0A, 0xB0};
inline constexpr char kOtherKey[] = "B0:0A:01:EF:CD:AB";
inline constexpr char kRecords[] = "QVN_PRINTER_BDADDR_MAP";
inline constexpr char kLengths[] = "QVN_PRINTER_STRU_LEN";

// Entries of the trace log.
Lines nested(const std::string& name, const Lines& inside = {});
std::string line(const std::string& text);
// A run of a spooler wrapper that found `count` entries; an empty list needs no room.
Lines printers_listed(unsigned count);
Lines jobs_listed(unsigned count);
// The test of a port; the test whether a printer has jobs.
Lines port_tested(bool bluetooth);
Lines busy_tested(unsigned jobs);

std::string printer_file();
VlPrinterRecord record(const char* printer, const char* driver, const char* port, const char* processor);

// A printer of the scenario, as JSON; `more` are further members: ", \"jobs\": [...]".
std::string printer(const std::string& name, const std::string& port, const std::string& more = "");

// Starts without printers and without a printer file. BT1: and BT2: lead to devices, when a test says so.
class PrinterTest : public support::SuiteTest {
protected:
    PrinterTest();
    ~PrinterTest() override;

    static void printers(const std::vector<std::string>& list);
    static void forget_logs();
    // Calls of the spooler, in order.
    static Lines spooler_calls();
    [[nodiscard]] static std::vector<std::string> printer_names();

    // Ties a port to a device.
    void bluetooth(const char* port, const char* address = kKey) {
        settings().set(printer_file(), port, "BD_ADDR", address);
    }
    static std::string stored(const char* section, const char* key) {
        return support::SettingsScope::get(printer_file(), section, key);
    }
    static Lines requests() { return support::sdk_calls("Btsdk_PostMessageToCtrlCenter"); }

private:
    support::TestWindow agent_{{.title = "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}"}};
};

// Both members of a pair of exports.
template <typename Function>
struct Family {
    const char* label;
    Function* function;
    bool windows;
};

}  // namespace printers_test
