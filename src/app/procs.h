#pragma once

#include "platform/core/error.h"

#include <QString>
#include <cstdint>

/// The shared procedures that need no window.
namespace Procs {

/// A random whole number n with lo <= n <= hi, every value equally likely. Callers give lo <= hi.
std::int32_t RandomInRange(std::int32_t lo, std::int32_t hi);
/// The number that RandomInRange makes of a draw r with 0 <= r < 1.
inline std::int32_t inRange(std::int32_t lo, std::int32_t hi, double draw)
{
    // In floating point: hi - lo + 1 may not fit 32 bits. The bound is added after rounding down:
    // added before, it could round up to hi + 1.
    const double span = static_cast<double>(hi) - lo + 1;
    return static_cast<std::int32_t>(lo + static_cast<std::int64_t>(span * draw));
}

/// The quotient rounded to the nearest whole number, halves to the even one. The divisor is above
/// 0.
constexpr int roundedQuotient(int dividend, int divisor)
{
    const int floor = dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
    const int twiceRest = 2 * (dividend - floor * divisor);
    const bool up = twiceRest > divisor || (twiceRest == divisor && floor % 2 != 0);
    return floor + (up ? 1 : 0);
}

/// The text of an error report: number, description, and the procedure that trapped the error with
/// its owner ("Módulo Procs", or "Formulario " and the window's name).
QString errorReport(const platform::Error& error, const QString& procedure, const QString& owner);

} // namespace Procs
