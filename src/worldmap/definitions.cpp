#include "worldmap/definitions.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"
#include "platform/gdi/picture.h"

#include <cmath>
#include <cstdint>
#include <limits>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;
using platform::ListColumn;
using platform::ListItem;
using platform::MemoryDC;
using platform::TextFile;

namespace {

// The fields of a line, by position. Only tiles have the last three.
enum Field { Nombre, Imagen, Notas, ImagenMascara, Habitantes, Costo, Temperatura };

/// How many fields a line that begins so must have. A line without a picture needs no mask.
int fieldsNeeded(const DefinitionKind& kind, const QStringList& fields)
{
    if (kind.hasTerrain)
        return Temperatura + 1;
    const bool hasPicture = fields.size() > Imagen && !fields[Imagen].isEmpty();
    return hasPicture ? ImagenMascara + 1 : Notas + 1;
}

std::vector<ListColumn> commonColumns()
{
    return {{u"notas"_s, u"Notas"_s, 1400},
            {u"nombre"_s, u"Nombre"_s, 2100},
            {u"imagen"_s, u"Imagen"_s, 1400}};
}

std::vector<ListColumn> tileColumns()
{
    std::vector<ListColumn> columns = commonColumns();
    columns.push_back({u"habitantes"_s, u"Habitantes x Km2"_s, 700, Qt::AlignRight});
    columns.push_back({u"costo"_s, u"Costo de travesía"_s, 700, Qt::AlignRight});
    columns.push_back({u"temperatura"_s, u"Mod. Temperatura"_s, 700, Qt::AlignRight});
    return columns;
}

/// A definition file being read, apart from the palette that it will replace.
struct Definitions {
    platform::ListItems items;
    platform::ImageList images;
    PictureCollection pictures;
    PictureCollection masks;
    PictureCollection maskFiles; ///< by path: one mask often serves many definitions

    std::shared_ptr<const MemoryDC> mask(const QString& path)
    {
        std::shared_ptr<const MemoryDC>& loaded = maskFiles[path];
        if (!loaded)
            loaded =
                std::make_shared<MemoryDC>(platform::loadPictureDC(platform::inAppFolder(path)));
        return loaded;
    }

    void add(const DefinitionKind& kind, const QString& line)
    {
        const QStringList fields = line.split(u';');
        if (const int needed = fieldsNeeded(kind, fields); fields.size() < needed)
            throw Error(ErrorNumber::BadFormat,
                        u"número de campos: %1; hacen falta %2"_s.arg(fields.size()).arg(needed));
        const QString& name = fields[Nombre];
        if (kind.marksPlaces && name.contains(u'|')) // a map's file ends its places with it
            throw Error(ErrorNumber::BadName, u"el nombre «%1» contiene «|»"_s.arg(name));
        ListItem& item = items.add(name, fields[Notas]);
        if (!fields[Imagen].isEmpty()) {
            const QImage picture = platform::loadPicture(platform::inAppFolder(fields[Imagen]));
            item.setIcon(images.add(name, picture));
            pictures.insert(name, std::make_shared<MemoryDC>(picture));
            masks.insert(name, fields[ImagenMascara].isEmpty() ? SIN_MASCARA
                                                               : mask(fields[ImagenMascara]));
        }
        item.setSubItem(u"nombre"_s, name);
        item.setSubItem(u"imagen"_s, fields[Imagen]);
        if (kind.hasTerrain) {
            item.setSubItem(u"habitantes"_s, fields[Habitantes]);
            item.setSubItem(u"costo"_s, fields[Costo]);
            item.setSubItem(u"temperatura"_s, fields[Temperatura]);
        }
    }
};

} // namespace

const DefinitionKind& tilesKind()
{
    static const DefinitionKind kind{u"tiles.ini"_s, true, false, tileColumns()};
    return kind;
}

const DefinitionKind& pinesKind()
{
    static const DefinitionKind kind{u"pines.ini"_s, false, true, commonColumns()};
    return kind;
}

const DefinitionKind& tilesLocalesKind()
{
    static const DefinitionKind kind{u"tilesLocales.ini"_s, false, false, commonColumns()};
    return kind;
}

std::optional<int> numberField(const Palette& palette, const QString& name, const QString& field)
{
    const ListItem* const item = palette.items.find(name);
    if (!item || !item->hasSubItem(field))
        return std::nullopt;
    bool isNumber = false;
    const double value =
        std::nearbyint(QString(item->subItem(field)).replace(u',', u'.').toDouble(&isNumber));
    if (!isNumber || !(std::fabs(value) <= std::numeric_limits<std::int16_t>::max()))
        return std::nullopt;
    return static_cast<int>(value);
}

void loadDefinitions(Palette& palette, PictureCollection& pictures, PictureCollection& masks,
                     const platform::OnFault& onFault)
{
    const TextFile file =
        platform::readTextFile(platform::inAppFolder(u"ini\\"_s + palette.kind.file));
    Definitions loaded;
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const QString& line = file.lines[i];
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        try {
            loaded.add(palette.kind, line);
        } catch (const Error& error) {
            onFault(file.errorAt(i, error.description, error.number));
        }
    }
    palette.images = std::move(loaded.images);
    palette.items.swapItems(loaded.items);
    pictures = std::move(loaded.pictures);
    masks = std::move(loaded.masks);
}
