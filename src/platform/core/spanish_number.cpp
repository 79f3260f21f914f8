#include "platform/core/spanish_number.h"

#include <QLocale>
#include <cmath>

namespace platform {

QString spanishNumber(double value, int decimals)
{
    const QLocale spanish(QLocale::Spanish, QLocale::Spain);
    const double power = std::pow(10, decimals);
    int needed = decimals;
    for (double rounded = std::round(value * power); needed > 0 && std::fmod(rounded, 10) == 0;
         rounded /= 10)
        --needed;
    return spanish.toString(value, 'f', needed);
}

} // namespace platform
