// The registry keys of printers, which the spooler makes and deletes with them.
#pragma once

#include "document.h"

namespace vlspool {

// Deletes the keys of printers that are gone and makes those of new ones.
void follow_in_registry(const json& before, const json& after);

}  // namespace vlspool
