// The contact parser.
#include "VlSDK.h"
#include "misuse.h"
#include "operation.h"
#include "results.h"

namespace vlsim {
namespace {

// The simulated stack knows no phone's contact format: every contact is refused, nothing is written.
uint32_t parse_contact(const void* details, void* contact) {
    static constexpr const char* kName = "Btsdk_PIMParseContactDetails2";
    if (!present(kName, "details", details) || !present(kName, "contact", contact)) return kNullPointer;
    return kNotSupported;
}

}  // namespace
}  // namespace vlsim

uint32_t Btsdk_PIMParseContactDetails2(const void* details, void* contact) {
    return vlsim::call<"Btsdk_PIMParseContactDetails2">(vlsim::parse_contact, details, contact);
}
