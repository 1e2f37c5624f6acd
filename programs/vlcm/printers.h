// Bluetooth printers.
#pragma once

#include "answer.h"

namespace programs {

// The spooler's printers, and which device each belongs to.
[[nodiscard]] Answer ask_printers();
void print_printers(const Json& facts);

// The record that is kept for a device's printer. kNo: none.
[[nodiscard]] Answer ask_printer_record(const std::string& address_or_name);
void print_printer_record(const Json& facts);

// Whether a printer on a Bluetooth port has jobs. kNo: none has.
[[nodiscard]] Answer ask_printers_busy();
void print_printers_busy(const Json& facts);

// Cancels all jobs on Bluetooth ports and waits until they are gone, when `confirmed` or after a yes at the
// keyboard. kNo: not confirmed, or a printer could not be read any more.
[[nodiscard]] Answer purge_printers(bool confirmed);
void print_purge(const Json& facts);

}  // namespace programs
