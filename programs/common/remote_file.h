// A file of a remote device as the suite's programs tell each other of it, and what the library says of it.
#pragma once

#include "VlCommon.h"

#include <string>

namespace programs {

// What is in the record that goes to the tray agent; the library carries it unread.
struct RemoteFile {
    char name[VLCM_PATH_SIZE];  // UTF-8
    uint32_t attributes;
    uint32_t size_low;
    uint32_t size_high;
    FILETIME time;  // as the device told it; all zero: it did not
    uint8_t unused[sizeof(VlRemoteFileRecord) - 280];
};
static_assert(sizeof(RemoteFile) == sizeof(VlRemoteFileRecord));

// A name that is too long is cut as bytes.
[[nodiscard]] RemoteFile remote_file(const std::string& name, uint32_t attributes, uint64_t size);
[[nodiscard]] VlRemoteFileRecord record_of(const RemoteFile& file);
// The name in it is terminated, whatever the record holds.
[[nodiscard]] RemoteFile file_of(const VlRemoteFileRecord& record);

struct RemoteFileTexts {
    std::string type, size, exact_size, time;  // UTF-8; empty: the library says nothing
    HRESULT icon_result;
    std::string icon_file;
    int32_t icon_index;
};
[[nodiscard]] RemoteFileTexts texts_of(const RemoteFile& file);

}  // namespace programs
