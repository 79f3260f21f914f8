#pragma once

#include <QString>

namespace platform {

/// A number as Spanish texts write it, rounded to at most that many decimals: "34.600", "2380",
/// "12,5".
QString spanishNumber(double value, int decimals = 0);

} // namespace platform
