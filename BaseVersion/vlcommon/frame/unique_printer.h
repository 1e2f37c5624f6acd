// Owner for spooler handles.
#pragma once

#include "unique.h"

#include <winspool.h>

namespace vl {

struct PrinterTraits : NullIsNone<HANDLE> {
    static void close(HANDLE printer) { ClosePrinter(printer); }
};
using UniquePrinter = Unique<PrinterTraits>;

}  // namespace vl
