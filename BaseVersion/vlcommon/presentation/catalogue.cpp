#include "catalogue.h"

#include "key_column.h"
#include "vlcm/catalogue.h"

namespace vl::catalogue {
namespace {

constexpr KeyColumn<std::size(kServices)> kServiceKeys(kServices);
constexpr KeyColumn<std::size(kLowEnergyServices)> kLowEnergyServiceKeys(kLowEnergyServices);
constexpr KeyColumn<std::size(kDevices)> kDeviceKeys(kDevices);
constexpr KeyColumn<std::size(kIconNumbers)> kIconKeys(kIconNumbers);

template <typename Rows, typename Keys, typename Row>
const Row& row_of(const Rows& rows, const Keys& keys, uint32_t key, const Row& unknown) {
    const size_t found = keys.find(key);
    return found < std::size(rows) ? rows[found] : unknown;
}

}  // namespace

const ServiceRow& service(uint32_t service_class) {
    return row_of(kServices, kServiceKeys, service_class, kUnknownService);
}

const ServiceRow& low_energy_service(uint32_t service_class) {
    return row_of(kLowEnergyServices, kLowEnergyServiceKeys, service_class, kUnknownLowEnergyService);
}

const DeviceRow& device(uint32_t device_class) {
    return row_of(kDevices, kDeviceKeys, device_class & kDeviceClassMask, kUnknownDevice);
}

uint32_t icon_index(uint32_t icon) { return row_of(kIconNumbers, kIconKeys, icon, kUnnumberedIcon).index; }

}  // namespace vl::catalogue

using namespace vl;

extern "C" unsigned int VlCm_GetSvcIconID(unsigned int serviceClass) {
    return catalogue::service(serviceClass).icon;
}

extern "C" unsigned int VlCm_GetSvcIconIndex(unsigned int serviceClass) {
    return catalogue::icon_index(catalogue::service(serviceClass).icon);
}

extern "C" unsigned int VlCm_GetServiceClsNameStringID(unsigned short serviceClass) {
    return catalogue::service(serviceClass).class_name;
}

extern "C" unsigned int VlCm_GetLocSvcDesStrID(unsigned short serviceClass) {
    return catalogue::service(serviceClass).local_description;
}

extern "C" unsigned int VlCm_GetRmtSvcDesStrID(unsigned short serviceClass) {
    return catalogue::service(serviceClass).remote_description;
}

extern "C" unsigned int VlCm_GetSvcIconInfoCount() {
    return static_cast<unsigned int>(std::size(catalogue::kServices));
}

extern "C" unsigned int VlCm_GetLESvcIconID(unsigned int serviceClass) {
    return catalogue::low_energy_service(serviceClass).icon;
}

extern "C" unsigned int VlCm_GetDeviceIconID(unsigned int deviceClass) {
    return catalogue::device(deviceClass).icon;
}

extern "C" unsigned int VlCm_GetDeviceIconIndex(unsigned int deviceClass) {
    return catalogue::icon_index(catalogue::device(deviceClass).icon);
}

extern "C" unsigned int VlCm_GetDevMajorClsNameID(unsigned int deviceClass) {
    return catalogue::device(deviceClass).major_name;
}

extern "C" unsigned int VlCm_GetDevMinorClsNameID(unsigned int deviceClass) {
    return catalogue::device(deviceClass).minor_name;
}

// The class name shown for a device is its minor-class name.
extern "C" unsigned int VlCm_GetDeviceClsNameStringID(unsigned int deviceClass) {
    return catalogue::device(deviceClass).minor_name;
}

extern "C" unsigned int VlCm_GetDeviceIconInfoCount() {
    return static_cast<unsigned int>(std::size(catalogue::kDevices));
}

extern "C" unsigned int VlCm_GetLEDeviceIconID(unsigned int /*deviceClass*/) {
    return catalogue::kLowEnergyDeviceIcon;
}

extern "C" unsigned int VlCm_GetIconIndexByID(unsigned int iconId) { return catalogue::icon_index(iconId); }

extern "C" HMODULE VlCm_GetLangDepResLib(unsigned int selector) {
    return selector <= 1 ? LoadLibraryA("Vl2Res.dll") : nullptr;
}
