#include "worldmap/map_file.h"

#include "platform/core/app_folder.h"
#include "platform/core/spanish_number.h"
#include "platform/core/text_codec.h"
#include "platform/core/text_file.h"
#include "worldmap/hex_geometry.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <array>
#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;
using platform::notesFromFile;
using platform::notesToFile;
using platform::OnFault;
using platform::TextFile;

namespace {

// The six lines of a map file, counted from 0.
enum Line : std::size_t { NameLine, SizeLine, LatitudeLine, NotesLine, TilesLine, PlacesLine };
constexpr std::size_t lineCount = 6;

constexpr char16_t fieldSeparator = u';';
constexpr char16_t placeEnd = u'|';

constexpr qsizetype maxFileNameLength = 120;

/// Whether some system forbids the character in file names, or the map file itself does.
bool isForbiddenInNames(QChar c)
{
    return u"\\/:*?\"<>|;"_s.contains(c);
}

/// Runs a step of reading; an Error of it goes to onFault. Returns whether there was none.
template <typename Step>
bool attempt(const OnFault& onFault, const Step& step)
{
    try {
        step();
        return true;
    } catch (const Error& fault) {
        onFault(fault);
        return false;
    }
}

int parseNumber(const TextFile& file, std::size_t line, QStringView text, const QString& what)
{
    bool isNumber = false;
    const int value = text.toShort(&isNumber);
    if (!isNumber)
        throw file.errorAt(line, u"%1 no es un número entero entre -32768 y 32767: "
                                 "«%2»"_s.arg(what, text.left(40)));
    return value;
}

/// Two numbers joined by ";".
std::pair<int, int> parsePair(const TextFile& file, std::size_t line, const QString& first,
                              const QString& second)
{
    const QStringList fields = file.lines[line].split(fieldSeparator);
    if (fields.size() != 2)
        throw file.errorAt(line, u"se esperaban dos números separados por «;» (%1 y "
                                 "%2); número de campos: %3"_s.arg(first, second)
                                     .arg(fields.size()));
    return {parseNumber(file, line, fields[0], first), parseNumber(file, line, fields[1], second)};
}

void checkSize(const TextFile& file, int alto, int ancho)
{
    if (const std::optional<QString> problem = mapSizeProblem(alto, ancho))
        throw file.errorAt(SizeLine, *problem,
                           alto < 1 || ancho < 1 ? ErrorNumber::BadFormat : ErrorNumber::TooLarge);
}

void parseTiles(const TextFile& file, WorldMap& map, const IsDefined& isTile,
                const OnFault& onFault)
{
    const QString& line = file.lines[TilesLine];
    const qsizetype wanted = qsizetype{map.ancho()} * map.alto();
    const qsizetype found = line.count(fieldSeparator);
    if (found != wanted || !line.endsWith(fieldSeparator))
        throw file.errorAt(TilesLine, u"hay %1 casillas terminadas en «;» y el mapa, de %2 × "
                                      "%3, tiene %4"_s.arg(found)
                                          .arg(map.alto())
                                          .arg(map.ancho())
                                          .arg(wanted));
    QSet<QString> known; // also makes all cells of one tile share one text
    qsizetype start = 0;
    qsizetype cell = 0;
    for (QString& tile : map.mapaTiles) {
        const qsizetype end = line.indexOf(fieldSeparator, start);
        tile = line.sliced(start, end - start);
        start = end + 1;
        auto shared = known.constFind(tile);
        if (shared == known.constEnd()) {
            if (!tile.isEmpty() && !isTile(tile))
                onFault(file.errorAt(
                    TilesLine,
                    u"el tile «%1» de la casilla X:%2 Y:%3 no está definido o no tiene imagen"_s
                        .arg(tile.left(40), QString::number(cell % map.ancho()),
                             QString::number(cell / map.ancho()))));
            shared = known.insert(tile);
        }
        tile = *shared;
        ++cell;
    }
}

void parsePlace(const TextFile& file, WorldMap& map, const QString& text, const IsDefined& isPin,
                QSet<QString>& names)
{
    const auto fail = [&](const QString& reason) {
        return file.errorAt(PlacesLine, u"el lugar «%1» %2"_s.arg(text.left(60), reason));
    };
    const QStringList fields = text.split(fieldSeparator);
    if (fields.size() != 5)
        throw fail(u"no tiene 5 campos, sino %1 (fila, columna, pin, nombre y "
                   "notas)"_s.arg(fields.size()));
    const int row = parseNumber(file, PlacesLine, fields[0], u"la fila de un lugar"_s);
    const int column = parseNumber(file, PlacesLine, fields[1], u"la columna de un lugar"_s);
    const Place place{fields[2], fields[3], notesFromFile(fields[4])};
    const QPoint cell(column, row);
    if (!map.contains(cell))
        throw fail(u"está fuera del mapa"_s);
    if (map.placeAt(cell))
        throw fail(u"cae en una casilla que ya tiene un lugar"_s);
    if (!isPin(place.pin))
        throw fail(
            u"usa el pin «%1», que no está definido o no tiene imagen"_s.arg(place.pin.left(40)));
    if (place.name.isEmpty())
        throw fail(u"no tiene nombre"_s);
    if (names.contains(place.name))
        throw fail(u"repite el nombre de otro lugar"_s);
    names.insert(place.name);
    map.mapaPines.emplace(cell, place);
}

void parsePlaces(const TextFile& file, WorldMap& map, const IsDefined& isPin,
                 const OnFault& onFault)
{
    QStringList places = file.lines[PlacesLine].split(placeEnd);
    if (!places.takeLast().isEmpty())
        throw file.errorAt(PlacesLine, u"falta «|» detrás del último lugar"_s);
    QSet<QString> names;
    for (const QString& place : places)
        attempt(onFault, [&] { parsePlace(file, map, place, isPin, names); });
}

/// A text of the document, as it is to be written. Throws Error when it would break the format.
QString storable(const QString& text, const QString& what)
{
    const auto isForbidden = [](QChar c) {
        return c == fieldSeparator || c == placeEnd || c == u'\n' || c == u'\r';
    };
    const auto* const bad = std::find_if(text.begin(), text.end(), isForbidden);
    if (bad == text.end())
        return text;
    const QString name = bad->isPrint() ? u"el carácter «%1»"_s.arg(*bad) : u"un salto de línea"_s;
    throw Error(ErrorNumber::BadCharacter, u"%1 no puede formar parte %2"_s.arg(name, what));
}

/// The text of a map's file, its texts as storable(text, what it is) has them.
template <typename Storable>
QString layOut(const WorldMap& map, const Storable& storable)
{
    const QString lineEnd = u"\r\n"_s;
    QString text = storable(map.nombre, u"de un nombre de mapa"_s) + lineEnd;
    text += u"%1;%2"_s.arg(map.alto()).arg(map.ancho()) + lineEnd;
    text += u"%1;%2"_s.arg(map.latNorte).arg(map.latSur) + lineEnd;
    text += storable(notesToFile(map.notasMapa), u"de las notas del mapa"_s) + lineEnd;
    for (const QString& tile : map.mapaTiles)
        text += tile + fieldSeparator;
    text += lineEnd;
    for (const auto& [cell, place] : map.mapaPines)
        text += u"%1;%2;"_s.arg(cell.y()).arg(cell.x()) +
                storable(place.pin, u"del nombre de un pin"_s) + fieldSeparator +
                storable(place.name, u"del nombre de un lugar"_s) + fieldSeparator +
                storable(notesToFile(place.notes), u"de las notas de un lugar"_s) + placeEnd;
    return text + lineEnd;
}

/// Throws Error when the bytes of a map's file would not be read as the map that they are of.
void checkReadsBack(const WorldMap& map, const QString& path, const QByteArray& bytes)
{
    const auto anyName = [](const QString&) { return true; };
    QString reason = u"se leería otra cosa."_s;
    try {
        if (mapFileBytes(parseMap(platform::textFileOf(path, bytes), anyName, anyName)) == bytes)
            return;
    } catch (const Error& error) {
        reason = error.description;
    }
    throw Error(ErrorNumber::BadFormat,
                u"No se puede guardar el mapa «%1», porque no se podría volver a leer: %2"_s.arg(
                    map.nombre, reason));
}

} // namespace

WorldMap readMapFile(const QString& path, const IsDefined& isTile, const IsDefined& isPin,
                     const OnFault& onFault)
{
    return parseMap(platform::readTextFile(path), isTile, isPin, onFault);
}

WorldMap parseMap(const TextFile& file, const IsDefined& isTile, const IsDefined& isPin,
                  const OnFault& onFault)
{
    WorldMap map;
    if (file.lines.size() != lineCount) {
        onFault(file.errorAt(
            std::min(file.lines.size(), lineCount),
            u"un mapa tiene seis líneas y este archivo tiene %1"_s.arg(file.lines.size())));
        return map;
    }
    map.nombre = file.lines[NameLine];
    const bool hasSize = attempt(onFault, [&] {
        const auto [alto, ancho] = parsePair(file, SizeLine, u"el alto"_s, u"el ancho"_s);
        checkSize(file, alto, ancho);
        map.mapaTiles = platform::Grid<QString>(alto, ancho);
    });
    attempt(onFault, [&] {
        std::tie(map.latNorte, map.latSur) =
            parsePair(file, LatitudeLine, u"la latitud norte"_s, u"la latitud sur"_s);
    });
    map.notasMapa = notesFromFile(file.lines[NotesLine]);
    if (hasSize) {
        attempt(onFault, [&] { parseTiles(file, map, isTile, onFault); });
        attempt(onFault, [&] { parsePlaces(file, map, isPin, onFault); });
    }
    return map;
}

WorldMap readDrawableMap(const TextFile& file, const MapPictures& pictures, const OnFault& onFault)
{
    return parseMap(
        file, [&](const QString& name) { return pictures.colTiles.contains(name); },
        [&](const QString& name) { return pictures.colPines.contains(name); }, onFault);
}

platform::Saved saveMapFile(const WorldMap& map, platform::KnownFile& known)
{
    const QByteArray bytes = mapFileBytes(map); // judges the name before any folder is made
    const QString path = mapFilePath(map.nombre);
    checkReadsBack(map, path, bytes);
    QDir().mkpath(QFileInfo(path).path());
    return platform::saveFile(path, bytes, known);
}

QByteArray mapFileBytes(const WorldMap& map)
{
    const auto fail = [&](ErrorNumber number, const QString& reason) {
        return Error(number, u"No se puede guardar el mapa «%1»: %2."_s.arg(map.nombre, reason));
    };
    if (const std::optional<QString> problem = mapNameProblem(map.nombre))
        throw fail(ErrorNumber::BadName, *problem);
    try {
        return platform::encodeText(mapText(map));
    } catch (const Error& error) {
        throw fail(error.number, error.description);
    }
}

QString mapText(const WorldMap& map)
{
    return layOut(map, storable);
}

QString mapDraft(const WorldMap& map)
{
    return layOut(map, [](const QString& text, const QString& /*what*/) { return text; });
}

QString mapFilePath(const QString& mapName)
{
    // Not through inAppFolder: maps whose names differ in letter case are different maps.
    return platform::inAppFolder(u"mapas"_s) + u'/' + mapName + u".map"_s;
}

QString draftPath(const QString& mapName)
{
    return mapFilePath(mapName.isEmpty() ? u"(sin nombre)"_s : asMapName(mapName));
}

QString asPlaceName(const QString& name)
{
    QString clean = name;
    for (QChar& c : clean)
        c = platform::withoutSeparator(c, platform::mapSeparators);
    return clean;
}

QString asMapName(const QString& name)
{
    QString clean = name;
    for (QChar& c : clean) {
        if (isForbiddenInNames(c) || c.category() == QChar::Other_Control)
            c = u' ';
    }
    clean = clean.simplified().left(maxFileNameLength);
    while (clean.startsWith(u'.') || clean.startsWith(u' '))
        clean.remove(0, 1);
    while (clean.endsWith(u'.') || clean.endsWith(u' '))
        clean.chop(1);
    if (clean.isEmpty())
        return u"Mapa"_s;
    return mapNameProblem(clean) ? u"Mapa "_s + clean : clean;
}

std::optional<QString> mapSizeProblem(int alto, int ancho)
{
    constexpr int longestSide = std::numeric_limits<qint16>::max();
    if (ancho < 1 || alto < 1 || ancho > longestSide || alto > longestSide)
        return u"un mapa de %1 filas y %2 columnas no es posible"_s.arg(alto).arg(ancho);
    if (qint64{ancho} * alto > maxMapCells)
        return u"el mapa es demasiado grande (%1 filas y %2 columnas): caben, a lo sumo, %3 casillas"_s
            .arg(alto)
            .arg(ancho)
            .arg(platform::spanishNumber(maxMapCells));
    return {};
}

std::optional<QString> mapNameProblem(const QString& name)
{
    constexpr std::array<QStringView, 4> devices{u"CON", u"PRN", u"AUX", u"NUL"};
    for (const QChar c : name) {
        if (isForbiddenInNames(c))
            return u"el nombre no puede contener «%1»"_s.arg(c);
        if (c.category() == QChar::Other_Control)
            return u"el nombre contiene un carácter de control o un salto de línea"_s;
    }
    if (const std::optional<QString> outside = platform::firstOutsideWindows1252(name))
        return u"el nombre contiene «%1», que no se puede guardar"_s.arg(*outside);
    if (name.trimmed().isEmpty())
        return u"el nombre está vacío"_s;
    if (name.startsWith(u' ') || name.endsWith(u' ') || name.startsWith(u'.') ||
        name.endsWith(u'.'))
        return u"el nombre no puede empezar ni acabar en espacio o punto"_s;
    if (name.size() > maxFileNameLength)
        return u"el nombre tiene más de %1 letras"_s.arg(maxFileNameLength);
    const QString stem = name.section(u'.', 0, 0).toUpper();
    const bool port = stem.size() == 4 && stem[3].isDigit() &&
                      (stem.startsWith("COM"_L1) || stem.startsWith("LPT"_L1));
    if (std::find(devices.begin(), devices.end(), QStringView(stem)) != devices.end() || port)
        return u"«%1» es un nombre reservado en algunos sistemas"_s.arg(name);
    return std::nullopt;
}
