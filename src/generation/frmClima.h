#pragma once

#include "mapview/cell_colours.h"
#include "platform/forms/form.h"
#include "ui_frmClima.h"

/// Shows the climate report as plain text and, on a second page, as a coloured map.
class FrmClima final : public platform::Form<Ui::FrmClima>
{
public:
    /// Puts both on their pages, in the place of those that were there.
    void setClimate(const QString& report, const CellColours& colours);

protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    void drawMap(QPainter& painter);

    CellColours colours_;
};

FrmClima& frmClima();
