// The clock of all measurements, and what keeps the compiler from dropping a measured call.
#pragma once

#include <windows.h>

namespace bench {

class Stopwatch {
public:
    Stopwatch() : start_(ticks()) {}
    [[nodiscard]] double nanoseconds() const {
        return static_cast<double>(ticks() - start_) * 1e9 / static_cast<double>(frequency());
    }
    [[nodiscard]] double seconds() const { return nanoseconds() / 1e9; }

private:
    static LONGLONG ticks() {
        LARGE_INTEGER now;
        QueryPerformanceCounter(&now);
        return now.QuadPart;
    }
    static LONGLONG frequency() {
        static const LONGLONG value = [] {
            LARGE_INTEGER found;
            QueryPerformanceFrequency(&found);
            return found.QuadPart;
        }();
        return value;
    }

    LONGLONG start_;
};

// The value counts as used.
template <typename T>
void keep(const T& value) {
    asm volatile("" : : "g"(value) : "memory");
}

}  // namespace bench
