#pragma once

#include "platform/forms/form.h"
#include "ui_frmClima.h"

/// Shows the climate report as plain text.
class FrmClima final : public platform::Form<Ui::FrmClima>
{
protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;
};

FrmClima& frmClima();
