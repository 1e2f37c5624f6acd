// The print spooler: its lists, and its printers.
#pragma once

#include "frame/unique_printer.h"

#include <memory>

namespace vl::printers {

// Entries that the spooler gave; their texts lie in the same block.
template <typename Info>
class SpoolerList {
public:
    SpoolerList() = default;
    SpoolerList(std::unique_ptr<BYTE[]> block, DWORD count) : block_(std::move(block)), count_(count) {}

    [[nodiscard]] const Info* begin() const { return reinterpret_cast<const Info*>(block_.get()); }
    [[nodiscard]] const Info* end() const { return begin() + count_; }
    [[nodiscard]] DWORD size() const { return count_; }
    // False: the spooler refused, or memory is short. Such a list is empty.
    [[nodiscard]] bool complete() const { return block_ != nullptr; }

private:
    std::unique_ptr<BYTE[]> block_;
    DWORD count_ = 0;
};

// Each asks the spooler twice, for the size and for the list, and traces both answers.
SpoolerList<PRINTER_INFO_2A> enum_printers();
SpoolerList<JOB_INFO_1A> enum_jobs(HANDLE printer);
SpoolerList<PORT_INFO_2A> enum_ports();

// Opens a printer for everything; none when the spooler refuses, which the last error tells why.
UniquePrinter open_printer(const char* name);

// Whether the printer has a job; traced.
bool is_busy(HANDLE printer);

// Texts that the spooler left out are empty.
inline const char* or_empty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace vl::printers
