// The places of a map from a table, as it was written here and changed in a spreadsheet.
#include "exchange/csv_table.h"
#include "exchange/import_faults.h"
#include "exchange/map_import.h"
#include "platform/core/error.h"
#include "platform/core/text_file.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Where the columns are that a table needs, and may have.
struct Columns {
    explicit Columns(const QStringList& header)
    {
        const auto find = [&](const QString& name) {
            for (qsizetype i = 0; i < header.size(); ++i) {
                if (header[i].trimmed().compare(name, Qt::CaseInsensitive) == 0)
                    return i;
            }
            return qsizetype{-1};
        };
        nombre = find(u"nombre"_s);
        pin = find(u"pin"_s);
        columna = find(u"columna"_s);
        fila = find(u"fila"_s);
        notas = find(u"notas"_s);
    }

    QStringList missing() const
    {
        QStringList names;
        for (const auto& [place, name] :
             {std::pair(nombre, u"nombre"_s), std::pair(pin, u"pin"_s),
              std::pair(columna, u"columna"_s), std::pair(fila, u"fila"_s)}) {
            if (place < 0)
                names.append(name);
        }
        return names;
    }
    qsizetype last() const { return std::max({nombre, pin, columna, fila}); }

    qsizetype nombre;
    qsizetype pin;
    qsizetype columna;
    qsizetype fila;
    qsizetype notas;
};

void readRow(const CsvRow& row, const Columns& columns, ImportedPlaces& places,
             ImportFaults& faults)
{
    if (!row.isClosed)
        return faults.add(row.line, u"las comillas no se cierran"_s);
    if (row.fields.size() <= columns.last())
        return faults.add(row.line, u"hay %1 campos, menos que columnas"_s.arg(row.fields.size()));
    const auto number = [&](qsizetype column, const QString& what) {
        bool isNumber = false;
        const QString text = row.fields[column].trimmed();
        const int value = text.toInt(&isNumber);
        if (!isNumber)
            faults.add(row.line, u"%1 no es un número entero: «%2»"_s.arg(what, text.left(40)));
        return isNumber ? std::optional(value) : std::nullopt;
    };
    const std::optional<int> x = number(columns.columna, u"la columna"_s);
    const std::optional<int> y = number(columns.fila, u"la fila"_s);
    if (!x || !y)
        return;
    QString notes = columns.notas < 0 ? QString() : unguardedCell(row.fields.value(columns.notas));
    places.add(row.line, {*x, *y},
               {unguardedCell(row.fields[columns.pin]), unguardedCell(row.fields[columns.nombre]),
                notes.replace(u"\r\n"_s, u"\n"_s)});
}

} // namespace

Places readCsvPlaces(const QString& path, QSize map, const MapPictures& pictures)
{
    ImportFaults faults(path);
    const std::vector<CsvRow> rows = csvRows(platform::readTextFile(path).text);
    const Columns columns(rows.empty() ? QStringList() : rows.front().fields);
    if (const QStringList missing = columns.missing(); !missing.isEmpty())
        faults.add(1, u"faltan las columnas %1"_s.arg(missing.join(u", "_s)));
    faults.check();
    ImportedPlaces places(map, pictures, faults);
    for (std::size_t i = 1; i < rows.size(); ++i)
        readRow(rows[i], columns, places, faults);
    faults.check();
    return places.take();
}
