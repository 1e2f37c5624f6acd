// Each call that an export makes to the spooler, the stack or the allocator fails once: nothing stays open,
// and every trace scope is closed, which the fixture tells.
#include "install_test.h"

#include <map>

using namespace printers_test;

namespace {

struct Export {
    const char* label;
    void (*call)();
    size_t spooler_calls, stack_calls, allocations;  // at least so many, so that none is overlooked
};

void close_opened(HANDLE printer) {
    if (printer != nullptr) ClosePrinter(printer);
}

const Export kExports[] = {
    {"VlCm_IsBTPort", [] { VlCm_IsBTPort("BT1:"); }, 0, 1, 0},
    {"VlCm_IsBTPortNew", [] { VlCm_IsBTPortNew("BT1:"); }, 0, 0, 0},
    {"VlCm_IsBtPortBusy", [] { VlCm_IsBtPortBusy(); }, 5, 1, 2},
    {"VlCm_IsBtPortBusyNew", [] { VlCm_IsBtPortBusyNew(); }, 5, 0, 2},
    {"VlCm_IsPrinterBusy", [] { VlCm_IsPrinterBusy(nullptr); }, 2, 0, 1},
    {"VlCm_DoCancelAllPrintJob", [] { VlCm_DoCancelAllPrintJob(); }, 10, 2, 2},
    {"VlCm_DoCancelAllPrintJobNew", [] { VlCm_DoCancelAllPrintJobNew(); }, 10, 0, 2},
    {"VlCm_DeleteAllBTPrinter", [] { VlCm_DeleteAllBTPrinter(); }, 4, 2, 1},
    {"VlCm_DeleteAllBTPrinterNew", [] { VlCm_DeleteAllBTPrinterNew(); }, 4, 0, 1},
    {"VlCm_InstallANewPrinter", [] { close_opened(VlCm_InstallANewPrinter(kOther)); }, 5, 3, 4},
    {"VlCm_IsPrinterInstalled, recorded", [] { VlCm_IsPrinterInstalled(kAddress); }, 0, 3, 2},
    {"VlCm_IsPrinterInstalled, not recorded", [] { VlCm_IsPrinterInstalled(kOther); }, 2, 4, 3},
    {"VlCm_DeleteMyPrinterByBDAddr", [] { VlCm_DeleteMyPrinterByBDAddr(kAddress); }, 4, 4, 2},
    {"VlCm_IsPrinterInfoInSystem", [] { VlCm_IsPrinterInfoInSystem(kOther, nullptr); }, 2, 2, 1},
};

class EveryFailure : public InstallPrinter {
protected:
    EveryFailure() {
        token_.answer([](HANDLE, PSID, BOOL* member) {
            *member = TRUE;
            return TRUE;
        });
        during_wait([] { add(printer("New", "LPT1:")); });
    }
    // A recorded printer on the first device's port, a busy one on that of the other.
    void prepare() {
        bluetooth("BT1:");
        bluetooth("BT2:", kOtherKey);
        printers({printer("Office", "BT1:"),
                  printer("Busy", "BT2:", R"(, "jobs": [{"id": 1, "reads": 2}, {"id": 2}])")});
        const VlPrinterRecord made = record("Office", "Text", "BT1:", "WinPrint");
        VlCm_WriteMyPrinterInfo(kAddress, &made, nullptr);
        WritePrivateProfileStringA(kRecords, kOtherKey, nullptr, printer_file().c_str());
        forget_logs();
    }
    // The names of the calls but for those that close something, each with how often it came before.
    static std::vector<std::pair<std::string, uint32_t>> numbered(const Lines& calls) {
        std::map<std::string, uint32_t> seen;
        std::vector<std::pair<std::string, uint32_t>> list;
        for (const std::string& call : calls) {
            const std::string name = call.substr(0, call.find('('));
            if (name != "ClosePrinter") list.emplace_back(name, ++seen[name]);
        }
        return list;
    }
    void run(const Export& each, const std::string& label) {
        const ::testing::ScopedTrace trace(__FILE__, __LINE__, label);
        each.call();
        VlSpool_ClearFaults();
        VlSim_ClearFaults();
        blocks().fail_nth(0);
        VlSpool_ClearMisuse();  // a null printer is asked for its jobs
        EXPECT_EQ(VlSpool_OpenHandles(), 0u);
    }

private:
    support::SleepPatch sleeps_;
    support::CallPatch<decltype(CheckTokenMembership)> token_{"CheckTokenMembership", CheckTokenMembership};
};

}  // namespace

TEST_F(EveryFailure, OfTheSpoolerLeavesNothingOpen) {
    support::for_each_row(kExports, [&](const Export& each) {
        prepare();
        run(each, "none");
        const auto calls = numbered(spooler_calls());
        EXPECT_GE(calls.size(), each.spooler_calls);
        for (const auto& [name, nth] : calls) {
            prepare();
            VlSpool_Fail(name.c_str(), nth, ERROR_ACCESS_DENIED);
            run(each, name + " " + std::to_string(nth));
        }
    });
}

TEST_F(EveryFailure, OfTheStackLeavesNothingOpen) {
    support::for_each_row(kExports, [&](const Export& each) {
        prepare();
        run(each, "none");
        const auto calls = numbered(support::sdk_calls());
        EXPECT_GE(calls.size(), each.stack_calls);
        for (const auto& [name, nth] : calls) {
            prepare();
            VlSim_Fail(name.c_str(), nth, 0);
            run(each, name + " " + std::to_string(nth));
        }
    });
}

TEST_F(EveryFailure, OfTheAllocatorLeavesNothingOpen) {
    support::for_each_row(kExports, [&](const Export& each) {
        prepare();
        const size_t before = blocks().allocations();
        run(each, "none");
        const size_t count = blocks().allocations() - before;
        EXPECT_GE(count, each.allocations);
        for (size_t nth = 1; nth <= count; ++nth) {
            prepare();
            blocks().fail_nth(nth);
            run(each, "allocation " + std::to_string(nth));
        }
    });
}
