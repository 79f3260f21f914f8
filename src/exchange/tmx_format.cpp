// The map for the tile editor Tiled, with the pictures of its tiles beside it.
#include "exchange/map_formats.h"
#include "exchange/tmx_grid.h"
#include "worldmap/name_cache.h"

#include <QFileInfo>
#include <QPainter>
#include <QXmlStreamWriter>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize cellSize(hex::cellWidth, hex::cellHeight);

/// The definitions of a palette that have a picture, in its order.
struct Tileset {
    Tileset(const QString& title, const Palette& palette, const PictureCollection& all,
            const PictureCollection& masks, int first, const QString& map)
        : title(title),
          firstGid(first),
          file(QFileInfo(map).completeBaseName() + u'-' + title.toLower() + u".png"_s),
          path(QFileInfo(map).path() + u'/' + file),
          pictures(&all),
          masks(&masks)
    {
        for (int i = 0; i < palette.items.count(); ++i) {
            if (const QString name = palette.items.at(i).key(); all.contains(name))
                names.append(name);
        }
        columns = std::max(1, static_cast<int>(std::ceil(std::sqrt(names.size()))));
        rows = std::max(1, static_cast<int>((names.size() + columns - 1) / columns));
    }

    /// Tiled numbers the tilesets anew where fewer tiles than these are declared.
    int tileCount() const { return columns * rows; }
    int gidOf(const QString& name) const
    {
        const qsizetype position = names.indexOf(name);
        return position < 0 ? 0 : firstGid + static_cast<int>(position);
    }

    /// All pictures in one, transparent where their masks leave what is below.
    QImage sheet() const
    {
        QImage sheet(columns * cellSize.width(), rows * cellSize.height(), QImage::Format_ARGB32);
        sheet.fill(Qt::transparent);
        for (int i = 0; i < names.size(); ++i) {
            const QPoint corner(i % columns * cellSize.width(), i / columns * cellSize.height());
            const QImage& picture = pictures->value(names[i])->image();
            const auto mask = masks->value(names[i]);
            for (int y = 0; y < cellSize.height(); ++y) {
                for (int x = 0; x < cellSize.width(); ++x) {
                    const bool isInPicture = picture.rect().contains(x, y);
                    const bool isOpaque =
                        isInPicture && (!mask || !mask->image().rect().contains(x, y) ||
                                        (mask->image().pixel(x, y) & RGB_MASK) == 0);
                    if (isOpaque)
                        sheet.setPixel(corner + QPoint(x, y), picture.pixel(x, y) | ~RGB_MASK);
                }
            }
        }
        return sheet;
    }

    QString title;
    int firstGid;
    QString file; ///< beside the map
    QString path;
    const PictureCollection* pictures;
    const PictureCollection* masks;
    QStringList names;
    int columns = 1;
    int rows = 1;
};

class TmxWriter
{
public:
    TmxWriter(QIODevice& file, const WorldMap& map) : file_(file), xml_(&file), map_(map)
    {
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(1);
    }

    void write(const Tileset& terrain, const Tileset& pins, const Advance& advance)
    {
        xml_.writeStartDocument();
        begin(u"map"_s, {{u"version"_s, u"1.8"_s},
                         {u"orientation"_s, u"hexagonal"_s},
                         {u"renderorder"_s, u"right-down"_s},
                         {u"width"_s, number(map_.ancho())},
                         {u"height"_s, number(map_.alto())},
                         {u"tilewidth"_s, number(tmx::tileSize)},
                         {u"tileheight"_s, number(tmx::tileSize)},
                         {u"infinite"_s, u"0"_s},
                         {u"hexsidelength"_s, number(tmx::hexSide)},
                         {u"staggeraxis"_s, u"x"_s},
                         {u"staggerindex"_s, u"odd"_s},
                         {u"backgroundcolor"_s, u"#000000"_s},
                         {u"nextlayerid"_s, u"3"_s},
                         {u"nextobjectid"_s, number(static_cast<int>(map_.mapaPines.size()) + 1)}});
        begin(u"properties"_s);
        property(u"latNorte"_s, number(map_.latNorte), u"int"_s);
        property(u"latSur"_s, number(map_.latSur), u"int"_s);
        property(u"nombre"_s, map_.nombre);
        property(u"notas"_s, map_.notasMapa);
        xml_.writeEndElement();
        writeTileset(terrain);
        writeTileset(pins);
        writeTerrain(terrain, advance);
        writePlaces(pins);
        xml_.writeEndElement();
        xml_.writeEndDocument();
    }

private:
    using Attributes = std::initializer_list<std::pair<QString, QString>>;

    /// A text without what no XML file can hold.
    static QString plain(QString text)
    {
        return text.removeIf([](QChar c) {
            return (c < u' ' && c != u'\t' && c != u'\n') || c == QChar(0xFFFE) ||
                   c == QChar(0xFFFF);
        });
    }

    static QString number(int value) { return QString::number(value); }

    void begin(const QString& element, Attributes attributes = {})
    {
        xml_.writeStartElement(element);
        for (const auto& [name, value] : attributes)
            xml_.writeAttribute(name, plain(value));
    }

    void property(const QString& name, const QString& value, const QString& type = {})
    {
        begin(u"property"_s, {{u"name"_s, name}});
        if (!type.isEmpty())
            xml_.writeAttribute(u"type"_s, type);
        if (value.contains(u'\n')) // as Tiled has it, whose readers join an attribute's lines
            xml_.writeCharacters(plain(value));
        else
            xml_.writeAttribute(u"value"_s, plain(value));
        xml_.writeEndElement();
    }

    void writeTileset(const Tileset& tileset)
    {
        begin(u"tileset"_s, {{u"firstgid"_s, number(tileset.firstGid)},
                             {u"name"_s, tileset.title},
                             {u"tilewidth"_s, number(cellSize.width())},
                             {u"tileheight"_s, number(cellSize.height())},
                             {u"tilecount"_s, number(tileset.tileCount())},
                             {u"columns"_s, number(tileset.columns)}});
        begin(u"image"_s, {{u"source"_s, tileset.file},
                           {u"width"_s, number(tileset.columns * cellSize.width())},
                           {u"height"_s, number(tileset.rows * cellSize.height())}});
        xml_.writeEndElement();
        for (int i = 0; i < tileset.names.size(); ++i) {
            begin(u"tile"_s, {{u"id"_s, number(i)}, {u"type"_s, tileset.names[i]}});
            xml_.writeEndElement();
        }
        xml_.writeEndElement();
    }

    void writeTerrain(const Tileset& terrain, const Advance& advance)
    {
        begin(u"layer"_s, {{u"id"_s, u"1"_s},
                           {u"name"_s, tmx::terrainLayer},
                           {u"width"_s, number(map_.ancho())},
                           {u"height"_s, number(map_.alto())}});
        begin(u"data"_s, {{u"encoding"_s, u"csv"_s}});
        xml_.writeCharacters(u"\n"_s); // which also ends the element's start tag
        NameCache<QByteArray> gids;
        const auto gidText = [&](const QString& tile) {
            return QByteArray::number(tile.isEmpty() ? 0 : terrain.gidOf(tile)) + ',';
        };
        QByteArray line;
        for (int row = 0; row < map_.alto(); ++row) {
            advance(static_cast<double>(row) / map_.alto());
            line.clear();
            for (int column = 0; column < map_.ancho(); ++column)
                line += gids.find(map_.mapaTiles(row, column), gidText);
            if (row == map_.alto() - 1)
                line.chop(1);
            file_.write(line + '\n'); // past the XML writer, which looks at every letter
        }
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void writePlaces(const Tileset& pins)
    {
        begin(u"objectgroup"_s, {{u"id"_s, u"2"_s}, {u"name"_s, tmx::placesLayer}});
        int id = 0;
        for (const auto& [cell, place] : map_.mapaPines) {
            const QPoint corner = tmx::objectAt(cell);
            begin(u"object"_s, {{u"id"_s, number(++id)},
                                {u"name"_s, place.name},
                                {u"type"_s, tmx::placeType},
                                {u"gid"_s, number(pins.gidOf(place.pin))},
                                {u"x"_s, number(corner.x())},
                                {u"y"_s, number(corner.y())},
                                {u"width"_s, number(cellSize.width())},
                                {u"height"_s, number(cellSize.height())}});
            if (!place.notes.isEmpty()) {
                begin(u"properties"_s);
                property(u"notas"_s, place.notes);
                xml_.writeEndElement();
            }
            xml_.writeEndElement();
        }
        xml_.writeEndElement();
    }

    QIODevice& file_;
    QXmlStreamWriter xml_;
    const WorldMap& map_;
};

} // namespace

void writeTmx(ExportFiles& files, ExportedMap& exported, const ExportOptions& /*options*/,
              const Advance& advance)
{
    const MapPictures& pictures = exported.pictures();
    const Tileset terrain(tmx::terrainLayer, exported.tiles(), pictures.colTiles,
                          pictures.colMascarasTiles, 1, files.path());
    const Tileset pins(u"Pines"_s, exported.pins(), pictures.colPines, pictures.colMascarasPines,
                       1 + terrain.tileCount(), files.path());
    TmxWriter(files.main(), exported.map()).write(terrain, pins, advance);
    for (const Tileset* const tileset : {&terrain, &pins})
        tileset->sheet().save(&files.add(tileset->path), "PNG");
}
