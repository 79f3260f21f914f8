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
    /// The window served: the one that showed the minimap last.
    const MapWindow* formMapa = nullptr;

    /// Shows the minimap for a map window, above all other windows.
    void serve(const MapWindow& map);
    /// Takes the minimap off the screen, and the button that shows it with it.
    void dismiss();

    /// Draws a map from its back buffer, and the selector over what a view of that size, in pixels
    /// of the buffer, shows of it. While another window is served nothing is drawn.
    void draw(const MapWindow& map, const platform::MemoryDC& buffer, QSize view);
    /// Brings a changed part of the back buffer, drawn before, into the picture.
    void redraw(const MapWindow& map, const platform::MemoryDC& buffer, QRect changed);

protected:
    void Form_Load() override;
    void closeBox() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    bool serves(const MapWindow& map) const { return !formMapa || formMapa == &map; }
    void moverVista(QPointF position);

    QPoint lastPosition_;
    QSizeF selectorSize_; ///< in pixels of the minimap, unrounded
};

FrmMinimap& frmMinimap();
