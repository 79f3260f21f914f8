#include "generation/frmClima.h"

#include "worldmap/map_miniature.h"

#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 8; // round the map and its key

} // namespace

FrmClima& frmClima()
{
    return platform::FormRegistry::shared<FrmClima>();
}

void FrmClima::setClimate(const QString& report, const CellColours& colours)
{
    colours_ = colours;
    ui().txtClima->setPlainText(report);
    ui().imgClima->setAccessibleDescription(
        u"%1: de %2 a %3"_s.arg(colours.title, colours.scale.first(), colours.scale.last()));
    ui().imgClima->refresh();
}

void FrmClima::Form_Load()
{
    QFont font = ui().txtClima->font();
    font.setPointSizeF(8.25); // which a design can't say
    ui().txtClima->setFont(font);
    ui().txtClima->setFocus(); // else the pages' tabs had it
    ui().imgClima->drawOver = [this](QPainter& painter) { drawMap(painter); };
}

bool FrmClima::Form_KeyDown(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Escape || event.modifiers() != Qt::NoModifier)
        return false;
    hide();
    return true;
}

/// The map, a pixel a cell, as large as there is room for it, and its key below.
void FrmClima::drawMap(QPainter& painter)
{
    const QRect all = ui().imgClima->rect().adjusted(margin, margin, -margin, -margin);
    const QSize key = colourKeySize(1).toSize();
    const QRect place = all.adjusted(0, 0, 0, -key.height() - margin);
    if (place.isEmpty() || key.width() > all.width())
        return;
    const double density = painter.device()->devicePixelRatioF();
    QImage picture = inProportion(colours_.picture, place.size() * density);
    picture.setDevicePixelRatio(density);
    QRect shown({}, picture.deviceIndependentSize().toSize());
    shown.moveCenter(place.center());
    painter.drawImage(shown.topLeft(), picture);
    QRect below({}, key);
    below.moveBottomLeft({all.center().x() - key.width() / 2, all.bottom()});
    painter.setRenderHint(QPainter::Antialiasing);
    drawColourKey(painter, colours_, below, 1);
}
