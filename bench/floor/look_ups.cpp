#include "floor.h"
#include "presentation/catalogue_tables.h"

#include <iterator>

namespace {

using namespace vl::catalogue;

template <size_t kRows>
struct Keys {
    template <typename Rows>
    explicit consteval Keys(const Rows& rows) {
        for (size_t i = 0; i < kRows; ++i) keys[i] = rows[i].key();
    }
    [[nodiscard]] unsigned int scan(unsigned int key) const {
        unsigned int row = 0;
        while (row < kRows && keys[row] != key) ++row;
        return row;
    }
    uint16_t keys[kRows] = {};
};

constexpr Keys<std::size(kServices)> kServiceKeys(kServices);
constexpr Keys<std::size(kDevices)> kDeviceKeys(kDevices);
constexpr Keys<std::size(kIconNumbers)> kIconKeys(kIconNumbers);

}  // namespace

extern "C" unsigned int Floor_FindService(unsigned int service_class) {
    return kServiceKeys.scan(service_class);
}
extern "C" unsigned int Floor_FindDevice(unsigned int device_class) {
    return kDeviceKeys.scan(device_class & kDeviceClassMask);
}
extern "C" unsigned int Floor_FindIcon(unsigned int icon) { return kIconKeys.scan(icon); }
