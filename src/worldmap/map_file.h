#pragma once

#include "worldmap/world_map.h"

#include <QByteArray>
#include <functional>
#include <optional>

/// Whether a definition of that name exists.
using IsDefined = std::function<bool(const QString& name)>;

/// Reads a map file. Everything in it is checked: six lines, sizes within what can be drawn, one
/// defined (or no) tile for each cell, places inside the map, each with a defined pin and a name of
/// its own. Throws Error whose text names file, line and reason.
WorldMap readMapFile(const QString& path, const IsDefined& isTile, const IsDefined& isPin);

/// Writes the map to its file, AppFolder\mapas\NAME.map, replacing one that is there. Throws Error
/// when the name can't be a file's, a text can't be stored, or writing fails; an old file is whole.
void writeMapFile(const WorldMap& map);

/// The path of the file of a map of that name.
QString mapFilePath(const QString& mapName);

/// Why a map can't have that name, as a Spanish sentence; nothing if it can.
std::optional<QString> mapNameProblem(const QString& name);

/// The largest back buffer that a map may need, in bytes.
inline constexpr qint64 maxBufferBytes = qint64{512} * 1024 * 1024;
