#include "report.h"

#include <stdio.h>

#include <algorithm>

namespace bench {
namespace {

using Line = std::vector<std::string>;

template <typename... Values>
std::string format(const char* pattern, Values... values) {
    char text[128];
    snprintf(text, sizeof text, pattern, values...);
    return text;
}

std::string duration(double ns) {
    constexpr double kMicrosecond = 1e3;
    constexpr double kMillisecond = 1e6;
    if (ns < kMicrosecond) return format("%.1f ns", ns);
    if (ns < kMillisecond) return format("%.2f us", ns / kMicrosecond);
    return format("%.2f ms", ns / kMillisecond);
}

std::string pair(uint64_t library, uint64_t floor) {
    return std::to_string(library) + " (" + std::to_string(floor) + ")";
}

std::string target(const Result& r) {
    if (r.row->target == 0) return "";
    return format("%.2f ", r.row->target) + (r.met() ? "met" : "missed");
}

Line line(const Result& r) {
    const Estimate& ratio = r.times.ratio;
    return {r.row->name,
            duration(r.times.floor_ns),
            duration(r.times.library_ns),
            format("%.2f", ratio.median),
            format("%.2f to %.2f", ratio.low, ratio.high),
            target(r),
            pair(r.library.platform_calls, r.floor.platform_calls),
            pair(r.library.allocations, r.floor.allocations),
            pair(r.library.bytes_copied, r.floor.bytes_copied),
            pair(r.library.modules, r.floor.modules)};
}

std::string joined(const Line& cells, const std::vector<size_t>& widths) {
    std::string text = "|";
    for (size_t i = 0; i < cells.size(); ++i) {
        text += ' ' + cells[i] + std::string(widths[i] - cells[i].size(), ' ') + " |";
    }
    return text + '\n';
}

// The first line is the head.
std::string aligned(const std::vector<Line>& lines) {
    std::vector<size_t> widths(lines.front().size());
    for (const Line& cells : lines) {
        for (size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], cells[i].size());
    }
    std::string text = joined(lines.front(), widths);
    Line rule;
    for (const size_t width : widths) rule.push_back(std::string(width, '-'));
    text += joined(rule, widths);
    for (size_t i = 1; i < lines.size(); ++i) text += joined(lines[i], widths);
    return text;
}

const Result* find(const std::vector<Result>& results, const std::string& series, uint32_t records) {
    const auto found = std::find_if(results.begin(), results.end(), [&](const Result& r) {
        return r.row->series == series && r.row->records == records;
    });
    return found == results.end() ? nullptr : &*found;
}

// Of one more record in a list, beside what a list of one costs.
double record_ns(double list_ns, double single_ns, uint32_t records) {
    return (list_ns - single_ns) / (records - 1);
}

struct Growth {
    double small_ns;
    double large_ns;
};

Line growth_line(const std::string& name, const Growth& growth) {
    return {name, duration(growth.small_ns), duration(growth.large_ns),
            format("%.2f", growth.large_ns / growth.small_ns)};
}

void add_growth(const std::vector<Result>& results, const std::string& series, std::vector<Line>& lines) {
    constexpr uint32_t kSmall = 1'000;
    constexpr uint32_t kLarge = 50'000;
    const Result* one = find(results, series, 1);
    const Result* small = find(results, series, kSmall);
    const Result* large = find(results, series, kLarge);
    if (one == nullptr || small == nullptr || large == nullptr) return;
    const auto growth = [&](double Times::*side) {
        const double single = one->times.*side;
        return Growth{record_ns(small->times.*side, single, kSmall),
                      record_ns(large->times.*side, single, kLarge)};
    };
    lines.push_back(growth_line(series + ", library", growth(&Times::library_ns)));
    lines.push_back(growth_line(series + ", floor", growth(&Times::floor_ns)));
}

}  // namespace

std::string table(const std::vector<Result>& results) {
    std::vector<Line> lines = {{"call", "floor", "library", "ratio", "95 %", "target", "calls", "blocks",
                                "bytes copied", "modules"}};
    for (const Result& result : results) lines.push_back(line(result));
    return aligned(lines);
}

std::string growth_table(const std::vector<Result>& results) {
    std::vector<Line> lines = {{"one more record", "in 1,000", "in 50,000", "growth"}};
    add_growth(results, "hand over", lines);
    add_growth(results, "take", lines);
    return lines.size() == 1 ? "" : aligned(lines);
}

std::vector<std::string> excesses(const Result& result) {
    const Allowance& allowed = result.row->allowance;
    const Counts& found = result.library;
    std::vector<std::string> lines;
    const auto compare = [&](const char* what, uint64_t count, uint64_t limit) {
        if (count <= limit) return;
        lines.push_back(result.row->name + ": " + std::to_string(count) + " " + what + ", allowed " +
                        std::to_string(limit) + " (" + found.calls + ")");
    };
    compare("platform calls", found.platform_calls, allowed.platform_calls);
    compare("blocks", found.allocations, allowed.allocations);
    compare("bytes copied", found.bytes_copied, allowed.bytes_copied);
    compare("modules", found.modules, allowed.modules);
    return lines;
}

}  // namespace bench
