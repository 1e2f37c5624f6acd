// The records by which files are handed to the tray agent.
#pragma once

#include "protocol.h"

#include <optional>
#include <string>
#include <vector>

namespace programs {

// A send record's path holds 259 bytes: UTF-8, and the short form of a path that is too long.
// Empty when there is none that fits.
[[nodiscard]] std::string record_path(const std::wstring& full_path);

// The path of a received record, absolute. Senders write UTF-8 or the ANSI code page: UTF-8 is taken when
// the text is well-formed and the file exists, or when the text is plain ASCII. Empty when the text is no
// absolute path.
[[nodiscard]] std::wstring path_in_record(const VlSendRecord& record);

// The last part of a path.
[[nodiscard]] std::wstring file_name(const std::wstring& path);

// A linked list for the library's senders, one record per path.
class SendList {
public:
    SendList(uint32_t service_class, const std::vector<std::string>& paths);
    // The records from `index` to the end.
    [[nodiscard]] const VlSendRecord* from(size_t index) const { return &records_[index]; }
    [[nodiscard]] size_t size() const { return records_.size(); }

private:
    std::vector<VlSendRecord> records_;
};

// A way to send files, as the user names it.
struct SendWay {
    const char* name;
    uint32_t service_class;
    const char* title;
};
[[nodiscard]] const std::vector<SendWay>& send_ways();
// Null for an unknown name.
[[nodiscard]] const SendWay* find_send_way(const std::string& name);

}  // namespace programs
