#pragma once

#include "platform/forms/form.h"
#include "ui_frmMinimap.h"
#include "worldmap/map_window.h"

#include <QPointF>

/// The minimap: the whole map of a map window, reduced, with a rectangle that marks what the window
/// shows. Clicking or dragging moves the window's view. Closing it by its box only hides it.
class FrmMinimap final : public platform::Form<Ui::FrmMinimap>
{
public:
    /// The window served; set by it before it shows the minimap.
    const MapWindow* formMapa = nullptr;
    /// Called after the user closed the minimap by its box.
    std::function<void()> closed;

    /// Draws a map from its back buffer, and the selector over what a view of that size, in pixels
    /// of the buffer, shows of it.
    void draw(const MapWindow& map, const platform::MemoryDC& buffer, QSize view);
    /// Brings a changed part of the back buffer, drawn before, into the picture.
    void redraw(const platform::MemoryDC& buffer, QRect changed);

protected:
    void Form_Load() override;
    void closeBox() override;

private:
    void moverVista(QPointF position);

    QPoint lastPosition_;
    QSizeF selectorSize_; ///< in pixels of the minimap, unrounded
};

FrmMinimap& frmMinimap();
