// Feeds any bytes to the readers of files. Each may refuse them with an Error, and nothing else; a
// map that is accepted must be written and read back the same.
#include "catalogue/catalogue_file.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/gdi/picture.h"
#include "worldmap/definitions.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

bool anyName(const QString& name)
{
    return !name.isEmpty();
}

void attempt(const std::function<void()>& read)
{
    try {
        read();
    } catch (const platform::Error&) {
    }
}

void readAndRewriteMap(const QString& path)
{
    const WorldMap map = readMapFile(path, anyName, anyName);
    try {
        saveMapFile(map);
    } catch (const platform::Error&) {
        return; // a name that no file can have, or a character that nothing can store
    }
    const WorldMap again = readMapFile(mapFilePath(map.nombre), anyName, anyName);
    if (!(again.mapaTiles == map.mapaTiles) || !(again.mapaPines == map.mapaPines) ||
        again.notasMapa != map.notasMapa || again.nombre != map.nombre)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder(QDir::tempPath() + u"/kestrune-fuzz-XXXXXX"_s);
    static const platform::ScopedAppFolder scope(folder.path());
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QDir(folder.path()).mkpath(u"ini"_s);
    for (const auto& name : {u"ini/Armas.ini"_s, u"ini/tiles.ini"_s, u"x.map"_s, u"x.gif"_s}) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }
    attempt([&] { readAndRewriteMap(folder.filePath(u"x.map"_s)); });
    attempt([&] { platform::loadPicture(folder.filePath(u"x.gif"_s)); });
    attempt([] {
        Catalogue armas(armasKind());
        loadCatalogue(armas);
    });
    attempt([] {
        Palette tiles(tilesKind());
        PictureCollection pictures;
        PictureCollection masks;
        loadDefinitions(tiles, pictures, masks);
    });
    return 0;
}
