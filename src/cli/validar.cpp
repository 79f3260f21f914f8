#include "catalogue/catalogue_file.h"
#include "cli/command.h"
#include "cli/map_source.h"
#include "generation/grammar_check.h"
#include "generation/name_grammar.h"
#include "generation/world_generator.h"
#include "localmap/local_canvas.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/core/text_file.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QFileInfo>
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
        definitions(data_.tiles, data_.pictures.colTiles, data_.pictures.colMascarasTiles);
        definitions(data_.pins, data_.pictures.colPines, data_.pictures.colMascarasPines);
    }

    void allFiles()
    {
        terrain();
        localTiles();
        for (CatalogueDocument* const catalogue : data_.catalogues())
            file(inIni(catalogue->kind().file), [&] { catalogue->load(report_, report_); });
        QStringList grammars = filesOf(u"gramaticas"_s, u"*.txt"_s);
        if (const QString needed = platform::inAppFolder(Procs::placeNames);
            !grammars.contains(needed))
            grammars.prepend(needed);
        files_ += Procs::checkGrammars(grammars, report_);
        for (const QString& path : filesOf(u"mapas"_s, u"*.map"_s))
            file(path, [&] {
                if (map(path).nombre != QFileInfo(path).completeBaseName())
                    report_(platform::TextFile{path, {}}.errorAt(
                        0, u"el nombre del mapa no es el de su archivo"_s));
            });
    }

    /// Throws Error when the file can't be read at all.
    WorldMap map(const QString& path)
    {
        WorldMap read = readDrawableMap(platform::readTextFile(path), data_.pictures, report_);
        const platform::TextFile file{path, {}};
        if (const std::optional<QString> problem = mapNameProblem(read.nombre))
            report_(file.errorAt(0, *problem));
        if (read.latNorte < read.latSur)
            report_(file.errorAt(2, u"la latitud norte es menor que la sur"_s));
        return read;
    }

    /// Counts a file, and reports what keeps it from being read.
    template <typename Check>
    void file(const QString& path, const Check& check)
    {
        ++files_;
        try {
            check();
            if (platform::readTextFile(path).isUtf8)
                out_ << u"%1: está en UTF-8. Se lee bien; el programa guarda en Windows-1252.\n"_s
                            .arg(platform::displayPath(path));
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
    static QString inIni(const QString& file) { return platform::inAppFolder(u"ini\\"_s + file); }

    void definitions(Palette& palette, PictureCollection& pictures, PictureCollection& masks)
    {
        file(inIni(palette.kind.file), [&] { loadDefinitions(palette, pictures, masks, report_); });
    }

    /// What generator, roads and climate need of the tiles.
    void terrain()
    {
        for (const QString& tile : generatedTiles()) {
            if (!data_.pictures.colTiles.contains(tile))
                fault(data_.tiles.kind,
                      u"falta el tile «%1», o su imagen, que usa el generador."_s.arg(tile));
        }
        terrainNumbers();
    }

    /// Costs and temperatures, which roads and climate read only when they come to a tile.
    void terrainNumbers()
    {
        if (data_.tiles.items.count() == 0)
            return; // the file has been told of
        const platform::TextFile file = platform::readTextFile(inIni(data_.tiles.kind.file));
        for (std::size_t line = 0; line < file.lines.size(); ++line) {
            const platform::ListItem* const tile =
                data_.tiles.items.find(file.lines[line].section(u';', 0, 0));
            for (const QString& field : {u"costo"_s, u"temperatura"_s}) {
                // A line that could not be read has been told of.
                if (tile && tile->hasSubItem(field) &&
                    !numberField(data_.tiles, tile->key(), field))
                    report_(file.errorAt(line, u"el dato «%1» no es un número"_s.arg(field)));
            }
        }
    }

    /// What the local map generator needs.
    void localTiles()
    {
        Palette& palette = data_.localTiles;
        LocalPictures& pictures = data_.localPictures;
        definitions(palette, pictures.colTilesLocales, pictures.colMascarasLocales);
        for (const QString& tile : localTileNames()) {
            if (!pictures.colTilesLocales.contains(tile))
                fault(palette.kind,
                      u"falta el tile «%1», o su imagen, que usa el generador."_s.arg(tile));
        }
    }

    /// Reports a fault of a definition file as a whole.
    void fault(const DefinitionKind& kind, const QString& text)
    {
        report_(Error(platform::ErrorNumber::BadFormat,
                      platform::displayPath(inIni(kind.file)) + u": "_s + text));
    }

    /// Those too that are no ordinary files, which is then told of.
    static QStringList filesOf(const QString& folder, const QString& mask)
    {
        const QDir dir(platform::inAppFolder(folder));
        QStringList paths;
        for (const QString& name : dir.entryList({mask}, QDir::Files | QDir::System, QDir::Name))
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
    Workspace data_;
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
        named.file(mapPath(map), [&] { named.map(mapPath(map)); });
    return named.conclude();
}
