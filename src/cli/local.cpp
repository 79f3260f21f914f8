#include "cli/atlas.h"
#include "cli/command.h"
#include "localmap/local_canvas.h"
#include "localmap/local_generator.h"
#include "platform/core/text_file.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

void print(const LocalMap& map)
{
    QTextStream out(stdout);
    for (int row = 0; row < map.alto; ++row) {
        QStringList names;
        for (int column = 0; column < map.ancho; ++column)
            names.append(map.mapaLocal(row, column));
        out << names.join(u';') << '\n';
    }
}

ExitCode draw(const LocalMap& map, const QString& picture)
{
    LocalCanvas canvas;
    Palette tiles(tilesLocalesKind());
    loadDefinitions(tiles, canvas.colTilesLocales, canvas.colMascarasLocales);
    const QStringList missing = canvas.renderMapa(map);
    platform::writeFileAtomically(picture, pngBytes(canvas.hdcBuffer.image(), 1));
    if (!missing.isEmpty())
        QTextStream(stderr) << u"Faltan tiles locales, o sus imágenes: %1.\n"_s.arg(
            missing.join(u", "_s));
    QTextStream(stdout) << u"Imagen: %1 (%2 × %3 píxeles)\n"_s.arg(
        picture, QString::number(canvas.hdcBuffer.width()),
        QString::number(canvas.hdcBuffer.height()));
    return missing.isEmpty() ? Success : No;
}

} // namespace

ExitCode local(const Arguments& arguments)
{
    if (!arguments.positional.isEmpty())
        throw UsageError{u"sobra «%1»"_s.arg(arguments.positional.first())};
    const bool asText = arguments.flags.contains(u"texto"_s);
    if (asText == arguments.has(u"png"_s))
        throw UsageError{u"hace falta --png o --texto, una de las dos"_s};
    arguments.seed();
    LocalMap map;
    if (asText) {
        generarMapaLocal(map);
        print(map);
        return Success;
    }
    const QString picture = arguments.value(u"png"_s);
    checkWritable(picture);
    generarMapaLocal(map);
    return draw(map, picture);
}
