// Records of the library in tests.
#pragma once

#include "vlcm/companions.h"
#include "vlcm/contacts.h"

#include <string.h>

#include <algorithm>
#include <memory>
#include <string>

struct FreeContact {
    void operator()(VlContact* contact) const { VlCm_FreeContactItemEx(contact); }
};
using OwnedContact = std::unique_ptr<VlContact, FreeContact>;

inline OwnedContact new_contact() { return OwnedContact(VlCm_AllocContactItemEx()); }

// Puts a text into a field; one that fills the field has no terminator.
template <size_t room>
void put(char (&field)[room], const std::string& text) {
    memset(field, 0, room);
    memcpy(field, text.data(), std::min(text.size(), room));
}

inline void put_phone(VlContact& contact, size_t entry, uint32_t type, const std::string& number) {
    contact.phones[entry].type = type;
    put(contact.phones[entry].number, number);
}

inline void put_names(VlContact& contact, const std::string& family, const std::string& given,
                      const std::string& additional) {
    put(contact.name->family, family);
    put(contact.name->given, given);
    put(contact.name->additional, additional);
}
