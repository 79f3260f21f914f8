#pragma once

#include "exchange/map_formats.h"
#include "support.h"

/// The shipped definitions, and exports of maps that are made of them.
class ExportedMapTest : public testing::Test
{
protected:
    ExportedMapTest()
    {
        folder.addShippedData();
        loadDefinitions(tiles, pictures.colTiles, pictures.colMascarasTiles);
        loadDefinitions(pins, pictures.colPines, pictures.colMascarasPines);
    }

    /// Exports the map and returns the file's path.
    QString write(
        const QString& suffix, const ExportOptions& options = {},
        const Advance& advance = [](double) {})
    {
        ExportedMap exported(map, tiles, pins, pictures, options.isForPlayers);
        const QString path = folder.path(QStringLiteral("x.") + suffix);
        ExportFiles files(path);
        mapFormat(suffix)->write(files, exported, options, advance);
        EXPECT_TRUE(files.finish().isEmpty());
        return path;
    }

    TempAppFolder folder;
    Palette tiles{tilesKind()};
    Palette pins{pinesKind()};
    MapPictures pictures;
    WorldMap map;
};
