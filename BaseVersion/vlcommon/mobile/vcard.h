// vCard 2.1.
#pragma once

#include "vlcm/contacts.h"

namespace vl::mobile {

// Writes a contact to a file of the stack, one write for each line. Writes that fail are passed over.
void write_card(HANDLE file, const VlContact& contact);

}  // namespace vl::mobile
