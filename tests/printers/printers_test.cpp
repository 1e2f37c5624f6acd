#include "printers_test.h"

#include <nlohmann/json.hpp>

namespace printers_test {
namespace {

std::string hexadecimal(unsigned number) {
    char text[16];
    snprintf(text, sizeof text, "%x", number);
    return text;
}

// The spooler's shared state and the library's binding to it are opened once in a process: before any
// test counts handles.
class Warm : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_EQ(VlSpool_Reset(), 0u);
        VlCm_IsBtPortBusy();
        VlCm_IsPrinterBusy(nullptr);
    }
};
const auto* const g_warm = ::testing::AddGlobalTestEnvironment(new Warm);

}  // namespace

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Lines nested(const std::string& name, const Lines& inside) {
    return Lines{">512 " + name} + inside + Lines{"<512 " + name};
}

std::string line(const std::string& text) { return "=512 " + text; }

Lines printers_listed(unsigned count) {
    const std::string sized = count != 0 ? "7a" : "0";
    return nested("MyEnumPrinter",
                  {line("1 EnumPrinter err: " + sized + "\r\n"), line("2 EnumPrinter err=0 ret= 1 \r\n"),
                   line("3 EnumPrinter num of Prnt=" + std::to_string(count) + " \r\n")});
}

Lines jobs_listed(unsigned count) {
    const std::string sized = count != 0 ? "7a" : "0";
    return nested("MyEnumJobs",
                  {line("1 EnumJobs err: " + sized + "\r\n"), line("2 EnumJobs err=0 ret=1 \r\n"),
                   line("3 EnumJobs num of job=" + std::to_string(count) + " \r\n")});
}

Lines port_tested(bool bluetooth) {
    return nested("hlp_IsBTPort", {line("bool=" + hexadecimal(bluetooth ? 1 : 0) + "\r\n")});
}

Lines busy_tested(unsigned jobs) { return nested("hlp_IsPrinterBusy", jobs_listed(jobs)); }

std::string printer_file() {
    char folder[MAX_PATH];
    return std::string(folder, GetWindowsDirectoryA(folder, sizeof folder)) + "\\SysWow64\\VLPRINT.INI";
}

VlPrinterRecord record(const char* printer, const char* driver, const char* port, const char* processor) {
    VlPrinterRecord made{};
    strcpy(made.printerName, printer);
    strcpy(made.driverName, driver);
    strcpy(made.portName, port);
    strcpy(made.printProcessor, processor);
    return made;
}

std::string printer(const std::string& name, const std::string& port, const std::string& more) {
    return R"({"name": ")" + name + R"(", "driver": "Text", "port": ")" + port + '"' + more + '}';
}

PrinterTest::PrinterTest() {
    settings().content(printer_file(), std::nullopt);
    EXPECT_EQ(VlSpool_Reset(), 0u);
    EXPECT_EQ(VlSpool_LoadScenario("{}"), 0u);
    forget_logs();
}

PrinterTest::~PrinterTest() {
    EXPECT_EQ(VlSpool_OpenHandles(), 0u);
    for (uint32_t i = 0; i < VlSpool_MisuseCount(); ++i) {
        char text[200];
        VlSpool_GetMisuse(i, text, sizeof text);
        ADD_FAILURE() << "misuse of the spooler: " << text;
    }
    VlSpool_LoadScenario("{}");
    VlSpool_Reset();
}

void PrinterTest::printers(const std::vector<std::string>& list) {
    std::string text;
    for (const std::string& each : list) text += (text.empty() ? "" : ", ") + each;
    ASSERT_EQ(VlSpool_LoadScenario(("{\"printers\": [" + text + R"(],
        "ports": [{"name": "LPT1:"}, {"name": "BT1:", "monitor": "Bluetooth"}, {"name": "BT2:"}],
        "drivers": [{"name": "Text"}]})")
                                       .c_str()),
              0u)
        << text;
    forget_logs();
}

void PrinterTest::forget_logs() {
    VlSpool_ClearLog();
    support::clear_sdk_log();
    support::clear_trace_log();
}

Lines PrinterTest::spooler_calls() {
    Lines calls;
    for (uint32_t i = 0; i < VlSpool_CallCount(nullptr); ++i) {
        char text[400];
        VlSpool_GetCall(i, text, sizeof text);
        calls.emplace_back(text);
    }
    return calls;
}

std::vector<std::string> PrinterTest::printer_names() {
    std::string text(VlSpool_Get("/printers", nullptr, 0) + 1, 0);
    VlSpool_Get("/printers", text.data(), static_cast<uint32_t>(text.size()));
    std::vector<std::string> names;
    for (const auto& each : nlohmann::json::parse(text.c_str())) names.push_back(each.at("name"));
    return names;
}

}  // namespace printers_test
