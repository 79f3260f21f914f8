// Unsaved work of the map window and of the catalogues: copies of it while the program runs, and
// what an earlier run left.

#include "app/frmVersiones.h"
#include "worldmap/frmMapa.h"
#include "worldmap/map_file.h"

#include <QFileInfo>
#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString mapWork = u"mapa"_s;

Recovery::Content draftOf(const WorldMap& map)
{
    return [map] { return copyContent(mapDraft(map)); };
}

/// A catalogue's items as they are now, as text that is made later.
Recovery::Content draftOf(const CatalogueDocument& catalogue)
{
    return [&kind = catalogue.kind(), items = catalogue.items().contents()] {
        return copyContent(catalogueDraft(kind, items));
    };
}

/// What the work on a catalogue is called: "Armas".
QString workOn(const CatalogueDocument& catalogue)
{
    return QFileInfo(catalogue.kind().file).completeBaseName();
}

CatalogueDocument* catalogueOf(const QString& work)
{
    for (CatalogueDocument* const catalogue : workspace().catalogues()) {
        if (workOn(*catalogue) == work)
            return catalogue;
    }
    return nullptr;
}

/// What a copy is of, as the notice names it.
QString described(const RecoveryCopy& copy)
{
    if (const CatalogueDocument* const catalogue = catalogueOf(copy.work))
        return catalogue->kind().manyItems;
    const QString name = copy.content.left(copy.content.indexOf('\r')).isEmpty()
                             ? QString()
                             : QFileInfo(copy.target).completeBaseName();
    return name.isEmpty() ? u"un mapa sin nombre"_s : u"el mapa «%1»"_s.arg(name);
}

QString dayAndTime(const QDateTime& when)
{
    return QLocale(QLocale::Spanish).toString(when, u"d 'de' MMMM 'a las' H:mm:ss"_s);
}

QString noticeOf(const LeftWork& left)
{
    QStringList parts;
    for (const RecoveryCopy& copy : left.copies)
        parts.append(described(copy));
    QString text;
    if (!parts.isEmpty()) {
        const QString last = parts.takeLast();
        const QString all = parts.isEmpty() ? last : parts.join(u", "_s) + u" y "_s + last;
        text = u"Hay trabajo sin guardar del %1: %2."_s.arg(dayAndTime(left.when()), all);
    }
    return (QStringList(text) + left.faults).join(u' ').trimmed();
}

} // namespace

void FrmMapa::watchUnsavedWork()
{
    Recovery& recovery = workspace().recovery;
    DiskWatch& disk = workspace().diskWatch;
    recovery.watch({.name = mapWork,
                    .history = &documento.history(),
                    .snapshot = [this] { return draftOf(mapa()); },
                    .target = [this] { return draftPath(mapa().nombre); },
                    .known = [this] { return documento.archivo(); }});
    disk.watch(documento, [this] { return documento.archivo(); });
    QObject::connect(&documento, &MapDocument::unsavedReplaced, &window(),
                     [&recovery](const WorldMap& map) {
                         recovery.keepReplaced(mapWork, draftPath(map.nombre), draftOf(map));
                     });
    for (CatalogueDocument* const catalogue : workspace().catalogues()) {
        const QString name = workOn(*catalogue);
        const QString path = cataloguePath(catalogue->kind());
        recovery.watch({.name = name,
                        .history = &catalogue->history(),
                        .snapshot = [catalogue] { return draftOf(*catalogue); },
                        .target = [catalogue] { return cataloguePath(catalogue->kind()); },
                        .known = [catalogue] { return catalogue->file(); }});
        disk.watch(*catalogue, [catalogue] { return catalogue->file(); });
        QObject::connect(catalogue, &CatalogueDocument::unsavedReplaced, &window(),
                         [&recovery, catalogue, name, path] {
                             recovery.keepReplaced(name, path, draftOf(*catalogue));
                         });
    }
    QObject::connect(
        &disk, &DiskWatch::changed, &window(),
        [this](const platform::OtherVersion& other) { tellOfOther(*ui().avisos, other); });
    QObject::connect(&recovery, &Recovery::found, &window(),
                     [this](const LeftWork& left) { offer(left); });
    QObject::connect(&recovery, &Recovery::failed, &window(), [this](const QString& reason) {
        ui().avisos->tell(QStringList(
            u"No se ha podido escribir en «respaldo» una copia de lo que está sin guardar. "_s +
            reason));
    });
}

/// Tells of what an earlier run left. Who takes no notice is told again at the next start.
void FrmMapa::offer(const LeftWork& left)
{
    platform::NoticeBar::Notice notice{.text = noticeOf(left), .about = left.folder};
    if (!left.copies.empty())
        notice.buttons.push_back(
            {u"cmdRecuperar"_s, u"Recuperar"_s, [this, left] { recover(left); }});
    notice.buttons.push_back(
        {u"cmdDescartar"_s, u"Descartar"_s, [left] { workspace().recovery.discard(left); }});
    ui().avisos->tell(notice);
}

/// Takes over what an earlier run left; what can't be taken over stays, and is told of.
void FrmMapa::recover(LeftWork left)
{
    std::optional<platform::Error> problem;
    const auto isStuck = [&](const RecoveryCopy& copy) {
        try {
            recover(copy);
            return false;
        } catch (const platform::Error& error) {
            problem = error;
            return true;
        }
    };
    const auto firstStuck = std::stable_partition(left.copies.begin(), left.copies.end(),
                                                  [&](const auto& copy) { return !isStuck(copy); });
    std::vector<RecoveryCopy> stuck(firstStuck, left.copies.end());
    left.copies.erase(firstStuck, left.copies.end());
    workspace().recovery.settle(left);
    if (!problem)
        return;
    left.copies = std::move(stuck);
    offer(left); // in the place of the notice that was answered
    throw platform::Error(*problem);
}

void FrmMapa::recover(const RecoveryCopy& copy)
{
    const platform::TextFile file = platform::textFileOf(copy.target, copy.content);
    if (CatalogueDocument* const catalogue = catalogueOf(copy.work)) {
        catalogue->replaceItems(draftItems(catalogue->kind(), file),
                                u"recuperar %1"_s.arg(catalogue->kind().manyItems));
        return;
    }
    if (copy.work != mapWork)
        throw file.errorAt(0, u"esta versión del programa no sabe qué es"_s);
    WorldMap map = readDrawableMap(file, workspace().pictures);
    prepared_ = prepare(map);
    setAccion(NoEditing);
    documento.recover(std::move(map), copy.known);
}
