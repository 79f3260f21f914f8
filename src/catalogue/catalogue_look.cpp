#include "catalogue/catalogue_look.h"

#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/gdi/image_list.h"
#include "platform/gdi/picture.h"

#include <QHash>
#include <QPainter>
#include <algorithm>

using namespace Qt::StringLiterals;

using platform::ListItem;

namespace {

constexpr qsizetype namesTold = 4;

constexpr int mosaicSide = 3;                          ///< in pictures
constexpr int pictureSide = platform::largeIconSize;   ///< in pixels
constexpr int mostTried = 4 * mosaicSide * mosaicSide; ///< pictures, of which files may be missing

/// "faltan: Daga, Maza y 3 más"; nothing for no names.
QStringList told(const QString& what, const QStringList& names)
{
    if (names.isEmpty())
        return {};
    QString text = what + u": "_s + names.first(std::min(names.size(), namesTold)).join(u", "_s);
    if (names.size() > namesTold)
        text += u" y %1 más"_s.arg(names.size() - namesTold);
    return {text};
}

bool holdSame(const ListItem::Contents& a, const ListItem::Contents& b)
{
    return a.text == b.text && a.subItems == b.subItems;
}

/// The pictures that the items name first, each once.
QStringList pictureNames(const CatalogueKind& kind, const CatalogueItems& items)
{
    const QString& field = kind.fields[kind.imageField()].key;
    QStringList names;
    for (const ListItem::Contents& item : items) {
        for (const ListItem::SubItem& subItem : item.subItems) {
            if (subItem.key == field && !subItem.text.isEmpty() && !names.contains(subItem.text))
                names.append(subItem.text);
        }
        if (names.size() == mostTried)
            break;
    }
    return names;
}

} // namespace

QString differences(const CatalogueItems& items, const CatalogueItems& others)
{
    QHash<QString, const ListItem::Contents*> left;
    for (const ListItem::Contents& item : items)
        left.insert(item.key, &item);
    QStringList missing;
    QStringList changed;
    for (const ListItem::Contents& other : others) {
        const ListItem::Contents* const same = left.take(other.key);
        if (!same)
            missing.append(other.text);
        else if (!holdSame(*same, other))
            changed.append(other.text);
    }
    QStringList extra;
    for (const ListItem::Contents& item : items) {
        if (left.contains(item.key))
            extra.append(item.text);
    }
    const QStringList all =
        told(u"faltan"_s, missing) + told(u"sobran"_s, extra) + told(u"cambian"_s, changed);
    return all.isEmpty() ? u"Lo mismo que hay ahora."_s
                         : u"Respecto a lo que hay ahora, "_s + all.join(u"; "_s) + u'.';
}

QImage mosaic(const CatalogueKind& kind, const CatalogueItems& items)
{
    QImage picture(mosaicSide * pictureSide, mosaicSide * pictureSide,
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    int count = 0;
    for (const QString& name : pictureNames(kind, items)) {
        try {
            const QImage one =
                platform::loadPicture(platform::inAppFolder(name), QSize(pictureSide, pictureSide));
            const QPoint corner(count % mosaicSide * pictureSide, count / mosaicSide * pictureSide);
            painter.drawImage(
                corner + QPoint((pictureSide - one.width()) / 2, (pictureSide - one.height()) / 2),
                one);
        } catch (const platform::Error&) {
            continue; // its place is free for the next one
        }
        if (++count == mosaicSide * mosaicSide)
            break;
    }
    return count == 0 ? QImage() : picture;
}
