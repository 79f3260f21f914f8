#include "worldmap/frmMinimap.h"

#include "app/procs_windows.h"
#include "platform/forms/application.h"
#include "platform/forms/twips.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

constexpr int firstSide = platform::pixelsFromTwips(2655); ///< the longer one of the picture's
constexpr int smallestSide = 64;
constexpr int margin = 8;
constexpr auto fillSlice = std::chrono::milliseconds(12);
constexpr auto fillAtOnce = std::chrono::milliseconds(60); ///< what is shown without delay
constexpr QRgb selectorColor = qRgb(196, 60, 40);

} // namespace

FrmMinimap& frmMinimap()
{
    return platform::FormRegistry::shared<FrmMinimap>();
}

void FrmMinimap::Form_Load()
{
    window().setWindowFlags(Qt::Tool);
    window().setMinimumSize(smallestSide + 2 * margin, smallestSide + 2 * margin);
    window().resize(firstSide + 2 * margin, firstSide + 2 * margin);
    filling_.setInterval(0);
    QObject::connect(&filling_, &QTimer::timeout, &window(),
                     [this] { platform::runCommand([this] { fill(); }); });
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
    map.drawMinimap(); // its size, by which it is placed
    showBeside(map.view(), 1);
    map.drawMinimap(); // a large map is drawn only once it can be seen
    Procs::setTopmost(window().windowHandle(), true);
}

void FrmMinimap::dismiss()
{
    hide();
    if (formMapa)
        formMapa->releaseButton();
}

void FrmMinimap::Form_Resize()
{
    if (formMapa)
        formMapa->drawMinimap();
}

void FrmMinimap::draw(const MapWindow& map, const Look& look)
{
    if (!serves(map))
        return;
    const QSizeF whole(look.proportions);
    const QSizeF room = window().size() - QSize(2 * margin, 2 * margin);
    const double scale = std::min(room.width() / whole.width(), room.height() / whole.height());
    const QSize size((whole * scale).toSize().expandedTo({1, 1}));
    platform::PictureBox& picture = *ui().imgMinimap;
    ui().frameMinimap->setGeometry(window().rect());
    picture.setGeometry((window().width() - size.width()) / 2, margin, size.width(), size.height());
    showSelector(map, look);

    picture_ = &look.picture;
    reduced_.follow(look.picture, look.proportions, size);
    fill();
}

/// Fills the picture in bit by bit: of a large map it takes a while, and the windows go on
/// meanwhile. That of a small one is there at once, whether or not it can be seen.
void FrmMinimap::fill()
{
    const bool isGoingOn = filling_.isActive();
    filling_.stop(); // also if it fails
    if (isGoingOn || isVisible() || !picture_->isLarge())
        reduced_.fill(*picture_, isGoingOn ? fillSlice : fillAtOnce);
    ui().imgMinimap->dc().BitBlt(0, 0, reduced_.size().width(), reduced_.size().height(),
                                 reduced_.surface(), 0, 0, platform::RasterOp::SRCCOPY);
    ui().imgMinimap->refresh();
    if (!reduced_.isFilled() && isVisible())
        filling_.start();
}

void FrmMinimap::showSelector(const MapWindow& map, const Look& look)
{
    const QSize picture = ui().imgMinimap->size();
    const QSizeF whole(look.proportions);
    selectorSize_ = QSizeF(picture.width() * look.seen.width() / whole.width(),
                           picture.height() * look.seen.height() / whole.height());
    const QSize cells = map.mapSize();
    const auto first = [](int cell, int count, int pixels, double inCell) {
        return cell * pixels / count + static_cast<int>(inCell * pixels);
    };
    ui().imgSelector->setGeometry(
        first(map.currX, cells.width(), picture.width(), look.inCell.x() / whole.width()),
        first(map.currY, cells.height(), picture.height(), look.inCell.y() / whole.height()),
        qRound(selectorSize_.width()), qRound(selectorSize_.height()));
}

void FrmMinimap::redraw(const MapWindow& map, const MapPicture& picture, const QRect& changed)
{
    if (!serves(map))
        return;
    const QRect part = reduced_.redraw(picture, changed);
    platform::PictureBox& box = *ui().imgMinimap;
    box.dc().BitBlt(part.x(), part.y(), part.width(), part.height(), reduced_.surface(), part.x(),
                    part.y(), platform::RasterOp::SRCCOPY);
    box.update(part);
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
