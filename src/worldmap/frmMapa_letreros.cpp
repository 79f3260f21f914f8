// The two parchment banners of the map window, the map's name and a place's, and the places list.

#include "worldmap/frmMapa.h"
#include "worldmap/hex_geometry.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 8; // to the window's edges, in pixels
constexpr QRgb bannerTextColor = qRgb(72, 63, 44);
constexpr int bannerFontPixels = 24;
constexpr int smallestBannerFontPixels = 12;
constexpr int locationFontPixels = 17;
constexpr int locationTextMargin = 8; // keeps the text off the rolled ends
constexpr int locationLabelTop = 3;   // below the top of the banner's pictures

} // namespace

void FrmMapa::loadBanner()
{
    const auto picture = [](const char* name) {
        return QImage(u":/pictures/%1.gif"_s.arg(QLatin1String(name)));
    };
    ui().imgScrollLeft->setPicture(picture("banner_izquierda"));
    ui().imgScrollMiddle->setPicture(picture("banner_centro"));
    ui().imgScrollRight->setPicture(picture("banner_derecha"));
    ui().imgLocationLeft->setPicture(picture("letrero_izquierda"));
    ui().imgLocationMiddle->setPicture(picture("letrero_centro"));
    ui().imgLocationRight->setPicture(picture("letrero_derecha"));
    for (QLabel* const label : {ui().lblNombre, ui().lblLocation}) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, QColor(bannerTextColor));
        label->setPalette(palette);
    }
    QFont font = ui().lblLocation->font();
    font.setPixelSize(locationFontPixels);
    ui().lblLocation->setFont(font);
    for (QWidget* const piece : locationPieces())
        piece->setAttribute(Qt::WA_TransparentForMouseEvents); // what lies below can be painted
    hideLocation();
    showProperties();
}

/// The name banner and the window's title follow the map's name.
void FrmMapa::showProperties()
{
    const QString& name = mapa().nombre;
    ui().lblNombre->setText(name);
    window().setWindowTitle(name.isEmpty() ? QCoreApplication::applicationName() : name);
    layOutBanner();
}

void FrmMapa::layOutBanner()
{
    Ui::FrmMapa& controls = ui();
    QLabel& label = *controls.lblNombre;
    const QSize left = controls.imgScrollLeft->sizeHint();
    const QSize right = controls.imgScrollRight->sizeHint();
    const int endsHalved = (left.width() + right.width()) / 2;
    const int room = window().width() - endsHalved - 2 * (gap + label.margin());

    // A name too long for the window is written smaller.
    QFont font = label.font();
    font.setPixelSize(bannerFontPixels);
    while (QFontMetrics(font).horizontalAdvance(mapa().nombre) > room &&
           font.pixelSize() > smallestBannerFontPixels)
        font.setPixelSize(font.pixelSize() - 1);
    label.setFont(font);

    const int labelWidth = std::max(label.sizeHint().width(), endsHalved);
    const int middle = labelWidth - endsHalved;
    controls.imgScrollLeft->setGeometry(0, 0, left.width(), left.height());
    controls.imgScrollMiddle->setGeometry(left.width(), 0, middle, left.height());
    controls.imgScrollRight->setGeometry(left.width() + middle, 0, right.width(), left.height());
    label.setGeometry(left.width() / 2, 0, labelWidth, left.height());
    controls.picScroll->resize(left.width() + middle + right.width(), left.height());
    controls.picScroll->setVisible(!mapa().nombre.isEmpty());
    controls.picScroll->move(window().width() / 2 - controls.picScroll->width() / 2,
                             controls.picScroll->y());
}

/// Lists a map's places, in row-major order of their cells.
void FrmMapa::list(const WorldMap& map, platform::ListItems& places)
{
    for (const auto& [cell, place] : map.mapaPines) {
        platform::ListItem& item = places.add(place.name, place.name);
        item.setIcon(workspace().pins.images.positionOf(place.pin));
        item.setSubItem(u"notas"_s, place.notes);
        item.setSubItem(u"x"_s, QString::number(cell.x()));
        item.setSubItem(u"y"_s, QString::number(cell.y()));
    }
}

void FrmMapa::loadLugares()
{
    platform::ListItems places;
    list(mapa(), places);
    showLugares(places);
}

/// Shows a list of places in place of the one shown. The place selected stays selected: the one of
/// its cell or, if it was moved, of its name.
void FrmMapa::showLugares(platform::ListItems& places)
{
    platform::ListView& list = *ui().lvLugares;
    const platform::ListItem* const selected = list.selectedItem();
    const QString name = selected ? selected->key() : QString();
    const QPoint cell = selected ? cellOf(*selected) : QPoint(-1, -1);
    lugares.swapItems(places);
    list.header()->setSortIndicatorShown(false); // they stand in their own order again
    const platform::ListItem* again = lugares.find(name);
    for (int row = 0; row < lugares.count(); ++row) {
        if (cellOf(lugares.at(row)) == cell)
            again = &lugares.at(row);
    }
    if (again)
        list.setCurrentIndex(lugares.index(lugares.positionOf(*again), 0));
}

/// The cell of a place of the list.
QPoint FrmMapa::cellOf(const platform::ListItem& place)
{
    return {place.subItem(u"x"_s).toInt(), place.subItem(u"y"_s).toInt()};
}

std::array<QWidget*, 4> FrmMapa::locationPieces()
{
    return {ui().imgLocationLeft, ui().imgLocationMiddle, ui().imgLocationRight, ui().lblLocation};
}

void FrmMapa::hideLocation()
{
    for (QWidget* const piece : locationPieces())
        piece->hide();
}

/// Whether the place that the small banner names has another name by now, or isn't there.
bool FrmMapa::isLocationStale()
{
    const Place* const place = mapa().placeAt(located_);
    return !place || place->name != ui().lblLocation->text();
}

void FrmMapa::lvLugares_DblClick()
{
    const platform::ListItem* const place = ui().lvLugares->selectedItem();
    if (!place)
        return;
    const QPoint cell = cellOf(*place);
    showCentred(cell);
    showLocation(place->text(), cell);
}

/// Moves the view so that a cell is in its middle, as far as the map's edges allow.
void FrmMapa::showCentred(QPoint cell)
{
    const QSize view = ui().imgMapa->seenSize().toSize();
    const int columns = view.width() * 4 / (hex::cellWidth * 3);
    const int rows = view.height() / hex::cellHeight;
    currX = std::max(0, cell.x() - columns / 2);
    currY = std::max(0, cell.y() - rows / 2);
    if (currX + columns > mapa().ancho())
        currX = mapa().ancho() - columns - 2 - currX % 2;
    if (currY + rows > mapa().alto())
        currY = mapa().alto() - rows;
    currX = std::max(0, currX);
    currY = std::max(0, currY);
    currX += currX % 2;
    drawMinimap();
    scrollMapa();
}

/// Makes a cell of an even column the view's first, or as near to it as leaves no empty ground.
void FrmMapa::scrollTo(QPoint first)
{
    const QSize view = ui().imgMapa->seenSize().toSize();
    const int lastX = std::max(0, mapa().ancho() - view.width() / hex::columnPitch);
    const int lastY = std::max(0, mapa().alto() - view.height() / hex::cellHeight);
    currX = std::clamp(first.x(), 0, lastX + lastX % 2);
    currY = std::clamp(first.y(), 0, lastY);
    drawMinimap();
    scrollMapa();
}

/// Shows a place's name on the small banner beside its cell.
void FrmMapa::showLocation(const QString& name, QPoint cell)
{
    Ui::FrmMapa& controls = ui();
    const QSize left = controls.imgLocationLeft->sizeHint();
    const QSize right = controls.imgLocationRight->sizeHint();
    controls.lblLocation->setText(name);
    located_ = cell;
    const int endsHalved = (left.width() + right.width()) / 2;
    const int labelWidth =
        std::max(controls.lblLocation->sizeHint().width() + 2 * locationTextMargin, endsHalved);
    const int middle = labelWidth - endsHalved;
    const int width = left.width() + middle + right.width();

    const QRect inView = controls.imgMapa->cellInWidget(cell);
    const QPoint corner = inView.topLeft();
    int x = corner.x() + inView.width();
    if (x + width > controls.imgMapa->width())
        x = corner.x() - width;
    controls.imgLocationLeft->setGeometry(x, corner.y(), left.width(), left.height());
    controls.imgLocationMiddle->setGeometry(x + left.width(), corner.y(), middle, left.height());
    controls.imgLocationRight->setGeometry(x + left.width() + middle, corner.y(), right.width(),
                                           left.height());
    controls.lblLocation->setGeometry(x + left.width() / 2, corner.y() + locationLabelTop,
                                      labelWidth, left.height() - 2 * locationLabelTop);
    for (QWidget* const piece : locationPieces())
        piece->show();
}
