// The places of a map as a table for spreadsheets.
#include "exchange/csv_table.h"
#include "exchange/map_formats.h"
#include "mapview/cell_numbers.h"
#include "platform/core/text_codec.h"

using namespace Qt::StringLiterals;

void writeCsv(ExportFiles& files, ExportedMap& exported, const ExportOptions& /*options*/,
              const Advance& advance)
{
    const WorldMap& map = exported.map();
    QString text = csvLine({u"nombre"_s, u"pin"_s, u"terreno"_s, u"columna"_s, u"fila"_s,
                            u"coordenada"_s, u"notas"_s});
    for (const auto& [cell, place] : map.mapaPines)
        text += csvLine({guardedCell(place.name), guardedCell(place.pin),
                         guardedCell(map.tileAt(cell)), QString::number(cell.x()),
                         QString::number(cell.y()), cellNumber(cell), guardedCell(place.notes)});
    advance(0.5);
    files.main().write(platform::utf8Text(text));
}
