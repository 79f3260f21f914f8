#pragma once

#include <cstdint>
#include <random>

namespace platform {

/// A uniform generator of numbers r with 0 <= r < 1. One seed gives one sequence, on every system.
class RandomSource
{
public:
    void seed(std::uint64_t value) { engine_.seed(value); }
    void seedFromClock();

    /// The next number, with the full 53 bits of a double.
    double next() { return static_cast<double>(engine_() >> 11) * 0x1.0p-53; }

private:
    std::mt19937_64 engine_;
};

/// The process-wide generator; `Main` seeds it once, from the clock.
RandomSource& randomSource();

} // namespace platform
