#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform {

/// The numbers of std::mt19937_64, in a third of its time: a step that depends on a random bit is
/// reckoned here, where the library branches on it.
class MersenneTwister
{
public:
    explicit MersenneTwister(std::uint64_t value = 5489) { seed(value); }
    void seed(std::uint64_t value);

    std::uint64_t next()
    {
        if (used_ == state_.size())
            twist();
        std::uint64_t y = state_[used_++];
        y ^= (y >> 29) & 0x5555555555555555;
        y ^= (y << 17) & 0x71D67FFFEDA60000;
        y ^= (y << 37) & 0xFFF7EEE000000000;
        return y ^ (y >> 43);
    }

private:
    void twist();

    std::array<std::uint64_t, 312> state_{};
    std::size_t used_ = 0; ///< numbers of the state that have been given out
};

/// A uniform generator of numbers r with 0 <= r < 1. One seed gives one sequence, on every system.
class RandomSource
{
public:
    void seed(std::uint64_t value) { engine_.seed(value); }
    void seedFromClock();

    /// The next number, with the full 53 bits of a double.
    double next() { return static_cast<double>(engine_.next() >> 11) * 0x1.0p-53; }

private:
    MersenneTwister engine_;
};

/// The process-wide generator; `Main` seeds it once, from the clock.
RandomSource& randomSource();

} // namespace platform
