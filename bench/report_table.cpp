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
            pair(r.library.stack_calls, r.floor.stack_calls),
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

// A series from its shortest to its longest list.
std::vector<const Result*> results_of(const std::vector<Result>& results, const std::string& series) {
    std::vector<const Result*> found;
    for (const Result& r : results) {
        if (r.row->series == series) found.push_back(&r);
    }
    std::sort(found.begin(), found.end(),
              [](const Result* a, const Result* b) { return a->row->records < b->row->records; });
    return found;
}

// Of one more record in a list, beside what the shortest list costs.
double record_ns(const Result& list, const Result& shortest, double Times::*side) {
    return (list.times.*side - shortest.times.*side) / (list.row->records - shortest.row->records);
}

Line growth_line(const std::vector<const Result*>& lists, double Times::*side, const char* who) {
    const double small = record_ns(*lists[1], *lists.front(), side);
    const double large = record_ns(*lists.back(), *lists.front(), side);
    return {lists.front()->row->series + ", " + who,
            std::to_string(lists[1]->row->records),
            duration(small),
            std::to_string(lists.back()->row->records),
            duration(large),
            format("%.2f", large / small)};
}

void add_growth(const std::vector<Result>& results, const std::string& series, std::vector<Line>& lines) {
    constexpr size_t kLists = 3;
    const auto lists = results_of(results, series);
    if (lists.size() != kLists) return;
    lines.push_back(growth_line(lists, &Times::library_ns, "library"));
    lines.push_back(growth_line(lists, &Times::floor_ns, "floor"));
}

std::vector<std::string> series_of(const std::vector<Result>& results) {
    std::vector<std::string> names;
    for (const Result& r : results) {
        const std::string& name = r.row->series;
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }
    return names;
}

}  // namespace

std::string table(const std::vector<Result>& results) {
    std::vector<Line> lines = {{"call", "floor", "library", "ratio", "95 %", "target", "calls", "stack",
                                "blocks", "bytes copied", "modules"}};
    for (const Result& result : results) lines.push_back(line(result));
    return aligned(lines);
}

std::string growth_table(const std::vector<Result>& results) {
    std::vector<Line> lines = {{"one more record", "list of", "costs", "list of", "costs", "growth"}};
    for (const std::string& series : series_of(results)) add_growth(results, series, lines);
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
    compare("operations of the stack", found.stack_calls, result.floor.stack_calls);
    compare("blocks", found.allocations, allowed.allocations);
    compare("bytes copied", found.bytes_copied, allowed.bytes_copied);
    compare("modules", found.modules, allowed.modules);
    return lines;
}

}  // namespace bench
