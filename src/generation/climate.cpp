#include "generation/climate.h"

#include "platform/core/error.h"

#include <QHash>
#include <cmath>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

int temperatureOf(const WorldMap& map, int row, int column, const Palette& tiles)
{
    const QString& tile = map.mapaTiles(row, column);
    if (const std::optional<int> modifier = numberField(tiles, tile, u"temperatura"_s))
        return *modifier;
    throw Error(
        ErrorNumber::NoSuchKey,
        u"El tile «%1» de la casilla X:%2 Y:%3 no tiene un modificador de temperatura."_s.arg(
            tile, QString::number(column), QString::number(row)));
}

} // namespace

QString climateReport(const WorldMap& map, const Palette& tiles, const QString& decimalPoint)
{
    const int span = map.latNorte - map.latSur;
    if (span == 0)
        throw Error(ErrorNumber::BadFormat,
                    u"El mapa no tiene latitudes distintas al norte y al sur, y sin ellas no hay "
                    "clima. Elíjalas en las propiedades del mapa."_s);
    // The latitudes are kept in single precision and added up row by row, which decides figures
    // that fall near a whole number.
    const float step = static_cast<float>(span) / static_cast<float>(map.alto);
    const QString lineEnd = u"\r\n"_s;
    QString text = QString::number(span) + lineEnd;
    text += QString::number(static_cast<double>(step), 'g', 7).replace(u'.', decimalPoint);
    text += lineEnd;
    auto latitude = static_cast<float>(map.latNorte);
    for (int row = 0; row < map.alto; ++row) {
        const double distance = std::fabs(static_cast<double>(latitude) - step);
        for (int column = 0; column < map.ancho; ++column) {
            const auto warmth =
                static_cast<float>(distance + temperatureOf(map, row, column, tiles));
            const auto figure =
                static_cast<float>(std::floor(static_cast<double>(warmth) * 100 / (span / 15.0)));
            text += QString::number(static_cast<qint64>(figure)) + u' ';
        }
        latitude -= step;
        text += lineEnd;
    }
    return text;
}
