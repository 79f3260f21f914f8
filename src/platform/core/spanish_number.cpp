#include "platform/core/spanish_number.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

// The toolkit's Spanish writes 2250.000 where only 2250 goes without a point.
constexpr qsizetype groupLength = 3;
constexpr qsizetype longestUngrouped = 4;

} // namespace

QString spanishNumber(double value, int decimals)
{
    QString digits = QString::number(std::fabs(value), 'f', decimals);
    if (decimals > 0) {
        while (digits.endsWith(u'0'))
            digits.chop(1);
        if (digits.endsWith(u'.'))
            digits.chop(1);
    }
    const bool isNegative = value < 0 && digits != u"0"_s;
    const qsizetype point = digits.indexOf(u'.');
    const qsizetype whole = point < 0 ? digits.size() : point;
    digits.replace(u'.', u',');
    if (whole > longestUngrouped) {
        for (qsizetype place = whole - groupLength; place > 0; place -= groupLength)
            digits.insert(place, u'.');
    }
    return isNegative ? u'-' + digits : digits;
}

} // namespace platform
