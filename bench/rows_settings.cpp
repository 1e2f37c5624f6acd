#include "floor/floor.h"
#include "rows.h"
#include "vlcm/settings.h"
#include "vlcm/switches.h"

namespace bench {

std::vector<Row> settings_rows(const Suite& suite) {
    const auto edition_floor = BENCH_FUNCTION(suite.floor, Floor_ReadEdition);
    const auto edition = BENCH_FUNCTION(suite.library, VlCm_GetCustomVersion);
    const auto scope_floor = BENCH_FUNCTION(suite.floor, Floor_TraceScope);
    const auto folder = BENCH_FUNCTION(suite.library, VlCm_GetInstallDir);
    return {
        {.name = "a setting (edition number)",
         .floor_text = "one folder query, one profile read",
         .target = 1.05,
         .floor = calling(suite.floor.handle(), timed([=] { keep(edition_floor()); })),
         .library = calling(suite.library.handle(), timed([=] { keep(edition()); })),
         .allowance = {.platform_calls = 4, .bytes_copied = 64},
         .agree = [=] { return edition_floor() == edition(); }},
        {.name = "a trace scope that nobody reads",
         .floor_text = "one trace scope",
         .floor = calling(suite.floor.handle(), timed([=] { scope_floor(); })),
         .library = calling(suite.library.handle(), timed([=] { folder(nullptr, 0); })),
         .allowance = {.platform_calls = 2}},
    };
}

}  // namespace bench
