#pragma once

#include "app/workspace.h"
#include "localmap/local_canvas.h"
#include "platform/core/list_items.h"
#include "platform/forms/commands.h"
#include "platform/forms/form.h"
#include "ui_frmMapaLocal.h"
#include "worldmap/map_window.h"

#include <optional>

/// The local map window: shows a place to fight in, made by the generator. It is the map and the
/// canvas that draws it. Closing it asks nothing and hides the windows it showed.
class FrmMapaLocal final : public platform::Form<Ui::FrmMapaLocal>,
                           public LocalMap,
                           public LocalCanvas
{
public:
    FrmMapaLocal() : LocalCanvas(workspace().localPictures) {}

    /// Replaces the map with a new random one and shows it.
    void generarMapaLocal();
    /// Copies the visible part of the back buffer to the screen.
    void scrollMapa();
    /// Draws the minimap anew from the back buffer.
    void drawMinimap();
    void marcarSinCambios() { mapaCambiado = false; }

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;
    void Form_Unload() override;

private:
    std::vector<platform::Command> commands();
    void loadCommands();
    void connectView();
    void showState();
    QString spokenCell(QPoint cell) const;
    void loadTilesLocales();
    void askToSave();

    std::optional<platform::CommandSet> commands_;
    const MapWindow forMinimap_{[this] { return QSize(ancho, alto); },
                                currX,
                                currY,
                                [this] { scrollMapa(); },
                                [this] { drawMinimap(); },
                                [this]() -> const QWidget& { return *ui().imgMapa; },
                                [this] {
                                    if (isLoaded())
                                        ui().minimapa->setChecked(false);
                                }};
};

FrmMapaLocal& frmMapaLocal();
