#include "worldmap/frmMinimap.h"

#include "app/procs_windows.h"
#include "platform/forms/twips.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int longerSide = platform::pixelsFromTwips(2655);
constexpr int margin = 8;
constexpr QRgb selectorColor = qRgb(196, 60, 40);

} // namespace

FrmMinimap& frmMinimap()
{
    return platform::FormRegistry::shared<FrmMinimap>();
}

void FrmMinimap::Form_Load()
{
    window().setWindowFlags(Qt::Tool);
    window().setFixedSize(longerSide + 2 * margin, longerSide + 2 * margin);
    QPalette palette = ui().imgSelector->palette();
    palette.setColor(QPalette::WindowText, QColor(selectorColor));
    ui().imgSelector->setPalette(palette);
    ui().imgSelector->setAttribute(Qt::WA_TransparentForMouseEvents);
    QObject::connect(ui().imgMinimap, &platform::PictureBox::mouseMoved, &window(),
                     [this](QPoint position, Qt::MouseButtons held) {
                         lastPosition_ = position;
                         if (held & Qt::LeftButton)
                             moverVista(position);
                     });
    QObject::connect(ui().imgMinimap, &platform::PictureBox::clicked, &window(),
                     [this] { moverVista(lastPosition_); });
}

void FrmMinimap::closeBox()
{
    dismiss();
}

bool FrmMinimap::Form_KeyDown(const QKeyEvent& event)
{
    return formMapa && formMapa->keyUnused && formMapa->keyUnused(event);
}

void FrmMinimap::serve(const MapWindow& map)
{
    const MapWindow* const before = std::exchange(formMapa, &map);
    if (before && before != &map)
        before->releaseButton();
    for (QAction* const action : window().actions())
        window().removeAction(action);
    if (map.actions)
        window().addActions(map.actions());
    map.drawMinimap();
    showBeside(map.view(), 1);
    Procs::setTopmost(window().windowHandle(), true);
}

void FrmMinimap::dismiss()
{
    hide();
    if (formMapa)
        formMapa->releaseButton();
}

void FrmMinimap::draw(const MapWindow& map, const platform::MemoryDC& buffer, QSize view)
{
    if (!serves(map))
        return;
    const QSizeF whole(buffer.width(), buffer.height());
    const double scale = longerSide / std::max(whole.width(), whole.height());
    const QSize size((whole * scale).toSize().expandedTo({1, 1}));
    platform::PictureBox& picture = *ui().imgMinimap;
    picture.setGeometry((window().width() - size.width()) / 2, margin, size.width(), size.height());

    selectorSize_ = QSizeF(size.width() * view.width() / whole.width(),
                           size.height() * view.height() / whole.height());
    ui().imgSelector->setGeometry(map.currX * size.width() / map.mapSize().width(),
                                  map.currY * size.height() / map.mapSize().height(),
                                  qRound(selectorSize_.width()), qRound(selectorSize_.height()));
    picture.dc().StretchBlt(0, 0, size.width(), size.height(), buffer, 0, 0, buffer.width(),
                            buffer.height(), platform::RasterOp::SRCCOPY);
    picture.refresh();
}

void FrmMinimap::redraw(const MapWindow& map, const platform::MemoryDC& buffer, QRect changed)
{
    if (!serves(map))
        return;
    platform::PictureBox& picture = *ui().imgMinimap;
    const QRect part = picture.dc().StretchBltPart(buffer, changed);
    picture.update(part);
}

/// Moves the selector's middle to a position in the picture, as far as it stays inside, and the
/// view of the map window with it.
void FrmMinimap::moverVista(QPointF position)
{
    if (!formMapa)
        return;
    const QSize picture = ui().imgMinimap->size();
    const auto firstPixel = [](double middle, double selector, double whole) {
        return std::max(0.0, std::min(std::max(middle, selector / 2), whole - selector / 2) -
                                 selector / 2);
    };
    const double left = firstPixel(position.x(), selectorSize_.width(), picture.width());
    const double top = firstPixel(position.y(), selectorSize_.height(), picture.height());
    ui().imgSelector->move(qRound(left), qRound(top));
    const QSize cells = formMapa->mapSize();
    formMapa->currX = static_cast<int>(std::nearbyint(left * cells.width() / picture.width()));
    formMapa->currX += formMapa->currX % 2; // the first column shown is always even
    formMapa->currY = static_cast<int>(std::nearbyint(top * cells.height() / picture.height()));
    formMapa->scrollMapa();
}
