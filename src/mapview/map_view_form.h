#pragma once

#include "mapview/map_geometry.h"
#include "mapview/map_picture.h"
#include "mapview/overlay.h"
#include "mapview/reduced_picture.h"
#include "mapview/viewport.h"
#include "platform/forms/commands.h"
#include "platform/forms/picture_box.h"

#include <QScrollBar>
#include <QTimer>
#include <optional>
#include <vector>

/// The map that a view shows. All of it must outlive the view, or be taken from it.
struct MapScene {
    const MapPicture* picture = nullptr;
    std::function<std::unique_ptr<MapGeometry>()> geometry; ///< of the map as it is now
    int* currX = nullptr;                                   ///< the first visible cell
    int* currY = nullptr;
    /// A cell in words, for those who hear it.
    std::function<QString(QPoint cell)> spoken;
    /// Whether the view goes on when what the pointer drags comes to its edge.
    std::function<bool()> followsDrag = [] { return false; };
};

/// Shows a part of a map's picture, or all of it reduced, at whole-number zooms: with scroll bars
/// in the margins around it, wheel, drags with the middle button, keys, a cell cursor for the
/// keyboard, and overlays.
class MapView : public platform::PictureBox
{
    Q_OBJECT

public:
    explicit MapView(QWidget* parent = nullptr);

    void setScene(MapScene scene);
    /// Brings the part of the picture that begins at the first visible cell to the screen. Throws
    /// as MapPicture does.
    void showMap();
    /// The same of another map, or of one of another size.
    void showAnew();
    /// The same, exactly from the first visible cell's corner.
    void showFromCell();
    /// Brings a part of the picture that was drawn again to the screen.
    void showPart(const QRect& part);
    void setOverlays(std::vector<Overlay> overlays);

    const Viewport& viewport() const { return viewport_; }
    /// The part of the picture in the view, in pixels of the picture.
    QRect seen() const { return viewport_.seen(); }
    QSizeF seenSize() const { return viewport_.seenSize(); }
    /// How far the view's corner is inside the first visible cell, in pixels of the picture.
    QPoint cornerInCell() const;
    /// Where a part of the picture is in the widget.
    QRect inWidget(const QRect& part) const;
    QRect cellInWidget(QPoint cell) const
    {
        return geometry_ ? inWidget(geometry_->cellRect(cell)) : QRect();
    }

    /// The zoom in words.
    QString zoomText() const;
    void zoomBy(int steps, std::optional<QPoint> place = {});
    void setZoom(int zoom);
    void setWhole(bool isWhole);
    /// Moves the view so that a pixel of the picture is in its middle.
    void centreOn(QPoint pixel);
    /// Moves the view by pixels of the picture.
    void scrollBy(QPoint pixels);

    /// The cell that the keyboard has come to, while it is used.
    std::optional<QPoint> cursor() const { return cursor_; }
    /// Takes the keyboard's cursor to a cell, and the view with it.
    void setCursorCell(QPoint cell);
    /// The cell that a screen reader is told about.
    QPoint spokenCell() const { return cursor_.value_or(lastCell_); }
    QString spokenText() const;

    /// The commands that every map's view has: acercar, alejar, tamanoNatural and mapaEntero.
    std::vector<platform::Command> commands();

signals:
    /// The pointer, or the keyboard in its place, is at a pixel of the picture.
    void pointed(QPoint pixel, Qt::MouseButtons held, Qt::KeyboardModifiers keys);
    /// The view shows another part, or shows it another way.
    void moved();
    /// A double click in the whole map went to its place; its first click has done its work.
    void wentThere();
    void zoomChanged();

protected:
    QSize surfaceSize() const override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QPoint screenPixel(QPointF position) const;
    void takeRoom();
    void applyViewport();
    void readFirstCell();
    void drawSurface();
    void drawWhole();
    void fillWhole();
    void copyWhole(const QRect& part);
    void repoint();
    void showBars();
    void layOutBars();
    void barMoved();
    void emitPointed(QPointF position, Qt::MouseButtons held, Qt::KeyboardModifiers keys);
    void scrollOn();

    // The keyboard.
    bool isCursorKey(const QKeyEvent& key) const;
    bool moveByKey(const QKeyEvent& key);
    bool moveCursorByKey(const QKeyEvent& key);
    void moveCursor(QPoint by, Qt::KeyboardModifiers keys);
    void clickAtCursor(Qt::MouseButton button);
    void beginCursor();
    void keepCursorInView();
    void hideCursor();
    void pointAtCursor(Qt::MouseButtons held);
    void endKeyDrag();
    void revealCell(QPoint cell);

    MapScene scene_;
    std::unique_ptr<MapGeometry> geometry_;
    Viewport viewport_;
    QPoint first_{-1, -1}; ///< the first visible cell as it was last shown
    ReducedPicture whole_;
    std::optional<QPoint> before_; ///< the corner of the view before all was shown
    QTimer filling_;
    std::vector<Overlay> overlays_;
    QScrollBar* horizontal_;
    QScrollBar* vertical_;

    QPoint lastCell_;                 ///< under the pointer
    bool isReleaseSwallowed_ = false; ///< of a double click that went elsewhere
    std::optional<QPoint> panned_;    ///< the pixel of the picture that the middle button holds
    QPointF wheelRest_;               ///< of the wheel's way, what wasn't enough for a pixel
    int zoomRest_ = 0;
    QTimer scrollingOn_;
    QPointF dragged_; ///< where the pointer drags
    Qt::KeyboardModifiers dragKeys_;
    std::optional<QPoint> cursor_;
    QPoint restingPointer_; ///< on the screen, when the cursor was last moved
    bool isKeyDrag_ = false;
};
