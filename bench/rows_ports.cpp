#include "floor/floor.h"
#include "rows.h"
#include "vlcm/ports.h"

#include "VlSim.h"

#include <stdio.h>

namespace bench {
namespace {

constexpr double kTarget = 1.05;
constexpr int kLastPort = 3;  // of the last shortcut; a candidate in the scene's settings, before a free one
constexpr uint32_t kServers = 2;
constexpr uint32_t kSerialClasses = 5;

// A serial server and another one; one device whose serial service has `count` shortcuts.
std::string scenario(uint32_t count) {
    std::string text = R"({"ready": true,
        "servers": [{"handle": 1, "class": "0x1101", "port": 7}, {"handle": 2, "class": "0x1105"}],
        "devices": [{"handle": 1, "address": "11:22:33:44:55:66", "class": "0x5A020C",
                     "services": [{"handle": 1, "class": "0x1101"}]}],
        "shortcuts": [)";
    for (uint32_t i = 1; i <= count; ++i) {
        constexpr uint32_t kFirst = 10;
        constexpr uint32_t kPorts = 200;
        const uint32_t port = i == count ? kLastPort : kFirst + i % kPorts;
        char shortcut[96];
        snprintf(shortcut, sizeof shortcut, R"(%s{"handle": %u, "device": 1, "service": 1, "port": %u})",
                 i == 1 ? "" : ",", i, port);
        text += shortcut;
    }
    return text + "]}";
}

class Ports {
public:
    explicit Ports(const Suite& suite)
        : suite_(suite), load_(BENCH_FUNCTION(suite.sdk, VlSim_LoadScenario)) {}

    [[nodiscard]] Row of_port(uint32_t count) const {
        const auto search = [](auto function) {
            return [function] {
                uint32_t found[4] = {};
                uint32_t room = 4;
                function(found, kLastPort, &room);
                return found[0] + room;
            };
        };
        Row made =
            row("shortcuts of a port", count, search(BENCH_FUNCTION(suite_.floor, Floor_ShortcutsOfPort)),
                search(BENCH_FUNCTION(suite_.library, VlCm_GetShortcutsByComPort)));
        // The list is counted and read, each parameter measured and read; the scope.
        made.allowance = {.platform_calls = 2 + 2 * count + 2, .allocations = 2};
        return made;
    }

    [[nodiscard]] Row used(uint32_t count) const {
        const auto ask = [](auto function) { return [function] { return function(kLastPort); }; };
        Row made = row("whether a port is used", count, ask(BENCH_FUNCTION(suite_.floor, Floor_IsPortUsed)),
                       ask(BENCH_FUNCTION(suite_.library, VlCm_IsComportBeenUsed)));
        made.allowance = {.platform_calls = calls_of_use(count), .allocations = 2};
        return made;
    }

    [[nodiscard]] Row free_port(uint32_t count) const {
        Row made = row("a free port", count, BENCH_FUNCTION(suite_.floor, Floor_FreePort),
                       BENCH_FUNCTION(suite_.library, VlCm_GetPluginAndNotUsedComport));
        // The scope, the file's folder and both candidates; a walk to the last shortcut, one in vain through
        // the other classes and to the virtual device.
        made.allowance = {.platform_calls = 2 + 3 + 2 + 2 * calls_of_use(count) + kSerialClasses - 1 + 5,
                          .allocations = 4,
                          .bytes_copied = 2 * kPathBytes};
        return made;
    }

private:
    static constexpr uint64_t kPathBytes = 64;

    template <typename Floor, typename Library>
    [[nodiscard]] Row row(const char* series, uint32_t count, Floor floor, Library library) const {
        return {.name = std::string(series) + ", " + std::to_string(count) + " shortcuts",
                .floor_text = "the operations of the stack that the rule needs, and its settings",
                .target = kTarget,
                .floor = calling(suite_.floor.handle(), timed([=] { keep(floor()); })),
                .library = calling(suite_.library.handle(), timed([=] { keep(library()); })),
                .prepare = [load = load_, count] { load(scenario(count).c_str()); },
                .agree = [=] { return floor() == library(); },
                .series = series,
                .records = count};
    }

    // Under a scope: the servers walked and one of them read, the class's list, each shortcut under its
    // own scope; the walk and the server's block are given back without touching the last error.
    static uint64_t calls_of_use(uint32_t count) {
        return 2 + (2 + kServers + 1) + 2 + 2 + 4 * uint64_t{count} + 4;
    }

    const Suite& suite_;
    decltype(&VlSim_LoadScenario) load_;
};

}  // namespace

std::vector<Row> port_rows(const Suite& suite) {
    const Ports ports(suite);
    std::vector<Row> rows;
    for (const uint32_t count : {10U, 1'000U, 20'000U}) rows.push_back(ports.of_port(count));
    for (const uint32_t count : {10U, 1'000U, 20'000U}) rows.push_back(ports.used(count));
    for (const uint32_t count : {10U, 1'000U, 20'000U}) rows.push_back(ports.free_port(count));
    return rows;
}

}  // namespace bench
