#include "platform/forms/application.h"

#include "platform/core/error.h"
#include "platform/forms/msg_box.h"

#include <QFont>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLibraryInfo>
#include <QPushButton>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

void showError(const QString& text)
{
    MsgBox::show(text, u"Error"_s, MsgBox::Icon::Critical);
}

/// Tells the user of the exception being handled.
void tellOfException()
{
    try {
        throw;
    } catch (const Error& error) {
        showError(error.description);
    } catch (const std::bad_alloc&) {
        showError(u"No queda memoria para esta operación."_s);
    } catch (const std::exception& error) {
        showError(QString::fromUtf8(error.what()));
    }
}

void substituteFonts()
{
    QFont::insertSubstitutions(u"Monotype Corsiva"_s,
                               {u"Z003"_s, u"URW Chancery L"_s, u"Apple Chancery"_s, u"serif"_s});
    QFont::insertSubstitution(u"Courier New"_s, u"Liberation Mono"_s);
    for (const char* const sans : {"Arial", "MS Sans Serif"})
        QFont::insertSubstitution(QString::fromLatin1(sans), u"Liberation Sans"_s);
}

/// A dialog's button takes Enter, which may be held down since the key that opened the dialog.
bool isHeldOnButton(const QObject& receiver, const QKeyEvent& key)
{
    return key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) &&
           qobject_cast<const QPushButton*>(&receiver);
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
    installEventFilter(this);
    if (qtTexts_.load(QLocale(QLocale::Spanish), u"qtbase"_s, u"_"_s,
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(&qtTexts_);
}

bool Application::notify(QObject* receiver, QEvent* event)
try {
    return QApplication::notify(receiver, event);
} catch (...) {
    tellOfException();
    return false;
}

bool Application::eventFilter(QObject* receiver, QEvent* event)
{
    if (event->type() == QEvent::KeyPress &&
        isHeldOnButton(*receiver, *static_cast<QKeyEvent*>(event)))
        return true;
    auto* const widget = qobject_cast<QWidget*>(receiver);
    if (event->type() != QEvent::ToolTip || !widget || !Qt::mightBeRichText(widget->toolTip()))
        return QApplication::eventFilter(receiver, event);
    // A name with a "<" in it is no markup.
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       Qt::convertFromPlainText(widget->toolTip()), widget);
    return true;
}

void runCommand(const std::function<void()>& command)
{
    try {
        command();
    } catch (...) {
        tellOfException();
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
