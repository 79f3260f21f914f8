#pragma once

#include <QString>
#include <functional>

class QToolBar;

namespace platform {

/// Joins a toolbar to its handler: every action is a button identified by its key, the action's
/// object name; its picture is the resource of that name. The handler gets the key of the button
/// pressed and, for a two-state button, whether it is down now.
void connectToolbar(QToolBar& toolbar, const std::function<void(const QString&, bool)>& handler);

} // namespace platform
