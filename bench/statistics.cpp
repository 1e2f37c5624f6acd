// Catch2's statistics. The only file that includes its header, which takes half a minute to compile.
#include "statistics.h"

#define CATCH_CONFIG_RUNNER
#define CATCH_CONFIG_ENABLE_BENCHMARKING
#define CATCH_CONFIG_NO_POSIX_SIGNALS
#define CATCH_CONFIG_NO_WINDOWS_SEH
#include <catch2/catch.hpp>

namespace bench {
namespace {

constexpr double kConfidence = 0.95;
constexpr int kResamples = 2000;

double middle(std::vector<double>::iterator first, std::vector<double>::iterator last) {
    return Catch::Benchmark::Detail::weighted_average_quantile(1, 2, first, last);
}

}  // namespace

double median(std::vector<double> samples) { return middle(samples.begin(), samples.end()); }

Estimate estimate_median(std::vector<double> samples) {
    std::mt19937 generator(1);  // the same samples give the same interval
    std::vector<double> medians =
        Catch::Benchmark::Detail::resample(generator, kResamples, samples.begin(), samples.end(), middle);
    const auto at = [&](double share) {
        return medians[static_cast<size_t>(share * static_cast<double>(medians.size() - 1))];
    };
    return {median(samples), at((1 - kConfidence) / 2), at((1 + kConfidence) / 2)};
}

}  // namespace bench
