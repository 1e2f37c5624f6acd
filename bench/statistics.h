// Robust statistics over few samples.
#pragma once

#include <vector>

namespace bench {

// The median, and where it lies with 95 % confidence.
struct Estimate {
    double median = 0;
    double low = 0;
    double high = 0;
};

double median(std::vector<double> samples);
Estimate estimate_median(std::vector<double> samples);

}  // namespace bench
