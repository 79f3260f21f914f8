#include "app/frmManual.h"
#include "app/start.h"
#include "app/workspace.h"
#include "platform/core/file_replacement.h"
#include "platform/forms/application.h"
#include "platform/forms/form.h"
#include "platform/forms/picture_box.h"

#include <QTimer>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    const platform::Application application(argc, argv);
    platform::outliveFileSizeLimit();
    platform::removeAbandonedFiles({u"ini"_s, u"mapas"_s, u"respaldo"_s});
    platform::Application::setWindowIcon(platform::pixelIcon(
        {QImage(u":/pictures/programa_16.gif"_s), QImage(u":/pictures/programa_32.gif"_s),
         QImage(u":/pictures/programa.gif"_s)}));
    const Workspace workspace;
    platform::FormRegistry forms;
    forms.onHelp = [](const QString& window) { frmManual().showFor(window); };
    // From within the event loop, so that the program can end while the About box is up.
    QTimer::singleShot(0, &application, [] { Main(); });
    return platform::Application::exec();
}
