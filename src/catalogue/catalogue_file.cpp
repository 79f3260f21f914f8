#include "catalogue/catalogue_file.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_codec.h"
#include "platform/core/text_file.h"
#include "platform/gdi/picture.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;
using platform::ListItem;
using platform::TextFile;

namespace {

constexpr char16_t separator = u';';

struct LoadedPicture {
    QString path;
    QImage image;
};

/// Pictures by what the records call them: many share one, and finding its file takes long.
using LoadedPictures = QHash<QString, LoadedPicture>;

/// Adds the picture of an item to its catalogue and returns its position.
int addPicture(Catalogue& catalogue, const QString& key, const QString& image,
               LoadedPictures& loaded)
{
    LoadedPicture& picture = loaded[image];
    if (picture.image.isNull()) {
        picture.path = platform::inAppFolder(image);
        picture.image = platform::loadPicture(picture.path, catalogue.pictures.largest());
    }
    return catalogue.pictures.add(key, picture.image, picture.path);
}

/// A record's field. Throws Error when the record is too short for it.
const QString& fieldOf(const CatalogueKind& kind, const QStringList& fields, std::size_t position)
{
    if (position >= static_cast<std::size_t>(fields.size()))
        throw Error(ErrorNumber::BadFormat,
                    u"falta el dato «%1» (hay %2 de %3)"_s.arg(kind.fields[position].key)
                        .arg(fields.size())
                        .arg(kind.fields.size()));
    return fields[static_cast<qsizetype>(position)];
}

void loadRecord(Catalogue& catalogue, const QStringList& fields, LoadedPictures& loaded)
{
    const CatalogueKind& kind = catalogue.kind;
    const auto field = [&](std::size_t position) -> const QString& {
        return fieldOf(kind, fields, position);
    };

    checkRoom(catalogue);
    const QString key = kind.itemKey(field(0), kind.keyHasType ? field(1) : QString());
    ListItem& item = catalogue.items.add(key, field(0));
    if (const QString& image = field(kind.imageField()); !image.isEmpty())
        item.setIcon(addPicture(catalogue, key, image, loaded));
    for (std::size_t position = 1; position < kind.fields.size(); ++position) {
        const QString& name = kind.fields[position].key;
        item.setSubItem(name, name == notesField ? platform::notesFromFile(field(position))
                                                 : field(position));
    }
}

bool isWhole(const CatalogueKind& kind, const ListItem& item)
{
    return std::all_of(
        kind.fields.begin() + 1, kind.fields.end(),
        [&](const platform::ListColumn& field) { return item.hasSubItem(field.key); });
}

/// What is left to read of a file from a faulty line on.
UnreadLines unreadFrom(const Catalogue& catalogue, const TextFile& file, std::size_t line)
{
    UnreadLines unread{file.textFrom(line), file.isUtf8, {}, {}};
    const int count = catalogue.items.count();
    if (count > 0 && !isWhole(catalogue.kind, catalogue.items.at(count - 1)))
        unread.halfRead = catalogue.items.at(count - 1).key();
    return unread;
}

/// Hands on a fault in a line; if that ends the reading, keeps what is left to read.
void stopAt(std::size_t line, const Error& error, Catalogue& catalogue, const TextFile& file,
            const platform::OnFault& onFault)
{
    try {
        onFault(file.errorAt(line, error.description, error.number));
    } catch (...) {
        catalogue.unread = unreadFrom(catalogue, file, line);
        throw;
    }
}

/// The item of a record, without its icon; fields that the record lacks are empty.
ListItem::Contents itemOf(const CatalogueKind& kind, const QStringList& fields)
{
    ListItem::Contents item{kind.itemKey(fields.first(), fields.value(1)), fields.first(), 0, {}};
    for (std::size_t position = 1; position < kind.fields.size(); ++position) {
        const QString& name = kind.fields[position].key;
        const QString field = fields.value(static_cast<qsizetype>(position));
        item.subItems.push_back(
            {name, name == notesField ? platform::notesFromFile(field) : field});
    }
    return item;
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

/// Tells when two lines would be one item to the reader, as after a rename that was refused.
class KeyCheck
{
public:
    explicit KeyCheck(const Catalogue& catalogue) : catalogue_(&catalogue) {}

    /// Takes the line of the item at a position. Throws Error (DuplicateKey) that names both items.
    void add(int position, const QString& line)
    {
        const CatalogueKind& kind = catalogue_->kind;
        const qsizetype nameEnd = line.indexOf(separator);
        const qsizetype typeEnd = line.indexOf(separator, nameEnd + 1);
        const QString key =
            kind.itemKey(line.left(nameEnd), line.mid(nameEnd + 1, typeEnd - nameEnd - 1));
        const auto known = positions_.constFind(key);
        if (known != positions_.constEnd())
            throw Error(
                ErrorNumber::DuplicateKey,
                u"las filas %1 («%2») y %3 («%4») tienen la misma clave, «%5», y el archivo no se "
                "podría volver a leer entero; cambie o elimine una de las dos"_s.arg(
                    QString::number(*known + 1), textAt(*known), QString::number(position + 1),
                    textAt(position), key));
        positions_.insert(key, position);
    }

private:
    const QString& textAt(int position) const { return catalogue_->items.at(position).text(); }

    const Catalogue* catalogue_;
    QHash<QString, int> positions_;
};

/// The file's name with ".bak" added, or ".bak2" and so on: an older copy may hold the only trace
/// of a record.
QString freeBackupPath(const QString& path)
{
    QString backup = path + u".bak"_s;
    for (int i = 2; QFileInfo::exists(backup); ++i)
        backup = path + u".bak%1"_s.arg(i);
    return backup;
}

/// Completes what is known of lines that weren't read: where not one was, they are the whole file.
void complete(UnreadLines& unread, const QString& path)
{
    if (unread.text)
        return;
    unread.text = QString();
    if (!QFileInfo::exists(path))
        return;
    const TextFile file = platform::readTextFile(path);
    unread.text = file.text;
    unread.isUtf8 = file.isUtf8;
}

/// Copies a file whose reading had stopped before it is first replaced. Returns what the user is to
/// be told.
QStringList backUp(const QString& path, UnreadLines& unread)
{
    QStringList notices;
    if (unread.backup.isEmpty() && QFileInfo::exists(path)) {
        const QString backup = freeBackupPath(path);
        platform::copyFileAtomically(path, backup);
        unread.backup = backup;
    }
    if (!unread.backup.isEmpty())
        notices.append(
            u"Líneas de «%1» sin leer por un error: %2. Se han guardado tal como estaban, detrás "
            "de los elementos de la lista; el archivo como era está en «%3»."_s.arg(
                platform::displayPath(path),
                QString::number(platform::splitLines(*unread.text).size()),
                platform::displayPath(unread.backup)));
    return notices;
}

} // namespace

QString cataloguePath(const CatalogueKind& kind)
{
    return platform::inAppFolder(u"ini\\"_s + kind.file);
}

Error tooManyItems()
{
    return Error(ErrorNumber::TooLarge,
                 u"el catálogo no admite más de %1 elementos"_s.arg(maxCatalogueItems));
}

void checkRoom(const Catalogue& catalogue)
{
    if (catalogue.items.count() == maxCatalogueItems)
        throw tooManyItems();
}

QString catalogueDraft(const CatalogueKind& kind, const std::vector<ListItem::Contents>& items)
{
    const QString lineEnd = u"\r\n"_s;
    QString text = kind.headerLine + lineEnd;
    for (const ListItem::Contents& item : items) {
        text += item.text;
        for (std::size_t position = 1; position < kind.fields.size(); ++position) {
            const QString& name = kind.fields[position].key;
            const auto subItem = std::find_if(item.subItems.begin(), item.subItems.end(),
                                              [&](const auto& one) { return one.key == name; });
            text += separator;
            if (subItem != item.subItems.end())
                text += platform::notesToFile(subItem->text);
        }
        text += lineEnd;
    }
    return text;
}

std::vector<ListItem::Contents> draftItems(const CatalogueKind& kind, const TextFile& file)
{
    std::vector<ListItem::Contents> items;
    QSet<QString> keys;
    for (std::size_t i = 1; i < file.lines.size(); ++i) {
        if (file.lines[i].isEmpty())
            continue;
        ListItem::Contents item = itemOf(kind, file.lines[i].split(separator));
        while (keys.contains(item.key))
            item.key += u'\'';
        keys.insert(item.key);
        items.push_back(std::move(item));
    }
    return items;
}

std::vector<ListItem::Contents> fileItems(const CatalogueKind& kind, const TextFile& file)
{
    std::vector<ListItem::Contents> items;
    QSet<QString> keys;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        if (file.lines[i].isEmpty() || file.lines[i].startsWith(commentMark))
            continue;
        const QStringList fields = file.lines[i].split(separator);
        try {
            fieldOf(kind, fields, kind.fields.size() - 1);
            items.push_back(itemOf(kind, fields));
            if (keys.contains(items.back().key))
                throw platform::duplicateKey(items.back().key);
        } catch (const Error& error) {
            throw file.errorAt(i, error.description, error.number);
        }
        keys.insert(items.back().key);
    }
    return items;
}

void loadCatalogue(Catalogue& catalogue, const platform::OnFault& onFault,
                   const platform::OnFault& onRemark)
{
    catalogue.unread.emplace();
    const TextFile file = platform::readTextFile(cataloguePath(catalogue.kind));
    catalogue.file = file.known;
    const auto fieldCount = static_cast<qsizetype>(catalogue.kind.fields.size());
    LoadedPictures loaded;
    bool isAsWritten = true;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const QString& line = file.lines[i];
        if (line.isEmpty() || line.startsWith(commentMark)) {
            isAsWritten &= i == 0;
            continue;
        }
        const QStringList fields = line.split(separator);
        try {
            loadRecord(catalogue, fields, loaded);
        } catch (const Error& error) {
            stopAt(i, error, catalogue, file, onFault);
        }
        if (fields.size() > fieldCount) {
            isAsWritten = false;
            onRemark(file.errorAt(
                i, u"sobran datos (hay %1 y caben %2); al guardar se pierden los últimos"_s
                       .arg(fields.size())
                       .arg(fieldCount)));
        }
    }
    catalogue.unread.reset();
    if (!isAsWritten)
        catalogue.file.digest.clear(); // what a save leaves out is always kept among the versions
}

SavedCatalogue saveCatalogue(Catalogue& catalogue, const std::function<void()>& advance)
{
    const CatalogueKind& kind = catalogue.kind;
    const QString path = cataloguePath(kind);
    std::optional<UnreadLines>& unread = catalogue.unread;
    if (unread)
        complete(*unread, path);
    // Lines in UTF-8 stay what they are only in a file that is in UTF-8 as a whole.
    const bool asUtf8 = unread && unread->isUtf8;
    const auto encoded = [&](const QString& text) {
        const QByteArray bytes = platform::toWindows1252(text); // refuses what it can't hold
        return asUtf8 ? text.toUtf8() : bytes;
    };

    SavedCatalogue saved;
    constexpr QByteArrayView lineEnd("\r\n");
    QByteArray bytes = encoded(kind.headerLine);
    bytes += lineEnd;
    KeyCheck keys(catalogue);
    for (int i = 0; i < catalogue.items.count(); ++i) {
        const ListItem& item = catalogue.items.at(i);
        if (unread && item.key() == unread->halfRead && !isWhole(kind, item))
            continue; // its own line is among those that follow
        try {
            const QString line = recordLine(kind, item);
            bytes += encoded(line);
            keys.add(i, line);
        } catch (const Error& error) {
            throw Error(error.number,
                        u"No se puede guardar «%1»: %2."_s.arg(item.text(), error.description));
        }
        bytes += lineEnd;
        ++saved.records;
        if (advance)
            advance();
    }
    if (unread) {
        bytes += asUtf8 ? unread->text->toUtf8() : platform::toWindows1252(*unread->text);
        saved.notices = backUp(path, *unread);
    }
    platform::Saved written = platform::saveFile(path, bytes, catalogue.file);
    saved.notices += written.notices;
    saved.other = std::move(written.other);
    if (unread && unread->text->isEmpty())
        unread.reset();
    return saved;
}
