#pragma once

#include "platform/core/grid.h"
#include "worldmap/definitions.h"

#include <QString>

/// A way on foot.
struct Journey {
    double kilometres = 0;
    double days = 0;
};

/// The way along a route text, at that many kilometres from a cell's centre to the next. Who walks
/// makes 30 km a day on terrain of cost 2, and in proportion on others.
Journey journeyAlong(const platform::Grid<QString>& tiles, const QString& route,
                     const Palette& palette, double kilometresPerCell);

/// "60 km, 2,5 días a pie".
QString journeyText(const Journey& journey);
