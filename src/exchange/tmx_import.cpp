// A map of the tile editor Tiled, as it was written here and changed there.
#include "exchange/import_faults.h"
#include "exchange/map_import.h"
#include "exchange/tmx_grid.h"
#include "platform/core/error.h"
#include "platform/core/text_file.h"
#include "worldmap/map_file.h"

#include <QXmlStreamReader>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// A tile that was turned has one of these in its number.
constexpr quint32 turnedBits = 0xF0000000U;

/// The name of a definition, and what it is of.
struct TileName {
    enum class Kind { None, Terrain, Pin };
    Kind kind = Kind::None;
    QString name{};
};

class TmxReader
{
public:
    TmxReader(const QString& path, const MapPictures& pictures)
        : faults_(path),
          pictures_(pictures),
          xml_(platform::readFile(path, platform::maxTextFileBytes))
    {
    }

    WorldMap read()
    {
        while (!xml_.atEnd() && !xml_.isStartElement()) {
            xml_.readNext();
            if (xml_.isDTD()) { // whose entities could grow beyond all bounds
                fail(u"un mapa de Tiled no lleva DOCTYPE"_s);
                faults_.check();
            }
        }
        if (xml_.name() == u"map")
            readMap();
        else if (!xml_.hasError())
            fail(u"no es un mapa de Tiled"_s);
        if (xml_.hasError())
            fail(unreadable());
        faults_.check();
        if (places_)
            map_.mapaPines = places_->take();
        return std::move(map_);
    }

private:
    void fail(const QString& reason) { faults_.add(xml_.lineNumber(), reason); }
    QString unreadable() const { return u"el archivo está cortado o no es XML correcto"_s; }

    QString attribute(const QString& name) const
    {
        return xml_.attributes().value(name).toString();
    }

    int number(const QString& name)
    {
        bool isNumber = false;
        const int value = attribute(name).toInt(&isNumber);
        if (!isNumber)
            fail(u"<%1>: «%2» no es un número entero"_s.arg(xml_.name(), name));
        return isNumber ? value : 0;
    }

    /// Each child element in turn; whatever it leaves of it is passed over.
    template <typename Read>
    void forChildren(const Read& read)
    {
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
            case QXmlStreamReader::StartElement: {
                read(xml_.name().toString());
                break;
            }
            case QXmlStreamReader::EndElement:
                return;
            default:
                break;
            }
        }
    }

    void readMap()
    {
        const std::array<std::pair<QString, QString>, 6> wanted{
            {{u"orientation"_s, u"hexagonal"_s},
             {u"staggeraxis"_s, u"x"_s},
             {u"staggerindex"_s, u"odd"_s},
             {u"tilewidth"_s, QString::number(tmx::tileSize)},
             {u"tileheight"_s, QString::number(tmx::tileSize)},
             {u"hexsidelength"_s, QString::number(tmx::hexSide)}}};
        for (const auto& [name, value] : wanted) {
            if (attribute(name) != value)
                fail(u"<map>: «%1» ha de ser «%2», y es «%3»"_s.arg(name, value,
                                                                    attribute(name).left(40)));
        }
        if (attribute(u"infinite"_s) == u"1")
            fail(u"<map>: el mapa es infinito; quítelo en sus propiedades"_s);
        const int width = number(u"width"_s);
        const int height = number(u"height"_s);
        if (const auto problem = mapSizeProblem(height, width)) {
            fail(*problem);
            faults_.check();
        }
        map_.mapaTiles = platform::Grid<QString>(height, width);
        places_.emplace(QSize(width, height), pictures_, faults_);
        forChildren([this](const QString& element) { readPart(element); });
        if (!hasTerrain_ && !xml_.hasError())
            fail(u"<map>: falta la capa de terreno"_s);
    }

    void readPart(const QString& element)
    {
        if (element == u"properties")
            readMapProperties();
        else if (element == u"tileset")
            readTileset();
        else if (element == u"layer")
            readLayer();
        else if (element == u"objectgroup")
            readObjects();
        else {
            if (element != u"editorsettings")
                fail(u"<%1>: aquí no puede estar"_s.arg(element.left(40)));
            xml_.skipCurrentElement();
        }
    }

    /// The values of <properties>, by their names.
    QHash<QString, QString> readProperties()
    {
        QHash<QString, QString> values;
        forChildren([&](const QString& element) {
            if (element != u"property")
                return xml_.skipCurrentElement();
            const QString name = attribute(u"name"_s);
            const bool isAttribute = xml_.attributes().hasAttribute(u"value"_s);
            const QString value = attribute(u"value"_s);
            const QString text = xml_.readElementText(QXmlStreamReader::SkipChildElements);
            values.insert(name, isAttribute ? value : text);
        });
        return values;
    }

    void readMapProperties()
    {
        const QHash<QString, QString> values = readProperties();
        const auto latitude = [&](const QString& name) {
            bool isNumber = false;
            const int value = values.value(name, u"0"_s).toShort(&isNumber);
            if (!isNumber)
                fail(u"la propiedad «%1» no es un número entero"_s.arg(name));
            return value;
        };
        map_.nombre = values.value(u"nombre"_s);
        map_.latNorte = latitude(u"latNorte"_s);
        map_.latSur = latitude(u"latSur"_s);
        map_.notasMapa = values.value(u"notas"_s);
    }

    void readTileset()
    {
        const int first = number(u"firstgid"_s);
        if (xml_.attributes().hasAttribute(u"source"_s)) {
            fail(u"<tileset>: el conjunto «%1» está en otro archivo; incrústelo en el mapa"_s.arg(
                attribute(u"source"_s).left(40)));
            return xml_.skipCurrentElement();
        }
        if (number(u"tilewidth"_s) != hex::cellWidth || number(u"tileheight"_s) != hex::cellHeight)
            fail(u"<tileset>: sus tiles han de medir %1 × %2"_s.arg(hex::cellWidth)
                     .arg(hex::cellHeight));
        const bool isOfPins = attribute(u"name"_s) == u"Pines";
        forChildren([&](const QString& element) {
            if (element == u"tile") {
                const int id = number(u"id"_s);
                const QString type = attribute(u"type"_s);
                readTile(qint64{first} + id, type.isEmpty() ? attribute(u"class"_s) : type,
                         isOfPins);
            }
            xml_.skipCurrentElement();
        });
    }

    void readTile(qint64 gid, const QString& name, bool isOfPins)
    {
        const PictureCollection& known = isOfPins ? pictures_.colPines : pictures_.colTiles;
        if (name.isEmpty())
            return; // told where it is used
        if (!known.contains(name))
            return fail(u"<tile>: «%1» no está definido o no tiene imagen"_s.arg(name.left(40)));
        names_.insert(gid, {isOfPins ? TileName::Kind::Pin : TileName::Kind::Terrain, name});
    }

    /// What a number of a tile stands for. Nothing, once it is told, where it is none of that kind.
    QString nameOf(quint32 gid, TileName::Kind kind, const QString& where)
    {
        if ((gid & turnedBits) != 0) {
            fail(u"%1: el tile está girado o volteado"_s.arg(where));
            return {};
        }
        const TileName found = names_.value(gid);
        if (found.kind == kind)
            return found.name;
        if (found.kind == TileName::Kind::None)
            fail(u"%1: no hay tile con el número %2"_s.arg(where).arg(gid));
        else
            fail(u"%1: «%2» es %3"_s.arg(where, found.name,
                                         kind == TileName::Kind::Pin ? u"un terreno, no un pin"_s
                                                                     : u"un pin, no un terreno"_s));
        return {};
    }

    void readLayer()
    {
        const bool isFirst = !std::exchange(hasTerrain_, true);
        if (!isFirst) {
            fail(u"<layer>: solo puede haber una capa de tiles, y sobra «%1»"_s.arg(
                attribute(u"name"_s).left(40)));
            return xml_.skipCurrentElement();
        }
        if (number(u"width"_s) != map_.ancho() || number(u"height"_s) != map_.alto())
            fail(u"<layer>: su tamaño no es el del mapa"_s);
        forChildren([&](const QString& element) {
            if (element == u"data")
                readTerrain();
            else
                xml_.skipCurrentElement();
        });
    }

    void readTerrain()
    {
        if (attribute(u"encoding"_s) != u"csv" ||
            xml_.attributes().hasAttribute(u"compression"_s)) {
            fail(u"<data>: la capa está comprimida o en otro formato; en las propiedades del mapa "
                 "elija el formato de capas CSV"_s);
            return xml_.skipCurrentElement();
        }
        const qint64 firstLine = xml_.lineNumber();
        const QString text = xml_.readElementText(QXmlStreamReader::IncludeChildElements);
        if (xml_.hasError())
            return;
        const QList<QStringView> cells = QStringView(text).trimmed().split(u',');
        const qsizetype wanted = qsizetype{map_.ancho()} * map_.alto();
        if (cells.size() != wanted)
            return faults_.add(
                firstLine,
                u"<data>: hay %1 casillas, y el mapa tiene %2"_s.arg(cells.size()).arg(wanted));
        QHash<QStringView, QString> known; // each number is looked up once, each fault told once
        qsizetype position = 0;
        for (QString& tile : map_.mapaTiles) {
            const QStringView cell = cells[position].trimmed();
            auto found = known.constFind(cell);
            if (found == known.cend())
                found = known.insert(cell, terrainOf(cell, position));
            tile = *found;
            ++position;
        }
    }

    QString terrainOf(QStringView cell, qsizetype position)
    {
        bool isNumber = false;
        const quint32 gid = cell.toUInt(&isNumber);
        const QString where =
            u"la casilla X:%1 Y:%2"_s.arg(position % map_.ancho()).arg(position / map_.ancho());
        if (!isNumber) {
            fail(u"%1: «%2» no es un número de tile"_s.arg(where, cell.left(40)));
            return {};
        }
        return gid == 0 ? QString() : nameOf(gid, TileName::Kind::Terrain, where);
    }

    void readObjects()
    {
        forChildren([&](const QString& element) {
            if (element == u"object")
                readObject();
            else
                xml_.skipCurrentElement();
        });
    }

    void readObject()
    {
        const qint64 line = xml_.lineNumber();
        const QString name = attribute(u"name"_s);
        const QString where = u"el objeto «%1»"_s.arg(name.left(40));
        bool isTile = false;
        const quint32 gid = attribute(u"gid"_s).toUInt(&isTile);
        const QPointF corner(attribute(u"x"_s).toDouble(), attribute(u"y"_s).toDouble());
        QString notes;
        forChildren([&](const QString& element) {
            if (element == u"properties")
                notes = readProperties().value(u"notas"_s);
            else
                xml_.skipCurrentElement();
        });
        if (!isTile)
            return faults_.add(line,
                               u"%1 no es un lugar: no tiene la imagen de un pin"_s.arg(where));
        const QString pin = nameOf(gid, TileName::Kind::Pin, where);
        if (!pin.isEmpty())
            places_->add(line, nearestCell(corner), {pin, name, notes});
    }

    /// The cell whose centre is nearest to the middle of a picture with that lower left corner.
    QPoint nearestCell(QPointF corner) const
    {
        constexpr double far = 1e6; // beyond any map, and what its cells can be counted with
        const QPointF bounded(std::clamp(corner.x(), -far, far), std::clamp(corner.y(), -far, far));
        const QPoint near(qFloor(bounded.x() / hex::columnPitch),
                          qFloor(bounded.y() / hex::cellHeight));
        QPoint best = near;
        double shortest = far;
        for (int y = near.y() - 2; y <= near.y() + 1; ++y) {
            for (int x = near.x() - 1; x <= near.x() + 2; ++x) {
                const QPointF way = bounded - tmx::objectAt({x, y});
                if (const double length = std::hypot(way.x(), way.y()); length < shortest) {
                    shortest = length;
                    best = {x, y};
                }
            }
        }
        return best;
    }

    ImportFaults faults_;
    const MapPictures& pictures_;
    QXmlStreamReader xml_;
    WorldMap map_;
    std::optional<ImportedPlaces> places_;
    QHash<qint64, TileName> names_; ///< by the tiles' numbers
    bool hasTerrain_ = false;
};

} // namespace

WorldMap readTmx(const QString& path, const MapPictures& pictures)
{
    return TmxReader(path, pictures).read();
}
