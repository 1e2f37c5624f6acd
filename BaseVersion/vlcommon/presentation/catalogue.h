// Look-ups in the catalogue of service and device classes.
#pragma once

#include "catalogue_tables.h"

namespace vl::catalogue {

// The first row of the class; the table's "unknown" row when it has none. Service classes are compared
// whole: upper bits of the 32-bit key count.
const ServiceRow& service(uint32_t service_class);
const ServiceRow& low_energy_service(uint32_t service_class);
const DeviceRow& device(uint32_t device_class);

// The place of `icon` in its file; 0 for state variants and others that are not numbered.
uint32_t icon_index(uint32_t icon);

}  // namespace vl::catalogue
