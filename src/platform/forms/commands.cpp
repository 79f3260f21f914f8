#include "platform/forms/commands.h"

#include "platform/forms/application.h"
#include "platform/forms/picture_box.h"

#include <QAction>
#include <QMenuBar>
#include <QToolBar>
#include <QWidget>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr qsizetype longestStep = 60; // a name of any length may be part of it

} // namespace

QString stepText(const QString& verb, const QString& step)
{
    if (step.isEmpty())
        return verb;
    QString shown = step.size() > longestStep ? step.left(longestStep) + u'…' : step;
    return verb + u' ' + shown.replace(u'&', u"&&"_s);
}

CommandSet::CommandSet(QWidget& window, std::vector<Command> commands)
    : window_(&window),
      commands_(std::move(commands))
{
    for (const Command& command : commands_) {
        auto* action = window.findChild<QAction*>(command.key);
        if (!action) {
            action = new QAction(&window);
            action->setObjectName(command.key);
        }
        action->setText(command.text);
        action->setToolTip(command.tip.isEmpty() ? QString(command.text).remove(u'&')
                                                 : command.tip);
        action->setShortcuts(command.shortcuts);
        action->setAutoRepeat(false); // a key that is held down doesn't act again
        action->setCheckable(command.isTwoState);
        window.addAction(action); // so that its shortcuts work without a menu
        QObject::connect(action, &QAction::triggered, &window,
                         [run = command.run](bool on) { runCommand([&] { run(on); }); });
    }
    update();
}

QAction& CommandSet::operator[](const QString& key) const
{
    auto* const action = window_->findChild<QAction*>(key);
    Q_ASSERT(action);
    return *action;
}

void CommandSet::dress(QToolBar& toolbar) const
{
    for (QAction* const action : toolbar.actions()) {
        if (action->isSeparator())
            continue;
        action->setIcon(pixelIcon({QImage(u":/pictures/%1.gif"_s.arg(action->objectName()))}));
        toolbar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
}

void CommandSet::fill(QMenuBar& bar, const std::vector<Menu>& menus) const
{
    for (const Menu& menu : menus) {
        QMenu* const made = bar.addMenu(menu.title);
        made->setObjectName(u"menu"_s + QString(menu.title).remove(u'&'));
        made->setToolTipsVisible(false);
        for (const QString& key : menu.keys) {
            if (key.isEmpty())
                made->addSeparator();
            else
                made->addAction(&(*this)[key]);
        }
        QObject::connect(made, &QMenu::aboutToShow, window_, [*this] { update(); });
    }
}

void CommandSet::update() const
{
    for (const Command& command : commands_) {
        QAction& action = (*this)[command.key];
        if (command.isPossible)
            action.setEnabled(command.isPossible());
        if (command.textNow)
            action.setText(command.textNow());
    }
}

} // namespace platform
