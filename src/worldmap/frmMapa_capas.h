#pragma once

#include "mapview/overlay.h"
#include "worldmap/inhabitants.h"
#include "worldmap/world_map.h"

#include <QRect>
#include <QSet>
#include <QString>
#include <optional>
#include <vector>

/// The overlays of the map window that its menu Ver turns on and off, each by the key of its
/// command. What they show of the map is found out when it is first wanted, and again once it is
/// forgotten.
class MapaCapas
{
public:
    explicit MapaCapas(const WorldMap& map) : map_(&map) {}

    static const QStringList& keys();

    bool isOn(const QString& key) const { return on_.contains(key); }
    /// Throws Error, with the overlay off, when the map has nothing to show.
    void turn(const QString& key, bool on);

    void forgetTerrain();
    void forgetPlaces();
    void forgetAll();
    /// The overlays that are on. One that can't be shown any more goes off; the reason is told.
    std::vector<Overlay> overlays(QString& problem);

    /// The inhabitants of some cells or of all, while they are shown; else nothing.
    QString statusText(const std::optional<QRect>& cells);

private:
    void find(const QString& key);
    CellColours besideClimate(CellColours colours) const;

    const WorldMap* map_;
    QSet<QString> on_;
    std::optional<PlaceNames> names_;
    std::optional<CellColours> climate_;
    std::optional<CellColours> inhabitants_;
    std::optional<std::optional<QRect>> countedCells_;
    QString counted_; ///< of those cells
};
