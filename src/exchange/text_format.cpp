// A line for each cell, for mappers that work with text.
#include "exchange/map_formats.h"
#include "mapview/cell_numbers.h"

using namespace Qt::StringLiterals;

namespace {

/// A terrain as one word.
QString terrainWord(const QString& tile)
{
    return tile.isEmpty() ? u"vacía"_s : QString(tile).replace(u' ', u'_');
}

} // namespace

void writeText(ExportFiles& files, ExportedMap& exported, const ExportOptions& /*options*/,
               const Advance& advance)
{
    const WorldMap& map = exported.map();
    QIODevice& file = files.main();
    for (int row = 0; row < map.alto(); ++row) {
        advance(static_cast<double>(row) / map.alto());
        QString lines;
        for (int column = 0; column < map.ancho(); ++column) {
            const QPoint cell(column, row);
            lines += cellNumber(cell) + u' ' + terrainWord(map.tileAt(cell));
            if (const Place* const place = map.placeAt(cell))
                lines += u" \""_s + QString(place->name).replace(u'"', u'\'') + u'"';
            lines += u'\n';
        }
        file.write(lines.toUtf8());
    }
}
