// Times two bodies against each other: batches alternate, and each pair of neighbours gives one ratio,
// so that what else the machine does falls on both.
#pragma once

#include "statistics.h"
#include "stopwatch.h"

#include <stddef.h>

#include <functional>

namespace bench {

// Runs `calls` times and gives the nanoseconds that all of them took.
using Body = std::function<double(size_t calls)>;

template <typename Call>
Body timed(Call call) {
    return [call](size_t calls) mutable {
        const Stopwatch watch;
        for (size_t made = 0; made < calls; ++made) call();
        return watch.nanoseconds();
    };
}

struct Effort {
    double seconds = 2;  // per row
    size_t samples = 0;  // pairs per row; 0: as many as the time allows
};

struct Times {
    double floor_ns = 0;    // median of one call
    double library_ns = 0;  // median of one call
    Estimate ratio;         // of the ratios of all pairs
    size_t pairs = 0;
    size_t calls = 0;  // per batch
};

Times run_paired(const Body& floor, const Body& library, const Effort& effort);

}  // namespace bench
