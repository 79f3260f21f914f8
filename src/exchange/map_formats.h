#pragma once

#include "exchange/export_files.h"
#include "exchange/exported_map.h"

#include <span>

/// A format that world maps are written in. The command line and the window go by this table.
struct MapFormat {
    QString suffix;      ///< without the point, small letters; also its name on the command line
    QString name;        ///< "Imagen PNG"
    QString explanation; ///< in a sentence without a full stop
    /// The options that it heeds, by their names on the command line.
    QStringList options;
    /// Writes a map. Throws Error, and what Advance throws.
    void (*write)(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
                  const Advance& advance);

    bool heeds(const QString& option) const { return options.contains(option); }
};

std::span<const MapFormat> mapFormats();

/// The format of that name; null if there is none.
const MapFormat* mapFormat(const QString& suffix);

// One file each.
void writePng(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
              const Advance& advance);
void writePdf(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
              const Advance& advance);
void writeHtml(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
               const Advance& advance);
void writeMarkdown(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
                   const Advance& advance);
void writeCsv(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
              const Advance& advance);
void writeTmx(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
              const Advance& advance);
void writeText(ExportFiles& files, ExportedMap& map, const ExportOptions& options,
               const Advance& advance);
