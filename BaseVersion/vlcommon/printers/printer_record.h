// Printer records: the Windows printer that stands for a device, as the printer file keeps it.
#pragma once

#include "vlcm/printers.h"

#include <winspool.h>

namespace vl::printers {

// The record of a printer of the spooler.
VlPrinterRecord record_of(const PRINTER_INFO_2A& printer);

// Writes a device's record; traced. FALSE: an argument is null.
BOOL write_record(const uint8_t* address, const VlPrinterRecord* record, uint32_t* stored_length);
// Reads it into the slots that have a text; traced.
BOOL read_record(const uint8_t* address, VlPrinterRecord* record);

enum class Entry { kAbsent, kPresent, kUnknown };  // kUnknown: memory is short
// Whether the file has a record for the device, readable or not.
Entry find_entry(const uint8_t* address);

void remove_record(const uint8_t* address);

}  // namespace vl::printers
