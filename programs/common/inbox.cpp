#include "inbox.h"

#include "VlSim.h"
#include "text.h"

namespace programs {

std::wstring inbox_folder(BtHandle device) {
    char path[1024] = "";
    const uint32_t length = VlSim_GetInboxFolder(device, path, sizeof path);
    return length != 0 && length < sizeof path ? wide(path) : std::wstring();
}

}  // namespace programs
