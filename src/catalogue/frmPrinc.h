#pragma once

#include "app/workspace.h"
#include "platform/forms/commands.h"
#include "platform/forms/form.h"
#include "ui_frmPrinc.h"

#include <array>
#include <optional>

/// The catalogue window: the lists of weapons, armours, equipment and spells, which are the
/// catalogues of the workspace themselves. Closing it ends the program.
class FrmPrinc final : public platform::Form<Ui::FrmPrinc>
{
public:
    void cmdGuardarArmas_Click() { save(workspace().armas); }
    void cmdGuardarArmaduras_Click() { save(workspace().armaduras); }
    void cmdGuardarEquipo_Click() { save(workspace().equipo); }
    void cmdGuardarConjuros_Click() { save(workspace().conjuros); }

    /// Shows the window with the page of a catalogue.
    void showPage(const CatalogueDocument& document);

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    /// The page of one catalogue.
    struct Page {
        CatalogueDocument* document;
        platform::ListView* list;
        platform::FilterBox* filter;
        QToolButton* newButton;
        QToolButton* deleteButton;
        QToolButton* saveButton;
        void (*newItem)();
        void (*open)(const platform::ListItem& item);

        /// The item selected in the list, if it can be seen.
        const platform::ListItem* chosen() const;
    };

    std::vector<platform::Command> itemCommands();
    std::vector<platform::Command> viewCommands();
    void loadCommands();
    void setUp(const Page& page);
    /// The catalogue page that is shown, or null.
    const Page* page() const;
    void TabStrip_Click(int tab);
    /// Shows the page so many tabs on, from the last one to the first.
    void turnPage(int step);
    void openChosen(const Page& page);
    void deleteChosen(const Page& page);
    void save(CatalogueDocument& catalogue);

    std::array<QFrame*, 7> frames_{};
    std::array<Page, 4> pages_{}; ///< of the last frames
    int frameActual_ = 0;         ///< index of the frame shown
    std::optional<platform::CommandSet> commands_;
};

FrmPrinc& frmPrinc();
