#pragma once

#include <QApplication>
#include <QTranslator>
#include <functional>

namespace platform {

/// The GUI application: title and version, the look of the platform with free fonts in the place of
/// missing ones, Qt's own texts in Spanish, tool tips in plain text, and an event dispatcher that
/// turns an exception into a message box, because none may cross Qt's event loop.
class Application final : public QApplication
{
public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    QTranslator qtTexts_;
};

/// Runs a command of the user; an exception, lack of memory included, ends it and is told in a
/// message box titled "Error".
void runCommand(const std::function<void()>& command);

/// Shows the hourglass pointer over all windows while it lives.
class WaitCursor
{
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace platform
