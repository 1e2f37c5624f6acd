// Owners for the walks over the mobile SDK's phone models.
#pragma once

#include "unique.h"

#include "VlMobileSDK.h"

namespace vl {

struct SymbianModelEnumTraits : NullIsNone<void*> {
    static void close(void* enumeration) { MB_EndEnumSymbianModels(enumeration); }
};
struct S40ModelEnumTraits : NullIsNone<void*> {
    static void close(void* enumeration) { MB_EndEnumModels_S40(enumeration); }
};

using SymbianModelEnum = Unique<SymbianModelEnumTraits>;
using S40ModelEnum = Unique<S40ModelEnumTraits>;

}  // namespace vl
