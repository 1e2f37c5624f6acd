#include "commands.h"
#include "facts.h"
#include "hand_over.h"
#include "send_list.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

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

bool is_file(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The paths for the records, all of them or none: nothing is sent when one is wrong.
std::vector<std::string> record_paths(const std::vector<std::string>& files) {
    std::vector<std::string> paths;
    for (const std::string& file : files) {
        const std::wstring whole = full_path(wide(file));
        if (!is_file(whole)) throw NotFound("no file \"" + file + "\"");
        std::string path = record_path(whole);
        if (path.empty()) throw NotFound("the path is too long: \"" + file + "\"");
        paths.push_back(std::move(path));
    }
    return paths;
}

// One hand-off for each file: of a longer list all but the first record would arrive shifted.
Json send_each(const std::vector<std::string>& paths, const SendWay& way, BtHandle device) {
    Json list = Json::array();
    for (const std::string& path : paths) {
        const SendList records(way.service_class, {path});
        const uint32_t status = hand_over(records.from(0), device);
        list.push_back({{"file", path}, {"status", status}, {"meaning", meaning_of(status)}});
    }
    return list;
}

}  // namespace

Answer ask_send(const Sending& sending) {
    const auto& [handle, property] = device_of(sending.device);
    const std::vector<std::string> paths = record_paths(sending.files);
    const SendWay& way = *find_send_way(sending.way);
    if (run_agent() == 0) {
        throw NotFound(
            "the tray agent did not start: is it in the installation folder? (see: vlcm settings)");
    }
    Json files = send_each(paths, way, handle);
    bool all = true;
    for (const Json& file : files) all = all && file.at("status") == VLCM_OK;
    return {{{"device", display_name(property.address)}, {"via", way.title}, {"files", std::move(files)}},
            all ? kYes : kNo};
}

void print_send(const Json& facts) {
    printf("to %s by %s\n", shown(facts, "device").c_str(), shown(facts, "via").c_str());
    for (const Json& file : facts.at("files")) {
        printf("  %s: %s (%s)\n", shown(file, "file").c_str(), shown(file, "meaning").c_str(),
               shown(file, "status").c_str());
    }
}

}  // namespace programs
