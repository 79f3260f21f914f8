#pragma once

#include "platform/forms/form.h"
#include "ui_frmRedimensionar.h"
#include "worldmap/map_miniature.h"

#include <QMargins>
#include <optional>

/// The dialog that asks for rows and columns to add to a map, or to cut, and shows what becomes of
/// it: the new size, a small picture, and the places that would be lost.
class FrmRedimensionar final : public platform::Dialog<Ui::FrmRedimensionar>
{
public:
    struct Answer {
        QMargins added;
        QString tile; ///< of new cells
    };
    /// Asks about a map, with that tile offered for new cells. Nothing if the user cancelled.
    std::optional<Answer> ask(const WorldMap& map, const QString& tile);

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void closeBox() override { dialog().reject(); }

private:
    QMargins added();
    void showOutcome();
    void drawPreview();
    void cmdAceptar_Click();

    const WorldMap* map_ = nullptr; ///< while it is asked about
    TileColours colours_;
    QImage small_; ///< the map, a pixel a cell
};

FrmRedimensionar& frmRedimensionar();
