// A contact's display name.
#include "contact_text.h"
#include "frame/frame.h"
#include "vlcm/contacts.h"

#include <initializer_list>

namespace vl::mobile {
namespace {

void write_name(const VlContactName& name, char* buffer) {
    char* end = buffer;
    for (const ContactText part : {text_of(name.family), text_of(name.given), text_of(name.additional)}) {
        if (part.empty()) continue;
        if (end != buffer) *end++ = ' ';
        memcpy(end, part.bytes, part.length);
        end += part.length;
    }
    *end = 0;
}

}  // namespace
}  // namespace vl::mobile

using namespace vl;

// The size is no limit: required.
extern "C" uint32_t VlCm_GetContactName(const VlContactName* name, char* buffer, uint32_t size) {
    TraceScope scope("VlCm_GetContactName");
    if (name == nullptr || buffer == nullptr || size == 0) return 0;
    mobile::write_name(*name, buffer);
    return 1;
}
