#include "mapview/overlay.h"

#include <QPainter>

namespace {

/// A scale bar is nothing but a key.
void draw(QPainter& /*painter*/, const MapGeometry& /*geometry*/, const MapFrame& /*frame*/,
          const ScaleBar& /*bar*/)
{
}

void drawInto(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
              const Overlay& overlay)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    std::visit([&](const auto& value) { draw(painter, geometry, frame, value); }, overlay);
    painter.restore();
}

void drawKeys(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
              std::span<const Overlay> overlays)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    int keys = 0;
    for (const Overlay& overlay : overlays) {
        if (const auto* const colours = std::get_if<CellColours>(&overlay))
            drawKey(painter, frame, *colours, keys++);
        else if (const auto* const bar = std::get_if<ScaleBar>(&overlay))
            drawBar(painter, geometry, frame, *bar);
    }
    painter.restore();
}

} // namespace

void drawOverlay(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                 const Overlay& overlay)
{
    drawOverlays(painter, geometry, frame, {&overlay, 1});
}

void drawOverlays(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                  std::span<const Overlay> overlays)
{
    for (const Overlay& overlay : overlays)
        drawInto(painter, geometry, frame, overlay);
    drawKeys(painter, geometry, frame, overlays);
}
