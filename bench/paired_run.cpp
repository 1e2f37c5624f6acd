#include "paired_run.h"

#include <algorithm>
#include <vector>

namespace bench {
namespace {

constexpr double kBatchNs = 500'000;  // 5,000 ticks of the clock
constexpr size_t kFewestPairs = 15;
constexpr size_t kMostPairs = 1001;

size_t calls_per_batch(const Body& floor, const Body& library) {
    size_t calls = 1;
    while (std::min(floor(calls), library(calls)) < kBatchNs) calls *= 2;
    return calls;
}

bool enough(size_t pairs, double seconds, const Effort& effort) {
    if (effort.samples != 0) return pairs >= effort.samples;
    return pairs >= kMostPairs || (pairs >= kFewestPairs && seconds >= effort.seconds);
}

}  // namespace

Times run_paired(const Body& floor, const Body& library, const Effort& effort) {
    Times times;
    times.calls = calls_per_batch(floor, library);
    const auto per_call = [&](const Body& body) {
        return body(times.calls) / static_cast<double>(times.calls);
    };
    std::vector<double> floors;
    std::vector<double> libraries;
    std::vector<double> ratios;
    const Stopwatch watch;
    while (!enough(ratios.size(), watch.seconds(), effort)) {
        const bool floor_first = ratios.size() % 2 == 0;  // whoever runs second finds warmer caches
        double of_floor = floor_first ? per_call(floor) : 0;
        const double of_library = per_call(library);
        if (!floor_first) of_floor = per_call(floor);
        floors.push_back(of_floor);
        libraries.push_back(of_library);
        ratios.push_back(of_library / of_floor);
    }
    times.pairs = ratios.size();
    times.floor_ns = median(floors);
    times.library_ns = median(libraries);
    times.ratio = estimate_median(ratios);
    return times;
}

}  // namespace bench
