#include "report.h"

#include <nlohmann/json.hpp>

namespace bench {
namespace {

nlohmann::ordered_json counts_json(const Counts& counts) {
    return {{"platform_calls", counts.platform_calls},
            {"stack_calls", counts.stack_calls},
            {"blocks", counts.allocations},
            {"bytes_copied", counts.bytes_copied},
            {"modules", counts.modules},
            {"calls", counts.calls}};
}

nlohmann::ordered_json result_json(const Result& result) {
    const Times& times = result.times;
    return {{"name", result.row->name},
            {"floor", result.row->floor_text},
            {"floor_ns", times.floor_ns},
            {"library_ns", times.library_ns},
            {"ratio", {{"median", times.ratio.median}, {"low", times.ratio.low}, {"high", times.ratio.high}}},
            {"target", result.row->target},
            {"met", result.met()},
            {"pairs", times.pairs},
            {"calls_per_batch", times.calls},
            {"floor_counts", counts_json(result.floor)},
            {"library_counts", counts_json(result.library)}};
}

}  // namespace

std::string json_text(const std::vector<Result>& results) {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const Result& result : results) rows.push_back(result_json(result));
    constexpr int kIndent = 2;
    return nlohmann::ordered_json{{"rows", rows}}.dump(kIndent) + '\n';
}

}  // namespace bench
