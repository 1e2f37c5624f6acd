// What is measured: a call of the library beside its floor.
#pragma once

#include "call_census.h"
#include "paired_run.h"

#include <functional>
#include <string>
#include <vector>

namespace bench {

// What one call of the library may do at most; more is a defect.
struct Allowance {
    uint64_t platform_calls = 0;
    uint64_t allocations = 0;
    uint64_t bytes_copied = 0;
    uint64_t modules = 0;
};

struct Side {
    Body body;
    std::function<Counts()> count;  // of one call
};

// A body that calls functions of `module`.
inline Side calling(HMODULE module, const Body& body) {
    return {body, [module, body] {
                body(1);  // binds delayed imports
                const CallCensus census(module);
                body(1);
                return census.counts();
            }};
}

struct Row {
    std::string name;
    std::string floor_text;  // what the floor does
    double target = 0;       // highest ratio; 0: none
    Side floor;
    Side library;
    Allowance allowance;
    std::function<void()> prepare = [] {};              // the scene, before anything is called
    std::function<bool()> agree = [] { return true; };  // floor and library give the same answer
    std::string series = {};                            // rows that differ in the number of records only
    uint32_t records = 0;
};

struct Result {
    const Row* row = nullptr;
    Times times;
    Counts floor;
    Counts library;

    [[nodiscard]] bool met() const { return row->target == 0 || times.ratio.median <= row->target; }
};

}  // namespace bench
