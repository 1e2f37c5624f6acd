#include "floor/floor.h"
#include "rows.h"
#include "vlcm/display_names.h"
#include "vlcm/states.h"

#include "VlSim.h"

#include <string.h>
#include <wchar.h>

#include <algorithm>
#include <iterator>

namespace bench {
namespace {

constexpr double kTarget = 1.05;
constexpr uint32_t kSize = 100;
constexpr uint32_t kServer = 1;
constexpr uint32_t kDevice = 1;

// One connected, paired device and one service of our own.
constexpr char kScenario[] = R"({"ready": true,
    "servers": [{"handle": 1, "class": "0x1105", "status": 3}],
    "devices": [{"handle": 1, "address": "11:22:33:44:55:66", "name": "Phone", "class": "0x5A020C",
                 "paired": true, "connected": true, "services": [{"handle": 1, "class": "0x1105"}]}]})";

class Texts {
public:
    explicit Texts(const Suite& suite)
        : suite_(suite), load_(BENCH_FUNCTION(suite.sdk, VlSim_LoadScenario)) {}

    // floor(buffer, size) and library(buffer, size) write the same text. Beside what the floor calls the
    // library may call `more`, and copy one text.
    template <typename Char, typename Floor, typename Library>
    [[nodiscard]] Row row(const char* name, Allowance allowance, Floor floor, Library library) const {
        const auto writing = [](auto write) {
            return timed([write] {
                Char text[kSize];
                keep(write(text, kSize));
                keep(text);
            });
        };
        return {.name = name,
                .floor_text = "the stack's word, the library of texts loaded, one text, freed",
                .target = kTarget,
                .floor = calling(suite_.floor.handle(), writing(floor)),
                .library = calling(suite_.library.handle(), writing(library)),
                .allowance = allowance,
                .prepare = [load = load_] { load(kScenario); },
                .agree =
                    [=] {
                        Char expected[kSize] = {};
                        Char text[kSize] = {};
                        const bool same_result = floor(expected, kSize) == library(text, kSize);
                        return same_result && std::equal(std::begin(text), std::end(text), expected);
                    }};
    }

private:
    const Suite& suite_;
    decltype(&VlSim_LoadScenario) load_;
};

// A function of a handle, as one of the buffer alone.
template <typename Function>
auto of(Function function, uint32_t handle) {
    return [=](auto* buffer, uint32_t size) { return function(handle, buffer, size); };
}

}  // namespace

std::vector<Row> presentation_rows(const Suite& suite) {
    const Texts texts(suite);
    constexpr Allowance kOneText{.platform_calls = 7, .bytes_copied = kSize, .modules = 1};
    return {
        texts.row<char>("name of a service", kOneText,
                        of(BENCH_FUNCTION(suite.floor, Floor_LocalServiceName), kServer),
                        of(BENCH_FUNCTION(suite.library, VlCm_GetLocSvcDisplayName), kServer)),
        texts.row<wchar_t>("name of a service, UTF-16", kOneText,
                           of(BENCH_FUNCTION(suite.floor, Floor_LocalServiceNameW), kServer),
                           of(BENCH_FUNCTION(suite.library, VlCm_GetLocSvcDisplayNameW), kServer)),
        texts.row<char>("state of the adapter", kOneText, BENCH_FUNCTION(suite.floor, Floor_AdapterStatus),
                        BENCH_FUNCTION(suite.library, VlCm_GetLocDevStatusString)),
        texts.row<char>("state of a service", kOneText,
                        of(BENCH_FUNCTION(suite.floor, Floor_LocalServiceStatus), kServer),
                        of(BENCH_FUNCTION(suite.library, VlCm_GetLocSvcStatusString), kServer)),
        texts.row<wchar_t>("state of a service, UTF-16", kOneText,
                           of(BENCH_FUNCTION(suite.floor, Floor_LocalServiceStatusW), kServer),
                           of(BENCH_FUNCTION(suite.library, VlCm_GetLocSvcStatusStringW), kServer)),
        texts.row<char>("state of a device", {.platform_calls = 9, .bytes_copied = kSize, .modules = 1},
                        of(BENCH_FUNCTION(suite.floor, Floor_RemoteDeviceStatus), kDevice),
                        of(BENCH_FUNCTION(suite.library, VlCm_GetRmtDevStatusString), kDevice)),
    };
}

}  // namespace bench
