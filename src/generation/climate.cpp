#include "generation/climate.h"

#include "platform/core/error.h"
#include "worldmap/name_cache.h"

#include <cmath>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

Error withoutTemperature(const QString& tile, int row, int column)
{
    return Error(
        ErrorNumber::NoSuchKey,
        u"El tile «%1» de la casilla X:%2 Y:%3 no tiene un modificador de temperatura."_s.arg(
            tile, QString::number(column), QString::number(row)));
}

} // namespace

Climate climateOf(const WorldMap& map, const Palette& tiles)
{
    const int span = map.latNorte - map.latSur;
    if (span == 0)
        throw Error(ErrorNumber::BadFormat,
                    u"El mapa no tiene latitudes distintas al norte y al sur, y sin ellas no hay "
                    "clima. Elíjalas en las propiedades del mapa."_s);
    // The latitudes are kept in single precision and added up row by row, which decides figures
    // that fall near a whole number.
    const float step = static_cast<float>(span) / static_cast<float>(map.alto());
    Climate climate{span, step, CellFigures(map.alto(), map.ancho())};
    NameCache<std::optional<int>> modifiers;
    const auto lookUp = [&](const QString& tile) {
        return numberField(tiles, tile, u"temperatura"_s);
    };
    auto latitude = static_cast<float>(map.latNorte);
    for (int row = 0; row < map.alto(); ++row) {
        const double distance = std::fabs(static_cast<double>(latitude) - step);
        for (int column = 0; column < map.ancho(); ++column) {
            const QString& tile = map.mapaTiles(row, column);
            const std::optional<int> modifier = modifiers.find(tile, lookUp);
            if (!modifier)
                throw withoutTemperature(tile, row, column);
            const auto warmth = static_cast<float>(distance + *modifier);
            climate.figures(row, column) =
                static_cast<float>(std::floor(static_cast<double>(warmth) * 100 / (span / 15.0)));
        }
        latitude -= step;
    }
    return climate;
}

QString climateReport(const Climate& climate, const QString& decimalPoint)
{
    const QString lineEnd = u"\r\n"_s;
    QString text = QString::number(climate.span) + lineEnd;
    text += QString::number(static_cast<double>(climate.step), 'g', 7).replace(u'.', decimalPoint);
    text += lineEnd;
    const CellFigures& figures = climate.figures;
    for (int row = 0; row < figures.rows(); ++row) {
        for (int column = 0; column < figures.columns(); ++column)
            text += QString::number(static_cast<qint64>(*figures(row, column))) + u' ';
        text += lineEnd;
    }
    return text;
}

QString climateReport(const WorldMap& map, const Palette& tiles, const QString& decimalPoint)
{
    return climateReport(climateOf(map, tiles), decimalPoint);
}

CellColours climateColours(const Climate& climate)
{
    // High figures are cold ones, and dark blue looks colder than yellow.
    return cellColours(climate.figures, u"Clima (cifra alta: frío)"_s, 0, LightEnd::Lowest);
}
