// The files that have kept versions: what these show, and how they are brought back.

#include "app/frmVersiones.h"
#include "app/workspace.h"
#include "catalogue/catalogue_look.h"
#include "catalogue/frmPrinc.h"
#include "platform/core/text_file.h"
#include "platform/gdi/picture.h"
#include "worldmap/frmMapa.h"
#include "worldmap/map_file.h"
#include "worldmap/map_look.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

using platform::KeptVersion;

namespace {

CatalogueDocument* catalogueAt(const QString& path)
{
    for (CatalogueDocument* const catalogue : workspace().catalogues()) {
        // Some systems ignore letter case.
        if (cataloguePath(catalogue->kind()).compare(path, Qt::CaseInsensitive) == 0)
            return catalogue;
    }
    return nullptr;
}

bool isMap(const QString& path)
{
    const QFileInfo file(path);
    return file.path() == QFileInfo(mapFilePath({})).path() &&
           file.suffix().compare(u"map"_s, Qt::CaseInsensitive) == 0;
}

QString stepName(const KeptVersion& version)
{
    return u"volver a la versión del "_s + version.when.toString(u"dd/MM/yyyy HH:mm"_s);
}

VersionedFile versionedMap(const QString& path)
{
    const auto look = [pictures = workspace().pictures,
                       colours = tileColours(workspace().tiles)](const KeptVersion& version) {
        return lookAtMapFile(version.path, pictures, colours);
    };
    const auto bringBack = [](const KeptVersion& version) {
        return frmMapa().bringBack(version.path, stepName(version));
    };
    return {path, versionedTitle(path), look, inProportion, bringBack, [] { frmMapa().show(); }};
}

/// Unsaved versions hold what no file could; the others may have been written by hand.
CatalogueItems readItems(const CatalogueKind& kind, const KeptVersion& version)
{
    const platform::TextFile file = platform::readTextFile(version.path);
    return version.isUnsaved ? draftItems(kind, file) : fileItems(kind, file);
}

VersionedFile versionedCatalogue(const QString& path, CatalogueDocument& catalogue)
{
    const auto now = std::make_shared<const CatalogueItems>(catalogue.items().contents());
    const auto look = [now, &kind = catalogue.kind()](const KeptVersion& version) {
        const CatalogueItems items = readItems(kind, version);
        return FileLook{kind.counted(static_cast<int>(items.size())) + u". "_s +
                            differences(items, *now),
                        true, mosaic(kind, items)};
    };
    const auto bringBack = [&catalogue](const KeptVersion& version) {
        const History& history = catalogue.history();
        const int revision = history.revision();
        catalogue.replaceItems(readItems(catalogue.kind(), version), stepName(version));
        return history.revision() != revision;
    };
    return {path,
            versionedTitle(path),
            look,
            [](const QImage& picture, QSize room) { return platform::shrunkTo(picture, room); },
            bringBack,
            [&catalogue] { frmPrinc().showPage(catalogue); }};
}

} // namespace

QString versionedTitle(const QString& path)
{
    if (const CatalogueDocument* const catalogue = catalogueAt(path))
        return QFileInfo(catalogue->kind().file).completeBaseName();
    if (!isMap(path))
        return {};
    return path == draftPath({}) ? u"Mapas sin nombre"_s
                                 : u"Mapa «%1»"_s.arg(QFileInfo(path).completeBaseName());
}

VersionedFile versionedFile(const QString& path)
{
    CatalogueDocument* const catalogue = catalogueAt(path);
    return catalogue ? versionedCatalogue(path, *catalogue) : versionedMap(path);
}
