// Installing a printer: what is started and waited for, with the installer played by the test.
#pragma once

#include "printers_test.h"

#include <shellapi.h>

#include <functional>

namespace printers_test {

class InstallPrinter : public PrinterTest {
protected:
    InstallPrinter();

    // What the user does in the installer while the library waits.
    void during_wait(std::function<void()> action) { action_ = std::move(action); }
    // What starting the program gives.
    void start_gives(INT_PTR result) { start_result_ = result; }

    static void add(const std::string& json) { ASSERT_EQ(VlSpool_Set("/printers/-", json.c_str()), 0u); }
    // Runs an installation that succeeds: no flag is left behind.
    void expect_next_one_works();

    static Lines traced(const Lines& inside) { return nested("hlp_InstallANewPrinter", inside); }
    static std::string recorded_name();

    support::CallPatch<decltype(CreateEventA)> created{"CreateEventA", CreateEventA};
    support::CallPatch<decltype(ShellExecuteA)> started{"ShellExecuteA", ShellExecuteA};
    support::CallPatch<decltype(WaitForSingleObject)> waited{"WaitForSingleObject", WaitForSingleObject};

private:
    std::function<void()> action_;
    INT_PTR start_result_ = 33;
};

inline const Lines kFolder = nested("VlCm_GetInstallDir");
inline const Lines kUnchanged = {line("The number of printers is not increased!\r\n")};
inline const Lines kWritten = nested("hlp_WriteMyPrinterInfo");

}  // namespace printers_test
