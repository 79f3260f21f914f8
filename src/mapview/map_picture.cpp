#include "mapview/map_picture.h"

#include <algorithm>
#include <atomic>
#include <utility>

using platform::MemoryDC;
using platform::RasterOp;

namespace {

constexpr int side = 1024; ///< of a piece; smaller ones draw the cells at their edges more often
constexpr qint64 smallArea = 4 * 1024 * 1024; ///< in pixels; a picture up to that is kept whole

int nextDrawing()
{
    static std::atomic<int> last = 0; // exports draw on threads of their own
    return ++last;
}

} // namespace

MapPicture::MapPicture(QSize size, qint64 bound)
    : size_(size),
      bound_(bound),
      drawing_(nextDrawing())
{
}

bool MapPicture::isLarge() const
{
    return qint64{width()} * height() > smallArea;
}

void MapPicture::draw(Painter painter)
{
    painter_ = std::move(painter);
    pieces_.clear();
    drawing_ = nextDrawing();
    edits_ = 0;
}

std::vector<int> MapPicture::piecesIn(const QRect& part) const
{
    const QRect inside = part & rect();
    std::vector<int> found;
    if (inside.isEmpty())
        return found;
    const int columns = (width() + side - 1) / side;
    for (int row = inside.top() / side; row <= inside.bottom() / side; ++row) {
        for (int column = inside.left() / side; column <= inside.right() / side; ++column)
            found.push_back(row * columns + column);
    }
    return found;
}

QRect MapPicture::rectOf(int piece) const
{
    const int columns = (width() + side - 1) / side;
    return QRect(piece % columns * side, piece / columns * side, side, side) & rect();
}

bool MapPicture::isMarked(const Piece& piece, const QRect& part) const
{
    return std::any_of(piece.marks.begin(), piece.marks.end(),
                       [&](const Mark& mark) { return mark.part.intersects(part); });
}

void MapPicture::redraw(std::span<const QRect> parts)
{
    ++edits_;
    std::map<int, std::vector<QRect>> byPiece;
    for (const QRect& part : parts) {
        for (const int piece : piecesIn(part)) {
            if (pieces_.contains(piece))
                byPiece[piece].push_back(part);
        }
    }
    for (const auto& [number, inPiece] : byPiece) {
        Piece& piece = pieces_[number];
        qint64 area = 0;
        for (const QRect& part : inPiece) {
            area += qint64{part.width()} * part.height();
            if (!isMarked(piece, part))
                continue;
            std::erase_if(piece.marks, [&](const Mark& mark) { return part.contains(mark.part); });
            piece.marks.push_back({part, {}});
        }
        if (!piece.surface)
            continue;
        // A cell takes the drawing of its neighbours, too; many cost more than the whole piece.
        constexpr qint64 patchShare = 9;
        if (area * patchShare > qint64{side} * side) {
            piece.surface.reset();
            continue;
        }
        try {
            patch(*piece.surface, rectOf(number).topLeft(), inPiece);
        } catch (...) {
            piece.surface.reset(); // it is drawn when it is next looked at, or that is told then
        }
    }
}

/// Draws parts of a piece anew.
void MapPicture::patch(MemoryDC& surface, QPoint corner, const std::vector<QRect>& parts) const
{
    for (const QRect& part : parts) {
        const MemoryDC anew = painted(part, {});
        const QPoint to = part.topLeft() - corner;
        surface.BitBlt(to.x(), to.y(), anew.width(), anew.height(), anew, 0, 0, RasterOp::SRCCOPY);
    }
}

void MapPicture::drawOver(const QRect& part, const Painter& mark)
{
    ++edits_;
    for (const int number : piecesIn(part)) {
        Piece& piece = pieces_[number];
        if (piece.surface)
            mark(*piece.surface, rectOf(number).topLeft());
        piece.marks.push_back({part, mark});
    }
}

/// A part with marks over it.
MemoryDC MapPicture::painted(const QRect& part, const std::vector<Mark>& marks) const
{
    MemoryDC surface(part.width(), part.height());
    if (painter_)
        painter_(surface, part.topLeft());
    for (const Mark& mark : marks) {
        const QRect again = mark.part & part;
        if (again.isEmpty())
            continue;
        if (mark.painter) {
            mark.painter(surface, part.topLeft());
            continue;
        }
        const MemoryDC patch = painted(again, {});
        surface.BitBlt(again.x() - part.x(), again.y() - part.y(), patch.width(), patch.height(),
                       patch, 0, 0, RasterOp::SRCCOPY);
    }
    return surface;
}

const MemoryDC& MapPicture::surfaceOf(int number) const
{
    Piece& piece = pieces_[number];
    piece.lastUse = ++uses_;
    if (piece.surface)
        return *piece.surface;
    letGo(number, bound_);
    try {
        piece.surface = painted(rectOf(number), piece.marks);
    } catch (...) { // for want of memory, perhaps, which the others have
        if (bytes() == 0)
            throw;
        letGo(number, 0);
        piece.surface = painted(rectOf(number), piece.marks);
    }
    return *piece.surface;
}

/// Lets go of the pieces that weren't used for longest, until there is room for another within a
/// bound, in bytes.
void MapPicture::letGo(int except, qint64 bound) const
{
    constexpr qint64 pieceBytes = qint64{side} * side * qint64{sizeof(QRgb)};
    qint64 taken = bytes() + pieceBytes;
    while (taken > bound) {
        Piece* oldest = nullptr;
        for (auto& [number, piece] : pieces_) {
            if (number != except && piece.surface && (!oldest || piece.lastUse < oldest->lastUse))
                oldest = &piece;
        }
        if (!oldest)
            return;
        taken -= oldest->surface->image().sizeInBytes();
        oldest->surface.reset();
    }
}

qint64 MapPicture::bytes() const
{
    qint64 taken = 0;
    for (const auto& [number, piece] : pieces_)
        taken += piece.surface ? piece.surface->image().sizeInBytes() : 0;
    return taken;
}

void MapPicture::copyTo(MemoryDC& surface, QPoint to, const QRect& part, Pieces pieces) const
{
    for (const int number : piecesIn(part)) {
        const QRect whole = rectOf(number);
        const QRect wanted = whole & part;
        const QPoint target = to + wanted.topLeft() - part.topLeft();
        const auto copyFrom = [&](const MemoryDC& source, QPoint from) {
            surface.BitBlt(target.x(), target.y(), wanted.width(), wanted.height(), source,
                           from.x(), from.y(), RasterOp::SRCCOPY);
        };
        const auto found = pieces_.find(number);
        const bool isDrawn = found != pieces_.end() && found->second.surface;
        if (isDrawn || !isLarge() || pieces == Pieces::Kept)
            copyFrom(surfaceOf(number), wanted.topLeft() - whole.topLeft());
        else
            copyFrom(
                painted(wanted, found == pieces_.end() ? std::vector<Mark>() : found->second.marks),
                {});
    }
}

MemoryDC MapPicture::part(const QRect& part) const
{
    MemoryDC surface(part.width(), part.height());
    copyTo(surface, {}, part);
    return surface;
}

QImage MapPicture::image() const
{
    MemoryDC surface(width(), height());
    copyTo(surface, {}, rect(), Pieces::Passing);
    return surface.image();
}
