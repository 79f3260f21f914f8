#pragma once

#include "catalogue/catalogue_file.h"
#include "platform/forms/form.h"
#include "ui_frmPrinc.h"

#include <array>

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
    /// The controls of one catalogue's page.
    struct Page {
        platform::ListView* list;
        platform::FilterBox* filter;
        QToolButton* newItem;
        QToolButton* deleteItem;
        QToolButton* save;
    };
    template <typename Editor>
    void setUp(Catalogue& catalogue, const Page& page, Editor& (*shared)());
    void TabStrip_Click(int tab);
    void deleteSelected(Catalogue& catalogue, platform::ListView& list);
    void save(Catalogue& catalogue);

    std::array<QFrame*, 7> frames_{};
    int frameActual_ = 0; ///< index of the frame shown
};

FrmPrinc& frmPrinc();
