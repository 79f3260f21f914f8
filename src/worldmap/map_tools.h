#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <optional>

/// The pointer over the map while a tool is in hand: one of the toolkit's own, or a picture.
struct ToolPointer {
    Qt::CursorShape shape;
    const char* picture = nullptr;
    QPoint hotSpot{}; ///< in pixels of the picture
};

/// The map window's tools, beside its editing mode: what is set for them, and what the pointer is
/// in the middle of. Cells are map coordinates.
struct MapTools {
    static constexpr int largestBrush = 5;

    /// What the left button does from its press to its release.
    enum class Gesture { None, Stroke, Fill, Place, Select, Used };

    int brushRadius = 0;    ///< in cells round the one under the pointer
    bool isFilling = false; ///< in place of the brush
    bool isSelecting = false;
    bool isPicking = false;       ///< the next click chooses what it meets in its palette
    std::optional<QPoint> moving; ///< the place that the next click moves
    std::optional<QRect> selection;
    bool isZoomNew = false; ///< until the pointer goes on; then only one that isn't natural is told
    int revisionAtPress = 0; ///< of the document, when the gesture began
    QString outcome;         ///< what came of the last thing done, until the next is begun

    Gesture gesture = Gesture::None;
    bool leftHeld = false;
    QPoint pressed;                  ///< the cell in which the gesture began
    std::optional<QPoint> strokeEnd; ///< where the stroke has come to, in pixels of the picture
    bool pointerInView = false;
    const ToolPointer* pointer = nullptr; ///< as it is on the screen
};
