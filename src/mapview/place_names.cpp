#include "mapview/place_names.h"

#include "mapview/lettering.h"

#include <QCache>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>

namespace {

// In pixels of a plain screen.
constexpr double letterSize = 12;
constexpr double largeLetterSize = 14;
constexpr double longestName = 170;
constexpr double haloWidth = 2;
constexpr double dotSize = 7; // in the place of pins
constexpr QColor dotColour(150, 32, 24);
constexpr QColor dotEdge(255, 250, 236);
constexpr double largeFrom = 3; // times that the map is enlarged

QFont fontFor(const MapFrame& frame, bool isBold)
{
    const double size = frame.scale >= largeFrom * frame.unit ? largeLetterSize : letterSize;
    return lettering::font(size * frame.unit, isBold ? QFont::Bold : QFont::Medium);
}

/// What is taken of a map's picture, in squares, so that only few boxes are looked at for each.
class Room
{
public:
    Room(QSize extent, double square)
        : side_(std::max({square, double(extent.width()) / mostSquares,
                          double(extent.height()) / mostSquares})),
          columns_(squareOf(extent.width()) + 1),
          rows_(squareOf(extent.height()) + 1),
          squares_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_))
    {
    }

    bool isFree(const QRect& box) const
    {
        const QRect looked = squaresOf(box);
        for (int row = looked.top(); row <= looked.bottom(); ++row) {
            for (int column = looked.left(); column <= looked.right(); ++column) {
                for (const QRect& taken : squares_[index(row, column)]) {
                    if (taken.intersects(box))
                        return false;
                }
            }
        }
        return true;
    }

    void take(const QRect& box)
    {
        const QRect reached = squaresOf(box);
        for (int row = reached.top(); row <= reached.bottom(); ++row) {
            for (int column = reached.left(); column <= reached.right(); ++column)
                squares_[index(row, column)].push_back(box);
        }
    }

private:
    static constexpr int mostSquares = 256;

    int squareOf(int position) const { return static_cast<int>(position / side_); }
    std::size_t index(int row, int column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }
    /// The squares that a box lies in; what is outside counts to those at the edge.
    QRect squaresOf(const QRect& box) const
    {
        const auto inside = [](int square, int count) { return std::clamp(square, 0, count - 1); };
        return {
            QPoint(inside(squareOf(box.left()), columns_), inside(squareOf(box.top()), rows_)),
            QPoint(inside(squareOf(box.right()), columns_), inside(squareOf(box.bottom()), rows_))};
    }

    double side_;
    int columns_;
    int rows_;
    std::vector<std::vector<QRect>> squares_;
};

/// The widths of texts, whose letters are looked up one by one where a table holds them.
class Widths
{
public:
    explicit Widths(const QFont& font) : metrics_(font) { widths_.fill(unknown); }

    double of(const QString& text)
    {
        double width = 0;
        for (const QChar letter : text) {
            if (letter.unicode() >= widths_.size())
                return metrics_.horizontalAdvance(text);
            double& known = widths_.at(letter.unicode());
            if (known == unknown)
                known = metrics_.horizontalAdvance(letter);
            width += known;
        }
        return width;
    }

    QString shortened(const QString& text, double width)
    {
        return of(text) <= width ? text : metrics_.elidedText(text, Qt::ElideRight, width);
    }

    double height() const { return metrics_.height(); }

private:
    static constexpr double unknown = -1;
    QFontMetricsF metrics_;
    std::array<double, 0x180> widths_{}; // the Latin letters of Europe
};

/// A rectangle in whole units that holds another.
QRect around(const QRectF& box)
{
    return box.toAlignedRect();
}

QRectF dotAt(QPointF place, const MapFrame& frame)
{
    QRectF dot(0, 0, dotSize * frame.unit, dotSize * frame.unit);
    dot.moveCenter(place);
    return dot;
}

/// Where a box of that size can stand beside a pin, from the best place on.
std::array<QPoint, 10> standsAt(const QRect& pin, QSize box, const QRect& picture)
{
    const int left = pin.left() - box.width();
    const int right = pin.right() + 1;
    const int above = pin.top() - box.height();
    const int below = pin.bottom() + 1;
    const QPoint middle = pin.center() - QPoint(box.width() / 2, box.height() / 2);
    // Above and below, a name at the picture's edge can be moved along it.
    const int moved = std::clamp(middle.x(), picture.left(),
                                 std::max(picture.left(), picture.right() + 1 - box.width()));
    return {QPoint(right, middle.y()),
            {left, middle.y()},
            {middle.x(), above},
            {middle.x(), below},
            {pin.center().x(), above},
            {pin.center().x(), below},
            {pin.center().x() - box.width(), above},
            {pin.center().x() - box.width(), below},
            {moved, above},
            {moved, below}};
}

bool isInside(const QRect& box, const QRect& picture)
{
    // A name that is larger than the picture can't help reaching out of it.
    const bool isAcross = box.left() >= picture.left() && box.right() <= picture.right();
    const bool isDown = box.top() >= picture.top() && box.bottom() <= picture.bottom();
    return (isAcross || box.width() > picture.width()) &&
           (isDown || box.height() > picture.height());
}

/// The places' indexes, more important ones first.
std::vector<std::size_t> inOrder(const std::vector<NamedPlace>& places)
{
    std::vector<std::size_t> order(places.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return places[a].importance < places[b].importance;
    });
    return order;
}

} // namespace

std::vector<PlacedName> placeNames(const std::vector<NamedPlace>& places,
                                   const MapGeometry& geometry, const MapFrame& frame)
{
    const MapFrame whole{QRect(QPoint(), geometry.pictureSize()), frame.scale, frame.unit};
    const QRect picture(QPoint(), whole.surface().size().toSize());
    std::array<Widths, 2> widths{Widths(fontFor(frame, false)), Widths(fontFor(frame, true))};
    const bool hasDots =
        geometry.cellRect({0, 0}).height() * frame.scale < smallestPin * frame.unit;

    const double square = 2 * widths[0].height();
    Room pins(picture.size(), square);
    Room names(picture.size(), square); // and dots
    for (const NamedPlace& place : places) {
        if (!hasDots)
            pins.take(around(whole.at(QRectF(geometry.cellRect(place.cell)))));
    }
    std::vector<PlacedName> placed;
    for (const std::size_t i : inOrder(places)) {
        const NamedPlace& place = places[i];
        const QRectF cell = whole.at(QRectF(geometry.cellRect(place.cell)));
        PlacedName name;
        name.pin = around(hasDots ? dotAt(cell.center(), frame) : cell);
        if (place.name.isEmpty() || (hasDots && !names.isFree(name.pin)))
            continue;
        Widths& measure = widths.at(place.isBold ? 1 : 0);
        name.text = measure.shortened(place.name, longestName * frame.unit);
        name.isBold = place.isBold;
        name.hasDot = hasDots;
        const double width = measure.of(name.text) + 2 * haloWidth * frame.unit;
        name.box.setSize(
            {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(measure.height()))});
        for (const QPoint corner : standsAt(name.pin, name.box.size(), picture)) {
            name.box.moveTopLeft(corner);
            if (isInside(name.box, picture) && pins.isFree(name.box) && names.isFree(name.box)) {
                names.take(name.box);
                if (hasDots)
                    names.take(name.pin);
                placed.push_back(name);
                break;
            }
        }
    }
    return placed;
}

struct PlaceNames::Board {
    struct Layout {
        QSize cells;
        double scale;
        double unit;
        std::vector<PlacedName> names;
    };
    static constexpr std::size_t mostLayouts = 4; // of the view, the whole map, a picture
    static constexpr qsizetype mostLetters = 8 * 1024 * 1024; // bytes of pictures of names

    std::vector<NamedPlace> places;
    std::vector<Layout> layouts; ///< the one last made at the end
    /// Pictures of names, by the name's address in its layout.
    QCache<const PlacedName*, QImage> letters{mostLetters};
};

PlaceNames::PlaceNames(std::vector<NamedPlace> places) : board_(std::make_shared<Board>())
{
    board_->places = std::move(places);
}

const std::vector<PlacedName>& PlaceNames::layout(const MapGeometry& geometry,
                                                  const MapFrame& frame) const
{
    for (const Board::Layout& known : board_->layouts) {
        if (known.cells == geometry.cells() && known.scale == frame.scale &&
            known.unit == frame.unit)
            return known.names;
    }
    if (board_->layouts.size() == Board::mostLayouts) {
        board_->layouts.erase(board_->layouts.begin());
        board_->letters.clear(); // which are known by their addresses
    }
    board_->layouts.push_back(
        {geometry.cells(), frame.scale, frame.unit, placeNames(board_->places, geometry, frame)});
    return board_->layouts.back().names;
}

std::vector<QRect> PlaceNames::taken(const MapGeometry& geometry, const MapFrame& frame) const
{
    const QPoint corner = (QPointF(frame.part.topLeft()) * frame.scale).toPoint();
    const QRect shown = around(frame.surface());
    std::vector<QRect> boxes;
    for (const PlacedName& name : layout(geometry, frame)) {
        for (const QRect& box : {name.box, name.pin}) {
            if (const QRect there = box.translated(-corner); there.intersects(shown))
                boxes.push_back(there);
        }
    }
    return boxes;
}

namespace {

/// A name as it looks, in the painter's own pixels.
QImage pictureOf(const PlacedName& name, const MapFrame& frame, double density)
{
    const QFont font = fontFor(frame, name.isBold);
    const double halo = haloWidth * frame.unit;
    const QPointF baseLine(halo, QFontMetricsF(font).ascent());
    const QImage letters = lettering::letters(font, name.text, baseLine, name.box.size(), density);
    QImage picture = lettering::haloOf(letters, halo);
    QPainter(&picture).drawImage(0, 0, letters);
    return picture;
}

void drawDot(QPainter& painter, const QRectF& dot, double unit)
{
    painter.setPen(QPen(dotEdge, unit));
    painter.setBrush(dotColour);
    painter.drawEllipse(dot.adjusted(unit, unit, -unit, -unit));
}

} // namespace

void draw(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
          const PlaceNames& names)
{
    const QPointF corner = QPointF(frame.part.topLeft()) * frame.scale;
    const QRect shown = around(frame.surface().translated(corner));
    const double density = std::max(1.0, painter.deviceTransform().m11());
    auto& letters = names.board_->letters;
    for (const PlacedName& name : names.layout(geometry, frame)) {
        if (name.hasDot && name.pin.intersects(shown))
            drawDot(painter, QRectF(name.pin).translated(-corner), frame.unit);
        if (!name.box.intersects(shown))
            continue;
        const QPointF place = QPointF(name.box.topLeft()) - corner;
        if (const QImage* const known = letters.object(&name);
            known && known->devicePixelRatio() == density) {
            painter.drawImage(place, *known);
            continue;
        }
        auto picture = std::make_unique<QImage>(pictureOf(name, frame, density));
        painter.drawImage(place, *picture);
        const qsizetype bytes = picture->sizeInBytes();
        letters.insert(&name, picture.release(), bytes);
    }
}
