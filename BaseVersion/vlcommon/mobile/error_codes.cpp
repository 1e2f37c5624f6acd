// The mobile SDK's results as the suite's own error numbers.
#include "vlcm/phone_models.h"

namespace vl::mobile {
namespace {

struct ErrorRow {
    int32_t result;
    uint32_t error;
};

// The first row that fits holds; any other result, success included, is a general error.
constexpr uint32_t kGeneralError = 0x6001;
constexpr ErrorRow kErrors[] = {
    {-1, 0x6001},  {-5, 0x6002},  {-7, 0x6003},  {-8, 0x6004},  {-9, 0x6005},  {-10, 0x6006}, {-12, 0x6007},
    {-15, 0x6008}, {-64, 0x6009}, {-71, 0x600A}, {-76, 0x600B}, {-83, 0x600C}, {-94, 0x600D}, {-95, 0x600E},
};

uint32_t error_of(int32_t result) {
    for (const ErrorRow& row : kErrors) {
        if (row.result == result) return row.error;
    }
    return kGeneralError;
}

}  // namespace
}  // namespace vl::mobile

using namespace vl;

extern "C" uint32_t VlCm_MapMobileErrorCode(int32_t result) { return mobile::error_of(result); }
