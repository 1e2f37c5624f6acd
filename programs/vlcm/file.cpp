#include "commands.h"
#include "hand_over.h"
#include "remote_file.h"
#include "sending.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

Json text_or_null(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

RemoteFile file_from(const FileDescription& given) {
    RemoteFile file =
        remote_file(given.name, given.folder ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL, given.size);
    if (!given.time.empty()) file.time = *file_time_of(given.time);
    return file;
}

}  // namespace

std::optional<FILETIME> file_time_of(const std::string& text) {
    unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    char more = 0;
    const int read = sscanf(text.c_str(), "%4u-%2u-%2uT%2u:%2u:%2u%c", &year, &month, &day, &hour, &minute,
                            &second, &more);
    if (read != 6) return std::nullopt;
    const auto word = [](unsigned value) { return static_cast<WORD>(value); };
    const SYSTEMTIME time{word(year), word(month), 0, word(day), word(hour), word(minute), word(second), 0};
    FILETIME result{};
    if (!SystemTimeToFileTime(&time, &result)) return std::nullopt;
    return result;
}

Answer ask_file_describe(const FileDescription& given) {
    const RemoteFileTexts texts = texts_of(file_from(given));
    const Json icon = {{"result", hex(static_cast<uint32_t>(texts.icon_result))},
                       {"file", texts.icon_file},
                       {"index", texts.icon_index}};
    return {{{"name", given.name},
             {"folder", given.folder},
             {"type", text_or_null(texts.type)},
             {"size", text_or_null(texts.size)},
             {"exactSize", text_or_null(texts.exact_size)},
             {"time", text_or_null(texts.time)},
             {"icon", icon}},
            kYes};
}

void print_file_describe(const Json& facts) {
    printf("%s\n", shown(facts, "name").c_str());
    for (const char* member : {"type", "size", "exactSize", "time"}) {
        printf("  %-10s %s\n", member, shown(facts, member).c_str());
    }
    const Json& icon = facts.at("icon");
    printf("  %-10s %s,%s\n", "icon", shown(icon, "file").c_str(), shown(icon, "index").c_str());
}

Answer ask_file_show(const FileDescription& given) {
    if (run_agent() == 0) throw NotFound("the tray agent did not start: is it in the installation folder?");
    const VlRemoteFileRecord record = record_of(file_from(given));
    const uint32_t status = VlCm_ShowFTPFileProperty(&record, 0);
    return {{{"name", given.name}, {"status", status}, {"meaning", meaning_of(status)}},
            status == VLCM_OK ? kYes : kNo};
}

void print_file_show(const Json& facts) {
    printf("%s: %s (%s)\n", shown(facts, "name").c_str(), shown(facts, "meaning").c_str(),
           shown(facts, "status").c_str());
}

}  // namespace programs
