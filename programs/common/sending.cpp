#include "sending.h"

#include "hand_over.h"
#include "send_list.h"
#include "text.h"

#include <windows.h>

namespace programs {
namespace {

bool is_file(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

std::vector<std::string> sendable_paths(const std::vector<std::wstring>& files) {
    std::vector<std::string> paths;
    for (const std::wstring& file : files) {
        const std::wstring whole = full_path(file);
        if (!is_file(whole)) throw CannotSend("no file \"" + utf8(file) + "\"");
        std::string path = record_path(whole);
        if (path.empty()) throw CannotSend("the path is too long: \"" + utf8(file) + "\"");
        paths.push_back(std::move(path));
    }
    return paths;
}

// One hand-off for each file: of a longer list all but the first record would arrive shifted.
std::vector<HandOff> send_each(const std::vector<std::string>& paths, uint32_t service_class,
                               BtHandle device) {
    if (run_agent() == 0) {
        throw CannotSend("the tray agent did not start: is it in the installation folder?");
    }
    std::vector<HandOff> hand_offs;
    for (const std::string& path : paths) {
        const SendList records(service_class, {path});
        hand_offs.push_back({path, hand_over(records.from(0), device)});
    }
    return hand_offs;
}

const char* meaning_of(uint32_t status) {
    switch (status) {
        case VLCM_OK:
            return "handed over";
        case VLCM_RESOURCE_FAILURE:
            return "another hand-off is pending, or there is no memory";
        case VLCM_STACK_NOT_READY:
            return "Bluetooth is not ready";
        default:
            return "not handed over";
    }
}

}  // namespace programs
