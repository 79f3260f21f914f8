#pragma once

#include "platform/gdi/memory_dc.h"

#include <QRect>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

/// The picture of a whole map, of any size, in pieces: each is drawn when it is first looked at,
/// and let go when all together take too much memory. What was drawn over the map, and what was
/// drawn again since, comes back with its piece. Coordinates are pixels of the whole picture.
class MapPicture
{
public:
    /// Draws a part of the map that begins at a pixel onto a surface, black before.
    using Painter = std::function<void(platform::MemoryDC& part, QPoint corner)>;

    /// How many bytes the pieces may take together.
    static constexpr qint64 defaultBound = 192 * 1024 * 1024;

    MapPicture() = default;
    /// A black picture.
    explicit MapPicture(QSize size, qint64 bound = defaultBound);

    bool isNull() const { return size_.isEmpty(); }
    QSize size() const { return size_; }
    int width() const { return size_.width(); }
    int height() const { return size_.height(); }
    QRect rect() const { return {{}, size_}; }
    /// Whether it takes a time that is felt to draw all of it.
    bool isLarge() const;

    /// Draws the whole picture anew, by what the painter draws from now on.
    void draw(Painter painter);
    /// Tells one drawing of a whole picture from all others.
    int drawing() const { return drawing_; }
    /// How many changes were drawn since.
    int edits() const { return edits_; }

    /// Draws some parts again as the painter has them now, over whatever was drawn there.
    void redraw(std::span<const QRect> parts);
    /// Draws something over a part of the picture, until that part is drawn again.
    void drawOver(const QRect& part, const Painter& mark);

    /// A part of the picture; what lies outside of it is black. Throws Error (TooLarge) without
    /// memory, and what the painter throws.
    platform::MemoryDC part(const QRect& part) const;
    /// Draws a part of the picture onto a surface. The pieces that it takes are kept or, if the
    /// picture is large and all of it is gone through once, not. Throws as part does.
    enum class Pieces { Kept, Passing };
    void copyTo(platform::MemoryDC& surface, QPoint to, const QRect& part,
                Pieces pieces = Pieces::Kept) const;
    /// The whole picture in one. Throws as part does.
    QImage image() const;

    /// How much memory the pieces take now.
    qint64 bytes() const;

private:
    /// Something drawn after the map was; the map's own drawing again, if there is no painter.
    struct Mark {
        QRect part;
        Painter painter;
    };
    struct Piece {
        std::optional<platform::MemoryDC> surface;
        std::vector<Mark> marks; ///< in their order, those that reach into the piece
        qint64 lastUse = 0;
    };

    std::vector<int> piecesIn(const QRect& part) const;
    QRect rectOf(int piece) const;
    bool isMarked(const Piece& piece, const QRect& part) const;
    void patch(platform::MemoryDC& surface, QPoint corner, const std::vector<QRect>& parts) const;
    platform::MemoryDC painted(const QRect& part, const std::vector<Mark>& marks) const;
    const platform::MemoryDC& surfaceOf(int piece) const;
    void letGo(int except, qint64 bound) const;

    QSize size_;
    qint64 bound_ = defaultBound;
    Painter painter_;
    int drawing_ = 0;
    int edits_ = 0;
    mutable std::map<int, Piece> pieces_; ///< those drawn, or marked, by their number
    mutable qint64 uses_ = 0;
};
