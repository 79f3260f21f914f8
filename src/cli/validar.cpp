#include "catalogue/catalogue_file.h"
#include "cli/atlas.h"
#include "cli/command.h"
#include "generation/name_grammar.h"
#include "generation/path_finding.h"
#include "generation/world_generator.h"
#include "localmap/local_canvas.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/core/text_file.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QTextStream>

using namespace Qt::StringLiterals;

using platform::Error;

namespace {

/// Reads data files for their faults alone, and prints each of them.
class Inspection
{
public:
    Inspection()
    {
        definitions(tiles_, pictures_.colTiles, pictures_.colMascarasTiles);
        definitions(pins_, pictures_.colPines, pictures_.colMascarasPines);
    }

    void allFiles()
    {
        terrain();
        localTiles();
        for (const CatalogueKind* kind :
             {&armasKind(), &armadurasKind(), &equipoKind(), &conjurosKind()}) {
            file([&] {
                Catalogue catalogue(*kind);
                loadCatalogue(catalogue, report_);
            });
        }
        for (const QString& path : filesOf(u"gramaticas"_s, u"*.txt"_s))
            file([&] { Procs::checkGrammar(path, report_); });
        for (const QString& path : filesOf(u"mapas"_s, u"*.map"_s))
            file([&] { map(path); });
    }

    /// Throws Error when the file can't be read at all.
    void map(const QString& path)
    {
        readMapFile(
            path, [&](const QString& name) { return pictures_.colTiles.contains(name); },
            [&](const QString& name) { return pictures_.colPines.contains(name); }, report_);
    }

    /// Counts a file, and reports what keeps it from being read.
    template <typename Check>
    void file(const Check& check)
    {
        ++files_;
        try {
            check();
        } catch (const Error& error) {
            report_(error);
        }
    }

    ExitCode conclude()
    {
        if (faults_ == 0)
            out_ << u"Archivos revisados: %1. Ninguna falta.\n"_s.arg(files_);
        else
            out_ << u"Archivos revisados: %1. Faltas: %2.\n"_s.arg(files_).arg(faults_);
        return faults_ == 0 ? Success : No;
    }

private:
    void definitions(Palette& palette, PictureCollection& pictures, PictureCollection& masks)
    {
        file([&] { loadDefinitions(palette, pictures, masks, report_); });
    }

    /// What generator, roads and climate need of the tiles.
    void terrain()
    {
        for (const QString& tile : generatedTiles()) {
            if (!pictures_.colTiles.contains(tile))
                fault(tiles_.kind,
                      u"falta el tile «%1», o su imagen, que usa el generador."_s.arg(tile));
        }
        for (int i = 0; i < tiles_.items.count(); ++i) {
            const QString& tile = tiles_.items.at(i).key();
            for (const QString& field : {u"costo"_s, u"temperatura"_s}) {
                if (!numberField(tiles_, tile, field))
                    fault(tiles_.kind,
                          u"el dato «%1» del tile «%2» no es un número."_s.arg(field, tile));
            }
        }
    }

    /// What the local map generator needs.
    void localTiles()
    {
        Palette palette(tilesLocalesKind());
        LocalCanvas canvas;
        definitions(palette, canvas.colTilesLocales, canvas.colMascarasLocales);
        for (const QString& tile : localTileNames()) {
            if (!canvas.colTilesLocales.contains(tile))
                fault(palette.kind,
                      u"falta el tile «%1», o su imagen, que usa el generador."_s.arg(tile));
        }
    }

    /// Reports a fault of a definition file as a whole.
    void fault(const DefinitionKind& kind, const QString& text)
    {
        const QString path = platform::inAppFolder(u"ini\\"_s + kind.file);
        report_(
            Error(platform::ErrorNumber::BadFormat, platform::displayPath(path) + u": "_s + text));
    }

    static QStringList filesOf(const QString& folder, const QString& mask)
    {
        const QDir dir(platform::inAppFolder(folder));
        QStringList paths;
        for (const QString& name : dir.entryList({mask}, QDir::Files, QDir::Name))
            paths.append(dir.filePath(name));
        return paths;
    }

    QTextStream out_{stdout};
    int files_ = 0;
    int faults_ = 0;
    const platform::OnFault report_ = [this](const Error& error) {
        ++faults_;
        out_ << error.description << '\n';
    };
    Palette tiles_{tilesKind()};
    Palette pins_{pinesKind()};
    MapPictures pictures_;
};

} // namespace

ExitCode validar(const Arguments& arguments)
{
    if (arguments.positional.isEmpty()) {
        Inspection all;
        all.allFiles();
        return all.conclude();
    }
    // A map that can't be read at all ends the command, before anything is printed.
    for (const QString& map : arguments.positional)
        platform::readTextFile(mapPath(map));
    Inspection named;
    for (const QString& map : arguments.positional)
        named.file([&] { named.map(mapPath(map)); });
    return named.conclude();
}
