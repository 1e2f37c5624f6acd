// Contact records: made, copied and freed with all their parts.
#pragma once

#include "frame/frame.h"
#include "vlcm/contacts.h"

namespace vl::mobile {

// Zeroed but for size and capacities; null when there is no memory for all of it.
[[nodiscard]] VlContact* new_contact();
void free_contact(VlContact* contact);
// The blob record's inner block is shared afterwards.
void copy_contact(VlContact& destination, const VlContact& source);

struct ContactTraits : NullIsNone<VlContact*> {
    static void close(VlContact* contact) { free_contact(contact); }
};
using UniqueContact = Unique<ContactTraits>;

}  // namespace vl::mobile
