#pragma once

#include "mapview/map_picture.h"

#include <QString>

/// Draws a road over a map's back buffer: a line through the centres of the cells of a route text.
void drawCamino(MapPicture& buffer, const QString& route);
