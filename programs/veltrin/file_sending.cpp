#include "file_sending.h"

#include "VlCommon.h"
#include "resources.h"
#include "sending.h"
#include "text.h"
#include "texts.h"

#include <algorithm>

namespace veltrin {
namespace {

// "letter.txt" or "3 files"
std::wstring named(const std::vector<std::wstring>& files) {
    return files.size() == 1 ? programs::file_name(files.front())
                             : text(IDS_FILE_COUNT, std::to_wstring(files.size()));
}

Outcome outcome_of(const std::vector<programs::HandOff>& hand_offs, const std::wstring& device,
                   const std::wstring& files) {
    for (const auto& [path, status] : hand_offs) {
        if (status == VLCM_OK) continue;
        return {text(IDS_NOT_HANDED_OVER, device, programs::wide(programs::meaning_of(status))), true};
    }
    return {text(IDS_HANDED_OVER, device, files)};
}

}  // namespace

const programs::SendWay* offered_way(const std::vector<ServiceRow>& services, uint32_t service_class) {
    const auto is_offered = [&services](uint32_t wanted) {
        return std::any_of(services.begin(), services.end(),
                           [wanted](const ServiceRow& row) { return row.service_class == wanted; });
    };
    for (const programs::SendWay& way : programs::send_ways()) {
        if (way.service_class == service_class && is_offered(service_class)) return &way;
    }
    return nullptr;
}

const programs::SendWay* best_way(const std::vector<ServiceRow>& services) {
    for (const programs::SendWay& way : programs::send_ways()) {
        if (offered_way(services, way.service_class)) return &way;
    }
    return nullptr;
}

Outcome send_files(const DeviceRow& device, const programs::SendWay& way,
                   const std::vector<std::wstring>& files) {
    try {
        const auto hand_offs =
            programs::send_each(programs::sendable_paths(files), way.service_class, device.handle);
        return outcome_of(hand_offs, device.name, named(files));
    } catch (const programs::CannotSend& error) {
        return {text(IDS_NOT_HANDED_OVER, device.name, programs::wide(error.what())), true};
    }
}

}  // namespace veltrin
