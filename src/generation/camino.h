#pragma once

#include "platform/gdi/memory_dc.h"

#include <QString>

/// Draws a road over a map's back buffer: a line through the centres of the cells of a route text.
void drawCamino(platform::MemoryDC& buffer, const QString& route);
