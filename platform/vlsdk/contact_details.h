// Contact details as simulated phones send them: a JSON object, see docs/simulator.md.
#pragma once

#include "vlcm/contacts.h"

#include <cstdint>
#include <vector>

namespace vlsim {

// The parts of a phone-book record by value.
struct ContactDetails {
    VlContactName name{};
    VlContactOrganisation organisation{};
    VlContactPhone phones[VLCM_CONTACT_PHONES]{};
    VlContactAddress addresses[VLCM_CONTACT_ADDRESSES]{};
    VlContactEmail emails[VLCM_CONTACT_EMAILS]{};
    VlContactUrl urls[VLCM_CONTACT_URLS]{};
    std::vector<uint8_t> picture;
};

// Throws std::exception for another form. Texts are cut to their field, surplus entries left out.
[[nodiscard]] ContactDetails read_contact_details(const char* text);

}  // namespace vlsim
