#include "catalogue/catalogue_file.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_codec.h"
#include "platform/core/text_file.h"
#include "platform/gdi/picture.h"

#include <QFileInfo>
#include <QHash>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;
using platform::ListItem;
using platform::TextFile;

namespace {

constexpr char16_t separator = u';';

QString pathOf(const CatalogueKind& kind)
{
    return platform::inAppFolder(u"ini\\"_s + kind.file);
}

/// Pictures by their path: many records share one.
using LoadedPictures = QHash<QString, QImage>;

QImage pictureAt(const QString& image, LoadedPictures& loaded)
{
    QImage& picture = loaded[image];
    if (picture.isNull())
        picture = platform::loadPicture(platform::inAppFolder(image));
    return picture;
}

void loadRecord(Catalogue& catalogue, const QString& line, LoadedPictures& loaded)
{
    const CatalogueKind& kind = catalogue.kind;
    const QStringList fields = line.split(separator);
    const auto field = [&](std::size_t position) -> const QString& {
        if (position >= static_cast<std::size_t>(fields.size()))
            throw Error(ErrorNumber::BadFormat,
                        u"falta el dato «%1» (hay %2 de %3)"_s.arg(kind.fields[position].key)
                            .arg(fields.size())
                            .arg(kind.fields.size()));
        return fields[static_cast<qsizetype>(position)];
    };

    checkRoom(catalogue);
    const QString key = kind.itemKey(field(0), kind.keyHasType ? field(1) : QString());
    ListItem& item = catalogue.items.add(key, field(0));
    if (const QString& image = field(kind.imageField()); !image.isEmpty())
        item.setIcon(catalogue.pictures.add(key, pictureAt(image, loaded)));
    for (std::size_t position = 1; position < kind.fields.size(); ++position) {
        const QString& name = kind.fields[position].key;
        item.setSubItem(name, name == notesField ? platform::notesFromFile(field(position))
                                                 : field(position));
    }
}

/// A field that would break its line can't be written. A ";" in it only makes further fields.
QString oneLine(const QString& text)
{
    if (text.contains(u'\n') || text.contains(u'\r'))
        throw Error(ErrorNumber::BadCharacter, u"un dato contiene un salto de línea"_s);
    return text;
}

QString recordLine(const CatalogueKind& kind, const ListItem& item)
{
    if (item.text().startsWith(commentMark))
        throw Error(ErrorNumber::BadCharacter,
                    u"el nombre empieza por «%1», como los comentarios"_s.arg(commentMark));
    QString line = oneLine(item.text());
    for (std::size_t position = 1; position < kind.fields.size(); ++position) {
        const QString& name = kind.fields[position].key;
        line += separator;
        if (item.hasSubItem(name))
            line += name == notesField ? platform::notesToFile(item.subItem(name))
                                       : oneLine(item.subItem(name));
    }
    return line;
}

/// The file's name with ".bak" added, or ".bak2" and so on: an older copy may hold the only trace
/// of a record.
QString freeBackupPath(const QString& path)
{
    QString backup = path + u".bak"_s;
    for (int i = 2; QFileInfo::exists(backup); ++i)
        backup = path + u".bak%1"_s.arg(i);
    return backup;
}

} // namespace

void checkRoom(const Catalogue& catalogue)
{
    if (catalogue.items.count() == maxCatalogueItems)
        throw Error(ErrorNumber::TooLarge,
                    u"el catálogo no admite más de %1 elementos"_s.arg(maxCatalogueItems));
}

void loadCatalogue(Catalogue& catalogue, const platform::OnFault& onFault)
{
    catalogue.loadStopped = true;
    const TextFile file = platform::readTextFile(pathOf(catalogue.kind));
    LoadedPictures loaded;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const QString& line = file.lines[i];
        if (line.isEmpty() || line.startsWith(commentMark))
            continue;
        try {
            loadRecord(catalogue, line, loaded);
        } catch (const Error& error) {
            onFault(file.errorAt(i, error.description, error.number));
        }
    }
    catalogue.loadStopped = false;
}

void saveCatalogue(Catalogue& catalogue, const std::function<void()>& advance)
{
    const CatalogueKind& kind = catalogue.kind;
    const QString path = pathOf(kind);
    constexpr QByteArrayView lineEnd("\r\n");
    QByteArray bytes = platform::toWindows1252(kind.headerLine);
    bytes += lineEnd;
    for (int i = 0; i < catalogue.items.count(); ++i) {
        const ListItem& item = catalogue.items.at(i);
        try {
            bytes += platform::toWindows1252(recordLine(kind, item));
        } catch (const Error& error) {
            throw Error(error.number,
                        u"No se puede guardar «%1»: %2."_s.arg(item.text(), error.description));
        }
        bytes += lineEnd;
        if (advance)
            advance();
    }
    if (catalogue.loadStopped && QFileInfo(path).isFile())
        platform::copyFileAtomically(path, freeBackupPath(path));
    platform::writeFileAtomically(path, bytes);
    catalogue.loadStopped = false;
}
