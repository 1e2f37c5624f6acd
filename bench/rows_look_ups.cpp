#include "floor/floor.h"
#include "rows.h"
#include "vlcm/catalogue.h"

namespace bench {
namespace {

constexpr double kTarget = 1.5;

using Find = unsigned int (*)(unsigned int);

class LookUps {
public:
    explicit LookUps(const Suite& suite) : suite_(suite) {}
    [[nodiscard]] Row row(const char* name, const char* floor_text, Find floor, Find library,
                          unsigned int key) const {
        const auto look_up = [key](Find find) { return timed([key, find] { keep(find(key)); }); };
        return {.name = name,
                .floor_text = floor_text,
                .target = kTarget,
                .floor = calling(suite_.floor.handle(), look_up(floor)),
                .library = calling(suite_.library.handle(), look_up(library)),
                .allowance = {}};
    }

private:
    const Suite& suite_;
};

}  // namespace

std::vector<Row> look_up_rows(const Suite& suite) {
    const auto service = BENCH_FUNCTION(suite.library, VlCm_GetSvcIconID);
    const auto device = BENCH_FUNCTION(suite.library, VlCm_GetDeviceIconID);
    const auto icon = BENCH_FUNCTION(suite.library, VlCm_GetIconIndexByID);
    const auto service_floor = BENCH_FUNCTION(suite.floor, Floor_FindService);
    const auto device_floor = BENCH_FUNCTION(suite.floor, Floor_FindDevice);
    const auto icon_floor = BENCH_FUNCTION(suite.floor, Floor_FindIcon);
    const LookUps make(suite);
    return {
        make.row("service icon, first row", "scan of 48 keys, first row", service_floor, service, 0x1101),
        make.row("service icon, last row", "scan of 48 keys, last row", service_floor, service, 0x0007),
        make.row("service icon, no row", "scan of 48 keys, no row", service_floor, service, 0x1234),
        make.row("device icon, smartphone", "scan of 56 keys", device_floor, device, 0x5A020C),
        make.row("device icon, last row", "scan of 56 keys, last row", device_floor, device, 0x001800),
        make.row("device icon, no row", "scan of 56 keys, no row", device_floor, device, 0x000704),
        make.row("icon index, last row", "scan of 36 keys, last row", icon_floor, icon, 298),
    };
}

}  // namespace bench
