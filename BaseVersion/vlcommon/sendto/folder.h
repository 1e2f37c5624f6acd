// The suite's folder in the Send-To menu and what every pass over it puts right.
#pragma once

#include "frame/wide_path.h"

namespace vl::sendto {

// Makes the folder, its settings file and the link without a device, hides the system's own entry and,
// from Vista on, has the link to the shell namespace made when it is missing. The folder's path; empty
// when there is no language library or no name in it: then nothing was done. The caller is in a COM
// apartment.
WidePath prepare_folder();

}  // namespace vl::sendto
