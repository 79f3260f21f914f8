#pragma once

#include "app/history.h"
#include "platform/core/saving.h"
#include "worldmap/map_change.h"
#include "worldmap/world_map.h"

#include <QObject>
#include <span>
#include <vector>

/// The world map being edited: the map itself, the file it came from, and the history of its
/// changes. Every change goes through here; each is one step that can be undone, a stroke of the
/// mouse being one, and each is announced, so that windows follow. What changes nothing is no step.
class MapDocument final : public QObject
{
    Q_OBJECT

public:
    MapDocument();

    const WorldMap& map() const { return map_; }
    /// Whether the map is to be asked about before it is replaced. That isn't whether it differs
    /// from its file: a new name, say, doesn't count.
    bool mapaCambiado() const { return mapaCambiado_; }
    /// Whether there is no map yet, but the empty grid that the program begins with.
    bool isStartingGrid() const;

    // Whole maps. The first two begin anew, with an empty history.
    void newMapa(WorldMap map);
    void openMapa(WorldMap map, const platform::KnownFile& file);
    /// Replaces the map by one that was made for it.
    void generate(WorldMap map);
    /// Replaces the map by one that was never saved, and what is known of its file.
    void recover(WorldMap map, const platform::KnownFile& file);
    /// Replaces the map by an earlier version of it or of another; what is known of its file stays.
    /// Returns whether it was another one than it is.
    bool bringBack(WorldMap map, const QString& text);
    /// Writes the map to its file, and returns what the user is to be told. Throws Error, with
    /// everything as it was.
    platform::Saved saveMapa();
    /// The answer to a map that has no name to be saved under: it no longer counts as changed.
    void giveUpSaving() { mapaCambiado_ = false; }

    /// Paints cells with a tile. Cells that have it already are announced with the others: they are
    /// drawn again.
    void paint(std::span<const QPoint> cells, const QString& tile);
    /// Paints a cell and all that hang together with it and have its tile.
    void fill(QPoint cell, const QString& tile);
    /// What is painted with one tile between these two is one step. Any other change ends a stroke,
    /// too.
    void beginStroke();
    void endStroke();
    bool isInStroke() const { return isInStroke_; }

    /// Puts a place into a cell, new or in place of the one that is there.
    void setPlace(QPoint cell, const Place& place);
    // Of the place that a cell has; a cell without one is let be, and so is a target that has one.
    void removePlace(QPoint cell);
    void movePlace(QPoint from, QPoint to);
    void setPin(QPoint cell, const QString& pin);
    /// Lays a piece over the map, as pasteBlock does.
    void paste(const WorldMap& block, QPoint corner);
    /// Paints a rectangle of cells with a tile and takes its places away.
    void clear(const QRect& cells, const QString& tile);
    void setProperties(const MapProperties& properties);
    /// Gives the map the name that it is to be saved under from now on. This is no step, and no
    /// step takes it back but one that changed the name itself.
    void rename(const QString& name);
    /// Does any change, as a step of that name ("mover un lugar").
    void change(MapChange change, const QString& text);

    bool canUndo() const { return history_.canUndo(); }
    bool canRedo() const { return history_.canRedo(); }
    /// What the next step back or forth is called.
    QString undoText() const { return history_.undoText(); }
    QString redoText() const { return history_.redoText(); }
    void undo();
    void redo();
    const History& history() const { return history_; }
    const platform::KnownFile& archivo() const { return archivo_; }

    /// A cell whose place changed.
    struct PlaceChange {
        QPoint cell;
        QString pinBefore; ///< of the place that it had; empty if it had none
        bool hasNewTile;   ///< its tile changed with it
    };

signals:
    /// Tiles of these cells, given with what they were, changed, or were painted as they are.
    void tilesChanged(const std::vector<MapChange::Tile>& before);
    /// These cells got a place, lost one, or have another one; for the first time, or once more on
    /// the way back or forth.
    void placesChanged(const std::vector<PlaceChange>& changes, bool isNews);
    void propertiesChanged();
    /// A map with changes that aren't in its file is about to be replaced.
    void unsavedReplaced(const WorldMap& map);
    /// It is another map altogether.
    void replaced();
    /// What can be undone and redone changed.
    void historyChanged();

private:
    class Step;
    void closeStrokeStep();
    /// Makes a change a step, and returns whether it was one.
    bool push(MapChange change, const QString& text);
    void paintCells(std::span<const QPoint> cells, const QString& tile, const QString& verb);
    void announce(const MapChange& change, bool isNews);
    void beginAnew(WorldMap map, const platform::KnownFile& file);
    void tellReplaced();

    WorldMap map_;
    platform::KnownFile archivo_;
    bool mapaCambiado_ = false;
    bool beganAnew_ = false; ///< with a map that took the place of the starting grid
    bool isInStroke_ = false;
    Step* strokeStep_ = nullptr; ///< of the stroke that goes on, once it changed something
    QString strokeTile_;
    History history_;
};
