#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class QAction;
class QMenuBar;
class QToolBar;
class QWidget;

namespace platform {

/// Something that the user can have a window do, said once: its buttons, its entries in menus and
/// its shortcuts all come from here.
struct Command {
    QString key;   ///< the object name of its action, and of its picture
    QString text;  ///< in menus; an "&" goes before its letter
    QString tip{}; ///< on toolbars; without one the text serves
    QList<QKeySequence> shortcuts{};
    bool isTwoState = false;
    /// What it does; a two-state command is told whether it is on now. Run as a command of the
    /// user.
    std::function<void(bool on)> run{};
    /// Whether it can be done now; always, if this is empty.
    std::function<bool()> isPossible{};
    /// What it would do now, in place of the text, if that changes.
    std::function<QString()> textNow{};
};

/// The text of a command that goes a step back or forth: what it does, and the step's name.
QString stepText(const QString& verb, const QString& step);

/// A menu of a menu bar: its title and its commands by their keys. An empty key is a line.
struct Menu {
    QString title;
    QStringList keys;
};

/// The commands of a window as the toolkit's actions, each named by its key. A design may hold an
/// action for a command already; it is then that one.
class CommandSet
{
public:
    CommandSet(QWidget& window, std::vector<Command> commands);

    /// The action of a command of the set.
    QAction& operator[](const QString& key) const;
    /// Puts pictures on a toolbar's actions, and lets the Tab key come to its buttons.
    void dress(QToolBar& toolbar) const;
    /// Fills a menu bar. Its menus are named "menu" and their title.
    void fill(QMenuBar& bar, const std::vector<Menu>& menus) const;
    /// Asks each command anew whether it is possible, and what it would do.
    void update() const;

private:
    QWidget* window_;
    std::vector<Command> commands_;
};

} // namespace platform
