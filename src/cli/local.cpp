#include "app/workspace.h"
#include "cli/command.h"
#include "cli/picture.h"
#include "localmap/local_canvas.h"
#include "localmap/local_generator.h"

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

ExitCode draw(const LocalMap& map, const PictureTarget& picture, QTextStream& lines)
{
    Workspace workspace;
    workspace.loadTilesLocales();
    LocalCanvas canvas(workspace.localPictures);
    const QStringList missing = canvas.renderMapa(map);
    picture.write({canvas.hdcBuffer, canvas.hdcBuffer.rect()}, false);
    if (!missing.isEmpty())
        QTextStream(stderr) << u"Faltan tiles locales, o sus imágenes: %1.\n"_s.arg(
            missing.join(u", "_s));
    picture.tell(lines, canvas.hdcBuffer.size());
    return missing.isEmpty() ? Success : No;
}

} // namespace

ExitCode local(const Arguments& arguments)
{
    arguments.none();
    const bool asText = arguments.has(u"texto"_s);
    const PictureTarget picture(arguments);
    if (!asText && !picture.isWanted())
        throw UsageError{u"hace falta --png o --texto"_s};
    if (asText && picture.isStandardOutput())
        throw UsageError{u"--texto y --png - no caben juntos en la salida estándar"_s};
    arguments.seed();
    LocalMap map;
    generarMapaLocal(map);
    ExitCode result = Success;
    if (picture.isWanted()) {
        // The names of the tiles have standard output for themselves.
        QTextStream lines(asText ? stderr : picture.lines());
        result = draw(map, picture, lines);
    }
    if (asText)
        print(map);
    return result;
}
