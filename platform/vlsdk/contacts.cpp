// The contact parser.
#include "VlSDK.h"
#include "contact_details.h"
#include "misuse.h"
#include "operation.h"
#include "results.h"

#include <objbase.h>

#include <cstring>
#include <exception>

namespace vlsim {
namespace {

constexpr const char* kParse = "Btsdk_PIMParseContactDetails2";

bool has_parts(const VlContact& contact) {
    return present(kParse, "name", contact.name) && present(kParse, "organisation", contact.organisation) &&
           present(kParse, "blob", contact.blob) && present(kParse, "phones", contact.phones) &&
           present(kParse, "addresses", contact.addresses) && present(kParse, "emails", contact.emails) &&
           present(kParse, "urls", contact.urls);
}

void expect_fresh(const VlContact& contact) {
    if (contact.size != sizeof contact) report_misuse(kParse, "size is not 1296");
    if (contact.blob->block) report_misuse(kParse, "blob record not fresh");
    if (contact.name->family[0] || contact.phones[0].number[0]) report_misuse(kParse, "record not fresh");
}

// A block that the reader of the record frees: of the allocator that all modules share.
void* picture_block(const std::vector<uint8_t>& picture) {
    void* const block = CoTaskMemAlloc(picture.size());
    if (block) std::memcpy(block, picture.data(), picture.size());
    return block;
}

uint32_t fill(VlContact& contact, const ContactDetails& details) {
    if (!details.picture.empty()) {
        contact.blob->block = picture_block(details.picture);
        if (!contact.blob->block) return kNotStored;
        const auto size = static_cast<uint32_t>(details.picture.size());
        std::memcpy(contact.blob->head, &size, sizeof size);
    }
    *contact.name = details.name;
    *contact.organisation = details.organisation;
    std::memcpy(contact.phones, details.phones, sizeof details.phones);
    std::memcpy(contact.addresses, details.addresses, sizeof details.addresses);
    std::memcpy(contact.emails, details.emails, sizeof details.emails);
    std::memcpy(contact.urls, details.urls, sizeof details.urls);
    return kDone;
}

uint32_t parse_contact(const void* text, void* record) {
    auto* const contact = static_cast<VlContact*>(record);
    if (!present(kParse, "details", text) || !present(kParse, "contact", contact)) return kNullPointer;
    if (!has_parts(*contact)) return kNullPointer;
    expect_fresh(*contact);
    try {
        return fill(*contact, read_contact_details(static_cast<const char*>(text)));
    } catch (const std::exception&) {  // another format, or no memory
        return kNotSupported;
    }
}

}  // namespace
}  // namespace vlsim

uint32_t Btsdk_PIMParseContactDetails2(const void* details, void* contact) {
    return vlsim::call<"Btsdk_PIMParseContactDetails2">(vlsim::parse_contact, details, contact);
}
