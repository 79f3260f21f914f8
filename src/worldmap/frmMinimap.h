#pragma once

#include "mapview/reduced_picture.h"
#include "platform/forms/form.h"
#include "ui_frmMinimap.h"
#include "worldmap/map_window.h"

#include <QPointF>
#include <QTimer>

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

    /// What is to be seen of a map.
    struct Look {
        const MapPicture& picture;
        QSize proportions; ///< the part of the picture that is shown: its last pixels may be cut
        QSizeF seen;       ///< what the view shows of it, in its pixels
        QPoint inCell;     ///< how far the view begins inside its first cell
    };
    /// Shows a map, and the selector over what its view shows. A picture that didn't change isn't
    /// drawn again. While another window is served nothing is drawn.
    void draw(const MapWindow& map, const Look& look);
    /// Brings a part of the picture that was drawn again in.
    void redraw(const MapWindow& map, const MapPicture& picture, const QRect& changed);

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void closeBox() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    bool serves(const MapWindow& map) const { return !formMapa || formMapa == &map; }
    void moverVista(QPointF position);
    void showSelector(const MapWindow& map, const Look& look);
    void fill();

    QPoint lastPosition_;
    ReducedPicture reduced_;
    const MapPicture* picture_ = nullptr; ///< that is being filled in
    QTimer filling_;
    QSizeF selectorSize_; ///< in pixels of the minimap, unrounded
};

FrmMinimap& frmMinimap();
