// Which services and devices to show.
#include "vlcm/visibility.h"
#include "frame/frame.h"
#include "frame/settings.h"
#include "visibility_tables.h"
#include "vlcm/localctl.h"
#include "vlcm/mobile.h"
#include "vlcm/switches.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace vl::presentation {
namespace {

const char* key_of(std::span<const FilterKey> keys, uint32_t wanted) {
    const auto row =
        std::find_if(keys.begin(), keys.end(), [=](const FilterKey& key) { return key.key == wanted; });
    return row != keys.end() ? row->name : nullptr;
}

// The stack's answer to a read of the whole section, of which only zero or not counts.
uint32_t section_answer(const char* section, const PathBuffer& file) {
    char content[1300] = {};
    return Btsdk_GetPrivateProfileSection(section, content, sizeof content, file.text());
}

bool is_set(const char* section, const char* key, const PathBuffer& file) {
    return key != nullptr && settings::read_number(section, key, 0, file) != 0;
}

// The two filters test the section's answer in opposite senses. Installations rely on either.
bool is_hidden_profile(uint16_t service_class) {
    constexpr char kSection[] = "UnSupportedProfile";
    const char* key = key_of(kProfileKeys, service_class);
    const PathBuffer file = settings::common_file();
    return section_answer(kSection, file) == 0 && is_set(kSection, key, file);
}

bool is_hidden_device_class(uint32_t device_class) {
    constexpr char kSection[] = "FilteredDevice";
    constexpr uint32_t kMajorClass = 0x1F00;
    const PathBuffer file = settings::common_file();
    if (section_answer(kSection, file) == 0) return false;
    return is_set(kSection, key_of(kDeviceKeys, device_class & kMajorClass), file);
}

bool contains(std::span<const uint16_t> list, uint16_t service_class) {
    return std::find(list.begin(), list.end(), service_class) != list.end();
}

bool is_shown_local_server(uint16_t service_class) {
    return !VlCm_ShouldFilterCurProfile(service_class) && contains(kShownLocalServices, service_class);
}

bool is_shown_remote_service(uint16_t service_class) {
    constexpr uint16_t kDirectPrinting = 0x1118;
    constexpr uint16_t kHandsFreeGateway = 0x111F;
    constexpr uint32_t kAsHeadset = 2;
    if (VlCm_ShouldFilterCurProfile(service_class)) return false;
    if (contains(kShownRemoteServices, service_class)) return true;
    if (service_class == kDirectPrinting && (VlCm_IsMobileActive() || VlCm_IsSupportBPPFunction())) {
        return true;
    }
    const uint32_t kind = VlCm_GetLocalDeviceClass();
    return service_class == kHandsFreeGateway && kind == kAsHeadset && VlCm_IsMobileActive();
}

// The record alone tells: one that was not filled has class 0, which is not shown.
template <typename Query>
uint16_t class_from(Query query, BtHandle handle) {
    ServerAttributes attributes{};
    query(handle, &attributes);
    return attributes.serviceClass;
}

}  // namespace
}  // namespace vl::presentation

using namespace vl;

extern "C" BOOL VlCm_ShouldFilterCurProfile(uint16_t serviceClass) {
    return presentation::is_hidden_profile(serviceClass);
}

extern "C" BOOL VlCm_ShouldFilterCurDevCls(uint32_t deviceClass) {
    return presentation::is_hidden_device_class(deviceClass);
}

extern "C" BOOL VlCm_ShouldShowThisLocalServer(uint16_t serviceClass) {
    return presentation::is_shown_local_server(serviceClass);
}

extern "C" BOOL VlCm_ShouldShowThisLocalServerEx(uint32_t server) {
    return VlCm_ShouldShowThisLocalServer(presentation::class_from(Btsdk_GetServerAttributes, server));
}

extern "C" BOOL VlCm_ShouldShowThisRemoteService(uint16_t serviceClass) {
    return presentation::is_shown_remote_service(serviceClass);
}

extern "C" BOOL VlCm_ShouldShowThisRemoteServiceEx(uint32_t service) {
    return VlCm_ShouldShowThisRemoteService(
        presentation::class_from(Btsdk_GetRemoteServiceAttributes, service));
}
