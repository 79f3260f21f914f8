#include "platform/forms/application.h"

#include "platform/core/error.h"
#include "platform/forms/msg_box.h"

#include <QFont>
#include <QLibraryInfo>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

void showError(const QString& text)
{
    MsgBox::show(text, u"Error"_s, MsgBox::Icon::Critical);
}

void substituteFonts()
{
    QFont::insertSubstitutions(u"Monotype Corsiva"_s,
                               {u"Z003"_s, u"URW Chancery L"_s, u"Apple Chancery"_s, u"serif"_s});
    QFont::insertSubstitution(u"Courier New"_s, u"Liberation Mono"_s);
    for (const char* const sans : {"Arial", "MS Sans Serif"})
        QFont::insertSubstitution(QString::fromLatin1(sans), u"Liberation Sans"_s);
}

} // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv)
{
    setApplicationName(u"Kestrune"_s);
    setApplicationVersion(QStringLiteral(KESTRUNE_VERSION));
    setQuitOnLastWindowClosed(false); // endProgram() says when
#ifdef Q_OS_LINUX
    setStyle(u"Fusion"_s);
#endif
    substituteFonts();
    if (qtTexts_.load(QLocale(QLocale::Spanish), u"qtbase"_s, u"_"_s,
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(&qtTexts_);
}

bool Application::notify(QObject* receiver, QEvent* event)
try {
    return QApplication::notify(receiver, event);
} catch (const Error& error) {
    showError(error.description);
    return false;
} catch (const std::bad_alloc&) {
    showError(u"No queda memoria para esta operación."_s);
    return false;
} catch (const std::exception& error) {
    showError(QString::fromUtf8(error.what()));
    return false;
}

void runCommand(const std::function<void()>& command)
{
    try {
        command();
    } catch (const Error& error) {
        showError(error.description);
    }
}

WaitCursor::WaitCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace platform
