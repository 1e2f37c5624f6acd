// The command QVN_VLEXECUTEMODULE_INSTALLPRINTER.
#pragma once

#include <string>

namespace programs {

// Adds a printer on the first Bluetooth port without one and signals the event "InstPrnt", on which the
// caller of VlCm_InstallANewPrinter() waits, whether there is a new printer or not. The answer is for
// the log.
[[nodiscard]] std::string install_printer();

}  // namespace programs
