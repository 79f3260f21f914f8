#include "worldmap/map_document.h"

#include "worldmap/map_area.h"
#include "worldmap/map_block.h"
#include "worldmap/map_file.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString cellsText(const QString& verb, std::size_t cells)
{
    return verb + (cells == 1 ? u" una casilla"_s : u" %1 casillas"_s.arg(cells));
}

const QString painting = u"pintar"_s; // what strokes are called

} // namespace

/// A change in the history.
class MapDocument::Step final : public History::Step
{
public:
    Step(MapDocument& document, MapChange change, const QString& text)
        : History::Step(document.history_, text),
          document_(&document),
          change_(std::move(change))
    {
    }

    /// Adds a change that was done just now.
    void append(MapChange later)
    {
        change_.append(std::move(later));
        count();
    }
    std::size_t cells() const { return change_.tiles.size(); }
    /// The map of the step is another file's.
    void exchangeFile(const platform::KnownFile& file) { file_ = file; }

protected:
    void exchange() override
    {
        change_.exchange(document_->map_);
        if (file_ && file_->path != document_->archivo_.path) // of one file the last is known
            std::swap(document_->archivo_, *file_);
        document_->announce(change_, std::exchange(isNews_, false));
    }
    void forget() override { change_ = {}; }
    qint64 bytes() const override { return change_.bytes(); }

private:
    MapDocument* document_;
    MapChange change_;
    std::optional<platform::KnownFile> file_;
    bool isNews_ = true; ///< until it is done
};

MapDocument::MapDocument()
{
    connect(&history_, &History::changed, this, &MapDocument::historyChanged);
}

void MapDocument::beginAnew(WorldMap map, const platform::KnownFile& file)
{
    tellReplaced();
    isInStroke_ = false;
    strokeStep_ = nullptr;
    history_.clear();
    map_ = std::move(map);
    archivo_ = file;
    beganAnew_ = true;
    emit replaced();
}

bool MapDocument::isStartingGrid() const
{
    return !beganAnew_ && map_.mapaPines.empty() &&
           std::all_of(map_.mapaTiles.begin(), map_.mapaTiles.end(),
                       [](const QString& tile) { return tile.isEmpty(); });
}

void MapDocument::newMapa(WorldMap map)
{
    beginAnew(std::move(map), {});
    history_.resetClean(); // it has no file yet
    mapaCambiado_ = true;
}

void MapDocument::openMapa(WorldMap map, const platform::KnownFile& file)
{
    beginAnew(std::move(map), file);
}

void MapDocument::generate(WorldMap map)
{
    tellReplaced();
    MapChange change;
    change.whole = std::move(map);
    push(std::move(change), u"generar un mundo"_s);
    mapaCambiado_ = true;
}

void MapDocument::recover(WorldMap map, const platform::KnownFile& file)
{
    endStroke();
    tellReplaced();
    MapChange change;
    change.whole = std::move(map);
    auto step = std::make_unique<Step>(*this, std::move(change), u"recuperar un mapa"_s);
    step->exchangeFile(file);
    history_.push(std::move(step));
    mapaCambiado_ = true;
}

bool MapDocument::bringBack(WorldMap map, const QString& text)
{
    if (map == map_)
        return false;
    tellReplaced();
    MapChange whole;
    whole.whole = std::move(map);
    change(std::move(whole), text);
    return true;
}

void MapDocument::tellReplaced()
{
    if (!history_.isClean())
        emit unsavedReplaced(map_);
}

platform::Saved MapDocument::saveMapa()
{
    platform::Saved saved = saveMapFile(map_, archivo_);
    closeStrokeStep(); // or it would go on changing what the file is known to hold
    history_.setClean();
    mapaCambiado_ = false;
    return saved;
}

void MapDocument::beginStroke()
{
    endStroke();
    isInStroke_ = true;
}

void MapDocument::endStroke()
{
    isInStroke_ = false;
    closeStrokeStep();
}

/// The next change, of the same stroke or not, is a further step.
void MapDocument::closeStrokeStep()
{
    if (Step* const step = std::exchange(strokeStep_, nullptr)) {
        step->setText(cellsText(painting, step->cells()));
        emit historyChanged();
    }
}

void MapDocument::paint(std::span<const QPoint> cells, const QString& tile)
{
    paintCells(cells, tile, painting);
}

void MapDocument::fill(QPoint cell, const QString& tile)
{
    endStroke();
    paintCells(connectedArea(map_, cell), tile, u"rellenar"_s);
}

void MapDocument::paintCells(std::span<const QPoint> cells, const QString& tile,
                             const QString& verb)
{
    MapChange change;
    change.tiles.reserve(cells.size());
    std::vector<MapChange::Tile> asTheyAre;
    bool isDrawn = false;
    for (const QPoint cell : cells) {
        isDrawn = isDrawn || !map_.placeAt(cell);
        if (map_.tileAt(cell) == tile)
            asTheyAre.push_back({cell, tile});
        else
            change.setTile(cell, tile);
    }
    if (std::exchange(strokeTile_, tile) != tile)
        closeStrokeStep(); // so that each of its cells changes once
    if (!change.isEmpty() && strokeStep_) {
        change.exchange(map_);
        announce(change, true);
        strokeStep_->append(std::move(change));
    } else if (!change.isEmpty()) {
        const QString text = cellsText(verb, change.tiles.size());
        auto step = std::make_unique<Step>(*this, std::move(change), text);
        strokeStep_ = isInStroke_ ? step.get() : nullptr;
        history_.push(std::move(step));
    }
    if (!asTheyAre.empty())
        emit tilesChanged(asTheyAre);
    mapaCambiado_ = mapaCambiado_ || isDrawn; // under a place only the map knows
}

void MapDocument::setPlace(QPoint cell, const Place& place)
{
    const bool isNew = !map_.placeAt(cell);
    MapChange change;
    change.setPlace(cell, place);
    push(std::move(change), (isNew ? u"poner «%1»"_s : u"editar «%1»"_s).arg(place.name));
    mapaCambiado_ = mapaCambiado_ || isNew;
}

void MapDocument::removePlace(QPoint cell)
{
    const Place* const place = map_.placeAt(cell);
    if (!place)
        return;
    MapChange removal;
    removal.removePlace(cell);
    change(std::move(removal), u"eliminar «%1»"_s.arg(place->name));
}

void MapDocument::movePlace(QPoint from, QPoint to)
{
    const Place* const place = map_.placeAt(from);
    if (!place || map_.placeAt(to) || !map_.contains(to))
        return;
    MapChange move;
    move.removePlace(from);
    move.setPlace(to, *place);
    change(std::move(move), u"mover «%1»"_s.arg(place->name));
}

void MapDocument::setPin(QPoint cell, const QString& pin)
{
    const Place* const place = map_.placeAt(cell);
    if (!place)
        return;
    MapChange exchange;
    exchange.setPlace(cell, {pin, place->name, place->notes});
    change(std::move(exchange), u"cambiar el pin de «%1»"_s.arg(place->name));
}

void MapDocument::paste(const WorldMap& block, QPoint corner)
{
    MapChange pasted = pasteBlock(map_, block, corner);
    const QString text = cellsText(u"pegar"_s, pasted.tiles.size());
    change(std::move(pasted), text);
}

void MapDocument::clear(const QRect& cells, const QString& tile)
{
    MapChange clearing;
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column) {
            clearing.setTile({column, row}, tile);
            if (map_.placeAt({column, row}))
                clearing.removePlace({column, row});
        }
    }
    const QString text = cellsText(u"cortar"_s, clearing.tiles.size());
    change(std::move(clearing), text);
}

void MapDocument::setProperties(const MapProperties& properties)
{
    MapChange change;
    change.properties = properties;
    push(std::move(change), u"cambiar las propiedades"_s);
}

void MapDocument::rename(const QString& name)
{
    map_.nombre = name;
    emit propertiesChanged();
}

void MapDocument::change(MapChange change, const QString& text)
{
    if (push(std::move(change), text))
        mapaCambiado_ = true;
}

bool MapDocument::push(MapChange change, const QString& text)
{
    endStroke();
    change.leaveOutIdle(map_);
    if (change.isEmpty())
        return false;
    history_.push(std::make_unique<Step>(*this, std::move(change), text));
    return true;
}

void MapDocument::announce(const MapChange& change, bool isNews)
{
    if (change.whole) {
        emit replaced();
        return;
    }
    std::vector<QPoint> sorted;
    if (!change.places.empty()) {
        for (const MapChange::Tile& tile : change.tiles)
            sorted.push_back(tile.cell);
        std::sort(sorted.begin(), sorted.end(), RowMajor());
    }
    // The change holds now what the map held.
    std::vector<PlaceChange> places;
    for (const MapChange::Site& site : change.places)
        places.push_back({site.cell, site.place.empty() ? QString() : site.place.mapped().pin,
                          std::binary_search(sorted.begin(), sorted.end(), site.cell, RowMajor())});
    if (!change.tiles.empty())
        emit tilesChanged(change.tiles);
    if (!places.empty())
        emit placesChanged(places, isNews);
    if (change.properties)
        emit propertiesChanged();
}

void MapDocument::undo()
{
    endStroke();
    if (!canUndo())
        return;
    history_.undo();
    mapaCambiado_ = !history_.isClean();
}

void MapDocument::redo()
{
    endStroke();
    if (!canRedo())
        return;
    history_.redo();
    mapaCambiado_ = !history_.isClean();
}
