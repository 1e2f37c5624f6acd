// Connecting: the tray agent makes the connections, the window asks it to.
#pragma once

#include "background_job.h"
#include "rows.h"

namespace veltrin {

// Asks for the device's automatic default connection; without one, for its default shortcut.
[[nodiscard]] Outcome connect_device(const DeviceRow& device);
// Asks for the service's shortcut.
[[nodiscard]] Outcome connect_service(const ServiceRow& service);

}  // namespace veltrin
