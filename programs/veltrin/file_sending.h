// Sending files to a device: by which way, and the sending itself.
#pragma once

#include "background_job.h"
#include "rows.h"
#include "send_list.h"

#include <string>
#include <vector>

namespace veltrin {

// The way to send files by a service of this class, when it takes files and the device offers one; else null.
[[nodiscard]] const programs::SendWay* offered_way(const std::vector<ServiceRow>& services,
                                                   uint32_t service_class);
// The first way, in the order in which ways are known, that the device offers; null: it takes no files.
[[nodiscard]] const programs::SendWay* best_way(const std::vector<ServiceRow>& services);

// Hands the files to the tray agent, which sends them.
[[nodiscard]] Outcome send_files(const DeviceRow& device, const programs::SendWay& way,
                                 const std::vector<std::wstring>& files);

}  // namespace veltrin
