#include "platform/core/random_source.h"

#include <chrono>

namespace platform {

void MersenneTwister::seed(std::uint64_t value)
{
    state_[0] = value;
    for (std::size_t i = 1; i < state_.size(); ++i) {
        const std::uint64_t before = state_[i - 1];
        state_[i] = 6364136223846793005 * (before ^ (before >> 62)) + i;
    }
    used_ = state_.size();
}

void MersenneTwister::twist()
{
    constexpr std::uint64_t lower = 0x7FFFFFFF;
    constexpr std::uint64_t ifOdd = 0xB5026F5AA96619E9;
    constexpr std::size_t shift = 156;
    const std::size_t size = state_.size();
    const auto step = [&](std::size_t at, std::size_t next, std::size_t other) {
        const std::uint64_t y = (state_[at] & ~lower) | (state_[next] & lower);
        state_[at] = state_[other] ^ (y >> 1) ^ ((0 - (y & 1)) & ifOdd);
    };
    for (std::size_t i = 0; i < size - shift; ++i)
        step(i, i + 1, i + shift);
    for (std::size_t i = size - shift; i < size - 1; ++i)
        step(i, i + 1, i - (size - shift));
    step(size - 1, 0, shift - 1);
    used_ = 0;
}

void RandomSource::seedFromClock()
{
    seed(static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
}

RandomSource& randomSource()
{
    static RandomSource source;
    return source;
}

} // namespace platform
