// What the print spooler lists. Texts are in the ANSI code page.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace programs {

struct SpoolerPrinter {
    std::string name, driver, port;
    DWORD jobs;
};
[[nodiscard]] std::vector<SpoolerPrinter> spooler_printers();

[[nodiscard]] std::vector<std::string> spooler_ports();
[[nodiscard]] std::vector<std::string> spooler_drivers();

}  // namespace programs
