#include "contact_record.h"

#include "vlcm/companions.h"

namespace vl::mobile {
namespace {

// A block of its own behind a pointer in the head.
struct Part {
    size_t pointer;     // where in the head
    uint32_t size;      // bytes
    uint32_t capacity;  // what a capacity word says; 0: it is none
};
// clang-format off
constexpr Part kParts[] = {
    {offsetof(VlContact, name),            sizeof(VlContactName),                             0},
    {offsetof(VlContact, organisation),    sizeof(VlContactOrganisation),                     0},
    {offsetof(VlContact, blob),            sizeof(VlContactBlob),                             0},
    {offsetof(VlContact, phoneCapacity),   sizeof(uint32_t),                                  VLCM_CONTACT_PHONES},
    {offsetof(VlContact, phones),          VLCM_CONTACT_PHONES * sizeof(VlContactPhone),      0},
    {offsetof(VlContact, addressCapacity), sizeof(uint32_t),                                  VLCM_CONTACT_ADDRESSES},
    {offsetof(VlContact, addresses),       VLCM_CONTACT_ADDRESSES * sizeof(VlContactAddress), 0},
    {offsetof(VlContact, emailCapacity),   sizeof(uint32_t),                                  VLCM_CONTACT_EMAILS},
    {offsetof(VlContact, emails),          VLCM_CONTACT_EMAILS * sizeof(VlContactEmail),      0},
    {offsetof(VlContact, urlCapacity),     sizeof(uint32_t),                                  VLCM_CONTACT_URLS},
    {offsetof(VlContact, urls),            VLCM_CONTACT_URLS * sizeof(VlContactUrl),          0},
    {offsetof(VlContact, secondCapacity),  sizeof(uint32_t),                                  VLCM_CONTACT_URLS},
    {offsetof(VlContact, second),          VLCM_CONTACT_URLS * sizeof(VlContactUrl),          0},
};
// clang-format on

void* part_of(const VlContact& contact, const Part& part) {
    void* block = nullptr;
    memcpy(&block, reinterpret_cast<const char*>(&contact) + part.pointer, sizeof block);
    return block;
}

void set_part(VlContact& contact, const Part& part, void* block) {
    memcpy(reinterpret_cast<char*>(&contact) + part.pointer, &block, sizeof block);
}

void* new_zeroed(uint32_t size) {
    void* block = Vlcm_SHAlloc(size);
    return block != nullptr ? memset(block, 0, size) : nullptr;
}

void* new_part(const Part& part) {
    void* block = new_zeroed(part.size);
    if (block != nullptr && part.capacity != 0) memcpy(block, &part.capacity, sizeof part.capacity);
    return block;
}

void copy_head(VlContact& destination, const VlContact& source) {
    destination.size = sizeof destination;
    memmove(destination.text1, source.text1, sizeof destination.text1);
    memmove(destination.items, source.items, sizeof destination.items);
    memmove(destination.text2, source.text2, sizeof destination.text2);
    memmove(destination.longText, source.longText, sizeof destination.longText);
}

}  // namespace

VlContact* new_contact() {
    UniqueContact contact(static_cast<VlContact*>(new_zeroed(sizeof(VlContact))));
    if (!contact) return nullptr;
    contact.get()->size = sizeof(VlContact);
    for (const Part& part : kParts) {
        void* block = new_part(part);
        if (block == nullptr) return nullptr;
        set_part(*contact.get(), part, block);
    }
    return contact.release();
}

void free_contact(VlContact* contact) {
    if (contact->blob != nullptr) Vlcm_SHFree(contact->blob->block);
    for (const Part& part : kParts) {
        Vlcm_SHFree(part_of(*contact, part));
        set_part(*contact, part, nullptr);
    }
    Vlcm_SHFree(contact);
}

void copy_contact(VlContact& destination, const VlContact& source) {
    copy_head(destination, source);
    for (const Part& part : kParts) {
        void* to = part_of(destination, part);
        const void* from = part_of(source, part);
        if (to != nullptr && from != nullptr) memmove(to, from, part.size);
    }
}

}  // namespace vl::mobile

using namespace vl;

extern "C" VlContact* VlCm_AllocContactItemEx() { return mobile::new_contact(); }

extern "C" VlPbapContact* VlCm_AllocPBAPContactItemEx() { return mobile::new_contact(); }

extern "C" void VlCm_CopyPBAPContactItemEx(VlContact* destination, const VlPbapContact* source) {
    if (destination != nullptr && source != nullptr) mobile::copy_contact(*destination, *source);
}

extern "C" void VlCm_CopyPBAPContactItemMbToPBAP(VlFlatContact* destination, const VlFlatContact* source) {
    if (destination != nullptr && source != nullptr) *destination = *source;
}

extern "C" void VlCm_FreeContactItemEx(VlContact* contact) {
    if (contact != nullptr) mobile::free_contact(contact);
}

extern "C" void VlCm_FreePBAPContactItemEx(VlPbapContact* contact) {
    if (contact != nullptr) mobile::free_contact(contact);
}
