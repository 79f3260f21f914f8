#pragma once

#include "platform/forms/form.h"
#include "ui_frmInfoPin.h"

/// The place dialog: name and notes of a place. The caller fills txtNombre and txtInfo, shows it
/// modally and reads both afterwards. Escape accepts the texts; the close box discards them, and
/// the caller then reads an empty name.
class FrmInfoPin final : public platform::Dialog<Ui::FrmInfoPin>
{
protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    void cmdGenerarNombre_Click();
};

FrmInfoPin& frmInfoPin();
