#include "app/procs_windows.h"

#include "catalogue/frmPrinc.h"
#include "platform/forms/msg_box.h"

#include <QCoreApplication>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace Procs {
namespace {

void load(Catalogue& catalogue)
{
    try {
        loadCatalogue(catalogue);
    } catch (const platform::Error& error) {
        reportError(error, catalogue.kind.loadProcedure, u"Módulo Procs"_s);
    }
}

} // namespace

void reportError(const platform::Error& error, const QString& procedure, const QString& owner)
{
    platform::MsgBox::show(errorReport(error, procedure, owner),
                           QCoreApplication::applicationName());
}

bool setTopmost(QWindow* handle, bool onTop)
{
    if (!handle)
        return false;
    handle->setFlag(Qt::WindowStaysOnTopHint, onTop);
    return onTop;
}

void loadArmas()
{
    load(frmPrinc().armas);
}

void loadArmaduras()
{
    load(frmPrinc().armaduras);
}

void loadEquipo()
{
    load(frmPrinc().equipo);
}

void loadConjuros()
{
    load(frmPrinc().conjuros);
}

} // namespace Procs
