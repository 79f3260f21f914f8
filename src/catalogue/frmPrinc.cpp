#include "catalogue/frmPrinc.h"

#include "catalogue/frmProgreso.h"
#include "platform/forms/application.h"

#include <QCoreApplication>

FrmPrinc& frmPrinc()
{
    return platform::FormRegistry::shared<FrmPrinc>();
}

void FrmPrinc::createColumns(Catalogue& catalogue)
{
    catalogue.items.setColumns(catalogue.kind.fields);
}

void FrmPrinc::Form_Load()
{
    ui().lvArmas->setItems(armas.items, armas.pictures);
    ui().lvArmaduras->setItems(armaduras.items, armaduras.pictures);
    ui().lvEquipo->setItems(equipo.items, equipo.pictures);
    ui().lvConjuros->setItems(conjuros.items, conjuros.pictures);
}

void FrmPrinc::Form_Unload()
{
    platform::endProgram();
}

void FrmPrinc::save(Catalogue& catalogue)
{
    platform::runCommand([&] {
        const platform::WaitCursor wait;
        if (catalogue.items.isEmpty()) {
            saveCatalogue(catalogue);
            return;
        }
        const FrmProgreso::Run progress(catalogue.items.count());
        // Let the progress window be painted; the user's input waits, so that nothing changes the
        // list meanwhile.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        saveCatalogue(catalogue, [&] { frmProgreso().advance(); });
    });
}
