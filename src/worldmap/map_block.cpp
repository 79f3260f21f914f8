#include "worldmap/map_block.h"

#include "platform/core/text_codec.h"
#include "platform/core/text_file.h"
#include "worldmap/map_file.h"

#include <QSet>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

// The first line of a piece's text; the rest is as in map files.
const QString mark = u"Kestrune, casillas de mapa"_s;
const QString version = u" 1"_s;

/// A text that map files can hold. Throws Error (BadCharacter) when it isn't one; `complaint` says
/// what can't be done, with "%1" for the reason.
QString storable(const QString& text, const QString& complaint)
{
    try {
        platform::encodeText(text);
    } catch (const Error& error) {
        throw Error(error.number, complaint.arg(error.description));
    }
    return text;
}

} // namespace

WorldMap cutOut(const WorldMap& map, const QRect& cells)
{
    const QRect cut = cells & QRect(0, 0, map.ancho(), map.alto());
    const QPoint corner(cut.left() - cut.left() % 2, cut.top());
    WorldMap block;
    block.nombre = mark + version;
    block.mapaTiles = platform::Grid<QString>(cut.height(), cut.right() + 1 - corner.x());
    for (int y = cut.top(); y <= cut.bottom(); ++y) {
        for (int x = cut.left(); x <= cut.right(); ++x)
            block.mapaTiles(y - corner.y(), x - corner.x()) = map.mapaTiles(y, x);
    }
    for (const auto& [cell, place] : map.mapaPines) {
        if (cut.contains(cell))
            block.mapaPines.emplace(cell - corner, place);
    }
    return block;
}

QRect contentOf(const WorldMap& block)
{
    bool isBare = block.ancho() > 1;
    for (int y = 0; y < block.alto(); ++y)
        isBare = isBare && block.mapaTiles(y, 0).isEmpty() && !block.placeAt({0, y});
    return {QPoint(isBare ? 1 : 0, 0), QPoint(block.ancho() - 1, block.alto() - 1)};
}

QString blockText(const WorldMap& block)
{
    return storable(mapText(block), u"No se pueden copiar las casillas: %1."_s);
}

WorldMap readBlock(const QString& text, const MapPictures& pictures)
{
    if (!text.startsWith(mark))
        throw Error(ErrorNumber::BadFormat,
                    u"El portapapeles no contiene casillas de un mapa. Elija unas, cópielas y "
                    "péguelas después."_s);
    if (text.size() > platform::maxTextFileBytes)
        throw Error(ErrorNumber::TooLarge,
                    u"El portapapeles contiene más casillas de las que caben en un mapa."_s);
    const platform::TextFile clipboard{u"El portapapeles"_s, platform::splitLines(text)};
    if (clipboard.lines.front() != mark + version)
        throw Error(ErrorNumber::BadFormat,
                    u"Las casillas del portapapeles son de otra versión del programa."_s);
    WorldMap block = readDrawableMap(clipboard, pictures);
    storable(text, u"No se puede pegar el texto del portapapeles: %1."_s);
    return block;
}

MapChange pasteBlock(const WorldMap& map, const WorldMap& block, QPoint corner)
{
    MapChange change;
    for (int y = 0; y < block.alto(); ++y) {
        for (int x = 0; x < block.ancho(); ++x) {
            const QPoint cell = corner + QPoint(x, y);
            if (const QString& tile = block.mapaTiles(y, x); !tile.isEmpty() && map.contains(cell))
                change.setTile(cell, tile);
        }
    }
    QSet<QString> taken;
    for (const auto& [cell, place] : map.mapaPines) {
        if (!block.placeAt(cell - corner)) // or it will give way
            taken.insert(place.name);
    }
    for (const auto& [cell, place] : block.mapaPines) {
        if (!map.contains(cell + corner))
            continue;
        Place pasted = place;
        pasted.name =
            freeName(place.name, [&](const QString& name) { return taken.contains(name); });
        taken.insert(pasted.name);
        change.setPlace(cell + corner, pasted);
    }
    return change;
}
