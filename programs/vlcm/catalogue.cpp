#include "VlCommon.h"
#include "commands.h"
#include "facts.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

// What the library says of a class that it does not know.
constexpr unsigned int kUnknownIcon = 1;
constexpr unsigned int kUnknownService = 1153;
constexpr unsigned int kUnknownDevice = 1101;
// Beside low-energy classes without a name of their own, these icons stand for "unknown".
constexpr unsigned int kUnknownLowEnergyIcon = 278;

constexpr int kServiceDigits = 4;
constexpr int kDeviceDigits = 6;

Json text_or_null(unsigned int id) { return id == 0 ? Json(nullptr) : Json(resource_text(id)); }

Json service_row(uint16_t service_class) {
    return {
        {"class", hex(service_class, kServiceDigits)},
        {"icon", VlCm_GetSvcIconID(service_class)},
        {"index", VlCm_GetSvcIconIndex(service_class)},
        {"name", resource_text(VlCm_GetServiceClsNameStringID(service_class))},
        {"localDescription", text_or_null(VlCm_GetLocSvcDesStrID(service_class))},
        {"remoteDescription", text_or_null(VlCm_GetRmtSvcDesStrID(service_class))},
        {"shownHere", VlCm_ShouldShowThisLocalServer(service_class) != FALSE},
        {"shownThere", VlCm_ShouldShowThisRemoteService(service_class) != FALSE},
    };
}

Json device_row(uint32_t device_class) {
    return {
        {"class", hex(device_class, kDeviceDigits)},
        {"icon", VlCm_GetDeviceIconID(device_class)},
        {"index", VlCm_GetDeviceIconIndex(device_class)},
        {"name", resource_text(VlCm_GetDevMinorClsNameID(device_class))},
        {"majorName", resource_text(VlCm_GetDevMajorClsNameID(device_class))},
        {"shown", VlCm_ShouldFilterCurDevCls(device_class) == FALSE},
    };
}

bool is_known_service(uint16_t service_class) {
    return VlCm_GetSvcIconID(service_class) != kUnknownIcon ||
           VlCm_GetServiceClsNameStringID(service_class) != kUnknownService ||
           VlCm_GetLocSvcDesStrID(service_class) != 0 || VlCm_GetRmtSvcDesStrID(service_class) != 0;
}

bool is_known_device(uint32_t device_class) {
    return VlCm_GetDeviceIconID(device_class) != kUnknownIcon ||
           VlCm_GetDevMinorClsNameID(device_class) != kUnknownDevice ||
           VlCm_GetDevMajorClsNameID(device_class) != kUnknownDevice;
}

Json services() {
    constexpr uint32_t kLastClass = 0xFFFF;
    Json list = Json::array();
    for (uint32_t each = 0; each <= kLastClass; ++each) {
        const auto service_class = static_cast<uint16_t>(each);
        if (is_known_service(service_class)) list.push_back(service_row(service_class));
    }
    return list;
}

Json low_energy_services() {
    constexpr uint32_t kLastClass = 0xFFFF;
    Json list = Json::array();
    for (uint32_t each = 0; each <= kLastClass; ++each) {
        const unsigned int icon = VlCm_GetLESvcIconID(each);
        if (icon == kUnknownLowEnergyIcon) continue;
        list.push_back(
            {{"class", hex(each, kServiceDigits)}, {"icon", icon}, {"index", VlCm_GetIconIndexByID(icon)}});
    }
    return list;
}

Json devices() {
    constexpr uint32_t kLastClass = 0x1FFF;  // the 13 bits that count
    Json list = Json::array();
    for (uint32_t each = 0; each <= kLastClass; ++each) {
        if (is_known_device(each)) list.push_back(device_row(each));
    }
    return list;
}

void print_rows(const Json& rows) {
    for (const Json& row : rows) {
        printf("  %-8s  icon %-3s  index %-3s  %s\n", shown(row, "class").c_str(), shown(row, "icon").c_str(),
               shown(row, "index").c_str(), shown(row, "name").c_str());
    }
}

}  // namespace

// The library has no walk over its tables: every class is asked, and those that have nothing of their own
// left out. The counts tell how many rows there are in all.
Answer ask_catalogue() {
    return {{{"serviceCount", VlCm_GetSvcIconInfoCount()},
             {"deviceCount", VlCm_GetDeviceIconInfoCount()},
             {"services", services()},
             {"lowEnergyServices", low_energy_services()},
             {"devices", devices()}},
            kYes};
}

void print_catalogue(const Json& facts) {
    printf("%s service classes, these with something of their own\n", shown(facts, "serviceCount").c_str());
    print_rows(facts.at("services"));
    printf("low-energy service classes\n");
    print_rows(facts.at("lowEnergyServices"));
    printf("%s device classes\n", shown(facts, "deviceCount").c_str());
    print_rows(facts.at("devices"));
}

}  // namespace programs
