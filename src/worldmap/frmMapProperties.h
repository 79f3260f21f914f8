#pragma once

#include "platform/forms/form.h"
#include "ui_frmMapProperties.h"

/// The properties dialog: name, size, latitudes and notes of a map. It is hidden, never unloaded,
/// between uses, so it keeps its last values. The caller fills or enables its lists, shows it
/// modally, and reads it when it wasn't cancelled.
class FrmMapProperties final : public platform::Form<Ui::FrmMapProperties>
{
public:
    bool cancelado = false; ///< the dialog was closed with "Cancelar" or by its box

    /// Show sizes (columns, rows) and latitudes of a map; a list that doesn't offer the value shows
    /// nothing.
    void setSize(int columns, int rows);
    void setLatitudes(int north, int south);

protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;
    void closeBox() override { cmdCancelar_Click(); }

private:
    void latitudeChosen(bool north);
    void updateZona();
    void cmdGenerarNombre_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click();
};

FrmMapProperties& frmMapProperties();
