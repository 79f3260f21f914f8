#include "mapview/overlay.h"

#include <QPainter>

namespace {

/// Draws overlays that may know of each other.
class Drawing
{
public:
    Drawing(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
            std::span<const Overlay> overlays)
        : painter_(painter),
          geometry_(geometry),
          frame_(frame),
          overlays_(overlays)
    {
    }

    void drawAll()
    {
        for (const Overlay& overlay : overlays_) {
            painter_.save();
            painter_.setRenderHint(QPainter::Antialiasing);
            std::visit([this](const auto& value) { drawOne(value); }, overlay);
            painter_.restore();
        }
    }

    void drawKeys()
    {
        painter_.save();
        painter_.setRenderHint(QPainter::Antialiasing);
        int keys = 0;
        for (const Overlay& overlay : overlays_) {
            if (const auto* const colours = std::get_if<CellColours>(&overlay))
                drawKey(painter_, frame_, *colours, keys++);
            else if (const auto* const bar = std::get_if<ScaleBar>(&overlay))
                drawBar(painter_, geometry_, frame_, *bar);
        }
        painter_.restore();
    }

private:
    template <typename Value>
    void drawOne(const Value& value)
    {
        draw(painter_, geometry_, frame_, value);
    }

    /// Numbers give way to names.
    void drawOne(const CellNumbers& /*numbers*/)
    {
        std::vector<QRect> taken;
        for (const Overlay& overlay : overlays_) {
            if (const auto* const names = std::get_if<PlaceNames>(&overlay))
                taken = names->taken(geometry_, frame_);
        }
        drawNumbers(painter_, geometry_, frame_, taken);
    }

    /// A scale bar is nothing but a key.
    void drawOne(const ScaleBar& /*bar*/) {}

    QPainter& painter_;
    const MapGeometry& geometry_;
    const MapFrame& frame_;
    std::span<const Overlay> overlays_;
};

} // namespace

void drawOverlay(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                 const Overlay& overlay)
{
    drawOverlays(painter, geometry, frame, {&overlay, 1});
}

void drawLayers(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                std::span<const Overlay> overlays)
{
    if (frame.scale > 0) // else it is a view without any room
        Drawing(painter, geometry, frame, overlays).drawAll();
}

void drawKeys(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
              std::span<const Overlay> overlays)
{
    if (frame.scale > 0)
        Drawing(painter, geometry, frame, overlays).drawKeys();
}

void drawOverlays(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                  std::span<const Overlay> overlays)
{
    drawLayers(painter, geometry, frame, overlays);
    drawKeys(painter, geometry, frame, overlays);
}
