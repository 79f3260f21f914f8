#include "app/procs_windows.h"

#include "app/workspace.h"
#include "platform/forms/msg_box.h"

#include <QCoreApplication>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace Procs {
namespace {

void load(CatalogueDocument& catalogue)
{
    try {
        catalogue.load();
    } catch (const platform::Error& error) {
        reportError(error, catalogue.kind().loadProcedure, u"Módulo Procs"_s);
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
    load(workspace().armas);
}

void loadArmaduras()
{
    load(workspace().armaduras);
}

void loadEquipo()
{
    load(workspace().equipo);
}

void loadConjuros()
{
    load(workspace().conjuros);
}

} // namespace Procs
