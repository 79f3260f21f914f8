#include "app/start.h"
#include "platform/forms/application.h"
#include "platform/forms/form.h"

#include <QTimer>

int main(int argc, char** argv)
{
    const platform::Application application(argc, argv);
    const platform::FormRegistry forms;
    // From within the event loop, so that the program can end while the About box is up.
    QTimer::singleShot(0, &application, [] { Main(); });
    return platform::Application::exec();
}
