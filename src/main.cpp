#include "app/frmManual.h"
#include "app/start.h"
#include "app/workspace.h"
#include "platform/core/app_folder.h"
#include "platform/core/ending.h"
#include "platform/core/file_replacement.h"
#include "platform/core/folder_claim.h"
#include "platform/forms/application.h"
#include "platform/forms/form.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int alreadyOpen = 1; // exit status

} // namespace

int main(int argc, char** argv)
{
    const platform::Application application(argc, argv);
    platform::Application::setWindowIcon(platform::pixelIcon(
        {QImage(u":/pictures/programa_16.gif"_s), QImage(u":/pictures/programa_32.gif"_s),
         QImage(u":/pictures/programa.gif"_s)}));
    platform::outliveFileSizeLimit();
    const platform::FolderClaim folder(platform::appFolder());
    if (folder.isTaken()) {
        platform::MsgBox::show(u"Kestrune ya está abierto en esta carpeta."_s,
                               platform::Application::applicationName());
        return alreadyOpen;
    }
    platform::removeAbandonedFiles({u"ini"_s, u"mapas"_s, u"respaldo"_s});
    Workspace workspace;
    const auto keepUnsaved = [&workspace] { workspace.recovery.keepNow(); };
    const platform::EndingFromOutside ending(keepUnsaved);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &workspace.recovery,
                     keepUnsaved);
    platform::FormRegistry forms;
    forms.onHelp = [](const QString& window) { frmManual().showFor(window); };
    // From within the event loop, so that the program can end while the About box is up.
    QTimer::singleShot(0, &application, [] { Main(); });
    const int status = platform::Application::exec();
    keepUnsaved();
    return status;
}
