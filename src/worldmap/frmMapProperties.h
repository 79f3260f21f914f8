#pragma once

#include "platform/forms/form.h"
#include "ui_frmMapProperties.h"
#include "worldmap/world_map.h"

/// The properties dialog: name, size, latitudes and notes of a map. It is hidden, never unloaded,
/// between uses, so it keeps its last values. The caller fills or enables its lists, shows it
/// modally, and reads it when it wasn't cancelled.
class FrmMapProperties final : public platform::Dialog<Ui::FrmMapProperties>
{
public:
    bool cancelado = false; ///< the dialog was closed with "Cancelar" or by its box

    /// Shows a map's properties and its size.
    void fill(const MapProperties& properties, QSize size);
    /// Lets the user choose a size, or not.
    void allowSize(bool allowed);
    /// What the dialog shows.
    MapProperties properties();
    QSize mapSize();

    /// Show sizes (columns, rows) and latitudes of a map. A value that a list doesn't offer is
    /// added to it for the time being.
    void setSize(int columns, int rows);
    void setLatitudes(int north, int south);
    /// Leaves in the lists only what they offer for a new map: a size that isn't among it gives way
    /// to the first one, latitudes that the lists would refuse to 45 and -45.
    void offerListedValues();

protected:
    void Form_Load() override;
    void Form_Rejected() override { cancelado = true; }
    void closeBox() override { dialog().reject(); }

private:
    void latitudeChosen(bool north);
    void updateZona();
    void cmdGenerarNombre_Click();
    void cmdAceptar_Click();
};

FrmMapProperties& frmMapProperties();
