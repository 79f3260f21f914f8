#pragma once

#include "catalogue/catalogue_file.h"
#include "platform/forms/form.h"
#include "ui_frmPrinc.h"

/// The catalogue window: the lists of weapons, armours, equipment and spells, which are the
/// catalogues themselves. Closing it ends the program.
class FrmPrinc final : public platform::Form<Ui::FrmPrinc>
{
public:
    Catalogue armas{armasKind()};
    Catalogue armaduras{armadurasKind()};
    Catalogue equipo{equipoKind()};
    Catalogue conjuros{conjurosKind()};

    /// Gives the catalogue's list its columns.
    void createColumns(Catalogue& catalogue);

    void cmdGuardarArmas_Click() { save(armas); }
    void cmdGuardarArmaduras_Click() { save(armaduras); }
    void cmdGuardarEquipo_Click() { save(equipo); }
    void cmdGuardarConjuros_Click() { save(conjuros); }

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void save(Catalogue& catalogue);
};

FrmPrinc& frmPrinc();
