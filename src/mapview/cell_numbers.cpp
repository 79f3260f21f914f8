#include "mapview/cell_numbers.h"

#include "mapview/lettering.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <map>

using namespace Qt::StringLiterals;

namespace {

// In pixels of a plain screen.
constexpr double letterSize = 9.5;
constexpr double largeLetterSize = 11; // where the map is enlarged so many times
constexpr double largeFrom = 4;
constexpr double haloWidth = 1.5;

/// A number stands at the upper side of a cell that is that many times as high.
constexpr double roomNeeded = 2.6;

/// The letters of numbers, all of one width and at whole units, as pictures: there can be hundreds
/// of numbers in a view.
class NumberLetters
{
public:
    explicit NumberLetters(const MapFrame& frame)
        : font_(lettering::font(
              frame.unit * (frame.scale >= largeFrom * frame.unit ? largeLetterSize : letterSize))),
          halo_(static_cast<int>(std::ceil(haloWidth * frame.unit)))
    {
        const QFontMetricsF metrics(font_);
        for (const QChar letter : letters)
            advance_ = std::max(advance_, metrics.horizontalAdvance(letter));
        advance_ = std::ceil(advance_);
        height_ = std::ceil(metrics.capHeight());
    }

    QSize sizeOf(qsizetype length) const
    {
        return {static_cast<int>(advance_) * static_cast<int>(length) + 2 * halo_,
                static_cast<int>(height_) + 2 * halo_};
    }

    /// To be called before numbers are written.
    void prepare(double density)
    {
        const QFontMetricsF metrics(font_);
        for (const QChar letter : letters) {
            const QPointF baseLine(halo_ + (advance_ - metrics.horizontalAdvance(letter)) / 2,
                                   halo_ + height_);
            letters_[letter] = lettering::letters(font_, letter, baseLine, sizeOf(1), density);
            halos_[letter] = lettering::haloOf(letters_[letter], halo_);
        }
    }

    void write(QPainter& painter, const CellLabel& label) const
    {
        const int length = static_cast<int>(label.text.size());
        const QPoint corner =
            label.box.topLeft() + QPoint((label.box.width() - sizeOf(length).width()) / 2, 0);
        for (const auto* const pictures : {&halos_, &letters_}) {
            for (int i = 0; i < length; ++i)
                painter.drawImage(corner + QPoint(i * static_cast<int>(advance_), 0),
                                  pictures->at(label.text[i]));
        }
    }

private:
    static constexpr QStringView letters = u"0123456789.";

    QFont font_;
    int halo_;
    double advance_ = 0;
    double height_ = 0;
    std::map<QChar, QImage> halos_;
    std::map<QChar, QImage> letters_;
};

/// Every how many columns and rows there is a number: 1, 2, 5, 10, 20...
int thinning(const MapGeometry& geometry, const MapFrame& frame, QSize label)
{
    // Neighbouring columns may be shifted against each other, the second next one isn't. Numbers
    // are moved to whole units, which may take up to one.
    const QPoint pitch = geometry.cellRect({2, 1}).topLeft() - geometry.cellRect({0, 0}).topLeft();
    const double width = pitch.x() * frame.scale / 2;
    const double height = pitch.y() * frame.scale;
    int step = 1;
    for (int i = 0; step * width < label.width() + 1 || step * height < label.height() + 1; ++i)
        step = i % 3 == 1 ? step / 2 * 5 : step * 2;
    return step;
}

} // namespace

QString cellNumber(QPoint cell)
{
    const int column = cell.x() + 1;
    const int row = cell.y() + 1;
    constexpr int mostOfTwoDigits = 99;
    const QString form = std::max(column, row) > mostOfTwoDigits ? u"%1.%2"_s : u"%1%2"_s;
    return form.arg(column, 2, 10, QLatin1Char('0')).arg(row, 2, 10, QLatin1Char('0'));
}

std::vector<CellLabel> cellLabels(const MapGeometry& geometry, const MapFrame& frame,
                                  const std::vector<QRect>& taken)
{
    const QSize last = geometry.cells() - QSize(1, 1);
    const QSize size =
        NumberLetters(frame).sizeOf(cellNumber({last.width(), last.height()}).size());
    const int step = thinning(geometry, frame, size);
    const QSizeF cellSize = QSizeF(geometry.cellRect({0, 0}).size()) * frame.scale;
    const bool isAtTop =
        cellSize.height() > roomNeeded * size.height() && cellSize.width() > size.width();
    // Numbers reach into the frame from cells beside it.
    const int reach = static_cast<int>(std::max(size.width(), size.height()) / frame.scale) + 1;
    const QRect cells = geometry.cellsIn(frame.part.adjusted(-reach, -reach, reach, reach));
    const auto firstFrom = [step](int least) { return (least + step) / step * step - 1; };
    const QRect picture =
        frame.at(QRectF(QPointF(), QSizeF(geometry.pictureSize()))).toAlignedRect();
    std::vector<CellLabel> labels;
    for (int row = firstFrom(cells.top()); row <= cells.bottom(); row += step) {
        for (int column = firstFrom(cells.left()); column <= cells.right(); column += step) {
            const QRectF cell = frame.at(QRectF(geometry.cellRect({column, row})));
            QRectF box(QPointF(), size);
            box.moveCenter(cell.center());
            if (isAtTop)
                box.moveTop(cell.top());
            const QRect place(box.topLeft().toPoint(), size);
            if (picture.contains(place) &&
                std::none_of(taken.begin(), taken.end(),
                             [&](const QRect& other) { return other.intersects(place); }))
                labels.push_back({place, cellNumber({column, row})});
        }
    }
    return labels;
}

void drawNumbers(QPainter& painter, const MapGeometry& geometry, const MapFrame& frame,
                 const std::vector<QRect>& taken)
{
    NumberLetters letters(frame);
    letters.prepare(std::max(1.0, painter.deviceTransform().m11()));
    for (const CellLabel& label : cellLabels(geometry, frame, taken))
        letters.write(painter, label);
}
