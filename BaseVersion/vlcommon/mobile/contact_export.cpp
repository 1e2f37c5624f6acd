// From a phone's contact details to a vCard file.
#include "contact_record.h"
#include "vcard.h"

namespace vl::mobile {
namespace {

// False: no memory. Details that the stack does not understand leave the contact empty.
bool read_details(const void* details, VlContact& contact) {
    const UniqueContact from_phone(new_contact());
    if (!from_phone) return false;
    Btsdk_PIMParseContactDetails2(details, from_phone.get());
    copy_contact(contact, *from_phone.get());
    contact.blob->block = nullptr;  // shared with the phone's record, which frees it
    return true;
}

uint32_t export_contact(const void* details, const char* path) {
    const UniqueContact contact(new_contact());
    if (!contact) return 0;
    const UniqueSdkFile file(
        Btsdk_CreateFile(path, GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return 1;  // not told from success: required
    if (!read_details(details, *contact.get())) return 0;
    write_card(file.get(), *contact.get());
    return 1;
}

}  // namespace
}  // namespace vl::mobile

extern "C" uint32_t VlCm_ConvertMBContactToVcfFile(const void* details, const char* path) {
    return details != nullptr && path != nullptr ? vl::mobile::export_contact(details, path) : 0;
}
