#include "app/procs.h"

#include "platform/core/random_source.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace Procs {

std::int32_t RandomInRange(std::int32_t lo, std::int32_t hi)
{
    // In floating point throughout: hi - lo + 1 may not fit 32 bits.
    const double span = static_cast<double>(hi) - lo + 1;
    // The bound is added after rounding down: added before, it could round up to hi + 1.
    return static_cast<std::int32_t>(lo + std::floor(span * platform::randomSource().next()));
}

QString errorReport(const platform::Error& error, const QString& procedure, const QString& owner)
{
    return u"Error %1 (%2) in procedure %3 of %4"_s.arg(
        QString::number(static_cast<int>(error.number)), error.description, procedure, owner);
}

} // namespace Procs
