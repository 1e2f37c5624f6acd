#include "support/trace_log.h"

#include "VlTraceLog.h"

namespace support {
namespace {

using Reader = uint32_t (*)(uint32_t, char*, uint32_t);

std::string read(Reader reader, uint32_t index) {
    std::string text(reader(index, nullptr, 0) + 1, '\0');
    reader(index, text.data(), static_cast<uint32_t>(text.size()));
    text.pop_back();
    return text;
}

// Of the entries with this mark, what `part` makes of them.
template <typename Part>
std::vector<std::string> entries_marked(char mark, Part part) {
    std::vector<std::string> chosen;
    for (uint32_t i = 0; i < VlTraceLog_Count(); ++i) {
        const std::string entry = read(VlTraceLog_Get, i);
        if (entry[0] == mark) chosen.push_back(part(i, entry));
    }
    return chosen;
}

}  // namespace

std::vector<std::string> trace_log() {
    std::vector<std::string> entries;
    for (uint32_t i = 0; i < VlTraceLog_Count(); ++i) entries.push_back(read(VlTraceLog_Get, i));
    return entries;
}

std::vector<std::string> trace_lines() {
    return entries_marked(
        '=', [](uint32_t, const std::string& entry) { return entry.substr(entry.find(' ') + 1); });
}

std::vector<std::string> trace_formats() {
    return entries_marked(
        '=', [](uint32_t index, const std::string&) { return read(VlTraceLog_GetFormat, index); });
}

std::vector<std::string> trace_scopes() {
    return entries_marked('>', [](uint32_t, const std::string& entry) { return entry.substr(1); });
}

void clear_trace_log() { VlTraceLog_Clear(); }

}  // namespace support
