#include "commands.h"
#include "facts.h"
#include "send_list.h"
#include "sending.h"
#include "text.h"

#include <stdio.h>

#include <algorithm>

namespace programs {
namespace {

std::vector<std::wstring> wide_paths(const std::vector<std::string>& files) {
    std::vector<std::wstring> paths(files.size());
    std::transform(files.begin(), files.end(), paths.begin(), wide);
    return paths;
}

}  // namespace

Answer ask_send(const Sending& sending) {
    const auto& [handle, property] = device_of(sending.device);
    const SendWay& way = *find_send_way(sending.way);
    Json files = Json::array();
    bool all = true;
    for (const auto& [path, status] :
         send_each(sendable_paths(wide_paths(sending.files)), way.service_class, handle)) {
        files.push_back({{"file", path}, {"status", status}, {"meaning", meaning_of(status)}});
        all = all && status == VLCM_OK;
    }
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
