#include "worldmap/frmRedimensionar.h"

#include "app/workspace.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "worldmap/hex_geometry.h"
#include "worldmap/map_resize.h"

#include <QPainter>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSide = 32767;
constexpr qreal cutOpacity = 0.3;

} // namespace

FrmRedimensionar& frmRedimensionar()
{
    return platform::FormRegistry::shared<FrmRedimensionar>();
}

void FrmRedimensionar::Form_Load()
{
    Ui::FrmRedimensionar& controls = ui();
    for (QSpinBox* const box :
         {controls.txtArriba, controls.txtAbajo, controls.txtIzquierda, controls.txtDerecha}) {
        box->setRange(-longestSide, longestSide);
        QObject::connect(box, &QSpinBox::valueChanged, &window(), [this] { showOutcome(); });
    }
    controls.txtIzquierda->setRange(1 - longestSide, longestSide - 1);
    // An odd number would shift every row: the next even one is taken, which loses nothing.
    QObject::connect(controls.txtIzquierda, &QSpinBox::valueChanged, &window(),
                     [this](int value) { ui().txtIzquierda->setValue(value + (value & 1)); });
    QObject::connect(controls.cmbTile, &QComboBox::currentIndexChanged, &window(),
                     [this] { showOutcome(); });
    QObject::connect(controls.cmdAceptar, &QPushButton::clicked, &window(),
                     [this] { cmdAceptar_Click(); });
    QObject::connect(controls.cmdCancelar, &QPushButton::clicked, &dialog(), &QDialog::reject);
}

std::optional<FrmRedimensionar::Answer> FrmRedimensionar::ask(const WorldMap& map,
                                                              const QString& tile)
{
    Ui::FrmRedimensionar& controls = ui();
    map_ = nullptr; // nothing to show while the controls are filled
    for (QSpinBox* const box :
         {controls.txtArriba, controls.txtAbajo, controls.txtIzquierda, controls.txtDerecha})
        box->setValue(0);
    const Palette& tiles = workspace().tiles;
    controls.cmbTile->clear();
    for (int i = 0; i < tiles.items.count(); ++i) {
        const platform::ListItem& item = tiles.items.at(i);
        controls.cmbTile->addItem(QPixmap::fromImage(tiles.images.at(item.icon())), item.text(),
                                  item.key());
    }
    controls.cmbTile->setCurrentIndex(std::max(0, controls.cmbTile->findData(tile)));
    controls.txtArriba->setFocus();
    colours_ = tileColours(tiles);
    small_ = pixelACell(map, colours_);
    map_ = &map;
    showOutcome();
    showModal();
    map_ = nullptr;
    if (dialog().result() != QDialog::Accepted)
        return {};
    return Answer{added(), controls.cmbTile->currentData().toString()};
}

QMargins FrmRedimensionar::added()
{
    return {ui().txtIzquierda->value(), ui().txtArriba->value(), ui().txtDerecha->value(),
            ui().txtAbajo->value()};
}

void FrmRedimensionar::Form_Resize()
{
    drawPreview();
}

void FrmRedimensionar::showOutcome()
{
    if (!map_)
        return;
    const QSize size = resizedSize(*map_, added());
    ui().lblTamano->setText(u"%1 × %2 casillas"_s.arg(size.width()).arg(size.height()));
    const QStringList lost = lostPlaces(*map_, added());
    ui().lblLugares->setText(lost.isEmpty() ? u"No se pierde ningún lugar."_s
                                            : u"Lugares que se perderán: %1"_s.arg(lost.size()));
    ui().lstLugares->clear();
    ui().lstLugares->addItems(lost);
    drawPreview();
}

/// Draws the new map, what is cut of the old one paler, and the old one's extent as a frame.
void FrmRedimensionar::drawPreview()
{
    if (!map_)
        return;
    platform::ImageBox& box = *ui().imgVista;
    const qreal dots = box.devicePixelRatioF();
    const QRect before(0, 0, map_->ancho(), map_->alto());
    const QRect after = before.marginsAdded(added());
    const QRect all = after.isValid() ? before | after : before;
    QImage picture(box.size() * dots, QImage::Format_RGB32);
    picture.fill(box.palette().window().color());
    const qreal scale = std::min((picture.width() - 2 * dots) / (hex::columnPitch * all.width()),
                                 (picture.height() - 2 * dots) / (hex::cellHeight * all.height()));
    const auto onPicture = [&](QRect cells) {
        const QPointF centre(picture.width() / 2.0, picture.height() / 2.0);
        const QPointF corner = cells.topLeft() - QRectF(all).center();
        return QRectF(
            centre + QPointF(corner.x() * hex::columnPitch, corner.y() * hex::cellHeight) * scale,
            QSizeF(cells.width() * hex::columnPitch, cells.height() * hex::cellHeight) * scale);
    };
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (after.isValid())
        painter.fillRect(onPicture(after),
                         QColor(colours_.value(ui().cmbTile->currentData().toString())));
    painter.setOpacity(cutOpacity);
    painter.drawImage(onPicture(before), small_);
    painter.setOpacity(1);
    if (const QRect kept = before & after; kept.isValid())
        painter.drawImage(onPicture(kept), small_, kept);
    for (const auto& [colour, style] :
         {std::pair(Qt::black, Qt::SolidLine), std::pair(Qt::white, Qt::DashLine)}) {
        painter.setPen(QPen(colour, dots, style)); // seen on any ground
        painter.drawRect(onPicture(before));
    }
    box.setPicture(picture);
}

void FrmRedimensionar::cmdAceptar_Click()
{
    ui().txtIzquierda->interpretText(); // it may be half typed
    if (const std::optional<QString> problem = resizeProblem(*map_, added())) {
        platform::MsgBox::show(u"No se puede cambiar el tamaño: %1."_s.arg(*problem),
                               u"Advertencia"_s, platform::MsgBox::Icon::Warning);
        return;
    }
    dialog().accept();
}
