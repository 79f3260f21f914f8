#pragma once

#include "platform/core/text_file.h"
#include "worldmap/definitions.h"
#include "worldmap/world_map.h"

#include <QByteArray>
#include <functional>
#include <optional>

/// Whether a definition of that name exists.
using IsDefined = std::function<bool(const QString& name)>;

/// Reads a map file. Everything in it is checked: six lines, sizes within what can be drawn, one
/// defined (or no) tile for each cell, places inside the map, each with a defined pin and a name of
/// its own. Throws Error whose text names file, line and reason.
WorldMap readMapFile(const QString& path, const IsDefined& isTile, const IsDefined& isPin,
                     const platform::OnFault& onFault = platform::giveUp);

/// As readMapFile, from a file that was read.
WorldMap parseMap(const platform::TextFile& file, const IsDefined& isTile, const IsDefined& isPin,
                  const platform::OnFault& onFault = platform::giveUp);

/// Reads a map whose every tile and pin has a picture among these; as parseMap does.
WorldMap readDrawableMap(const platform::TextFile& file, const MapPictures& pictures,
                         const platform::OnFault& onFault = platform::giveUp);

/// Writes the map to its own file, AppFolder\mapas\NAME.map, as platform::saveFile does; returns
/// what the user is to be told. Throws Error when the name can't be a file's, a text can't be
/// stored, or writing fails; an old file is whole.
platform::Saved saveMapFile(const WorldMap& map, platform::KnownFile& known);
/// The same for a map that has no file yet, as far as is known.
inline platform::Saved saveMapFile(const WorldMap& map)
{
    platform::KnownFile none;
    return saveMapFile(map, none);
}
/// The bytes of a map's file. Throws Error as saveMapFile does, but for writing.
QByteArray mapFileBytes(const WorldMap& map);

/// The text of a map's file. Throws Error (BadCharacter) for a text that would break its lines or
/// fields.
QString mapText(const WorldMap& map);

/// The same without the checks: what is lost with the program otherwise is better kept in a text
/// that can't be read whole.
QString mapDraft(const WorldMap& map);

/// The path of the file of a map of that name.
QString mapFilePath(const QString& mapName);
/// The path that unsaved versions of a map are kept under: of its file, or of one as near as can
/// be.
QString draftPath(const QString& mapName);

/// Why a map can't have that size, as a Spanish sentence; nothing if it can.
std::optional<QString> mapSizeProblem(int alto, int ancho);

/// Why a map can't have that name, as a Spanish sentence; nothing if it can.
std::optional<QString> mapNameProblem(const QString& name);

/// A made-up name as the nearest one that a map, or a place, can have.
QString asMapName(const QString& name);
QString asPlaceName(const QString& name);

/// How many cells a map can have.
inline constexpr int maxMapCells = 4'000'000;
