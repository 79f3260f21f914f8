#include "platform/core/random_source.h"

#include <chrono>

namespace platform {

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
