#include "worldmap/map_scale.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

std::optional<double> kilometresPerCell(const QString& notes)
{
    static const QRegularExpression form(
        uR"(^\h*escala\h*[:=]?\h*(\d{1,6}(?:[.,]\d{1,6})?)\h*(km|kil[óo]metros?|m|metros?)(?![\w²]))"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption |
            QRegularExpression::UseUnicodePropertiesOption);
    auto matches = form.globalMatch(notes);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const double number = match.captured(1).replace(u',', u'.').toDouble();
        constexpr double metres = 1000;
        if (number > 0)
            return match.captured(2).startsWith(u'k', Qt::CaseInsensitive) ? number
                                                                           : number / metres;
    }
    return std::nullopt;
}
