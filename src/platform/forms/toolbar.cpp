#include "platform/forms/toolbar.h"

#include "platform/forms/picture_box.h"

#include <QAction>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace platform {

void connectToolbar(QToolBar& toolbar, const std::function<void(const QString&, bool)>& handler)
{
    for (QAction* const action : toolbar.actions()) {
        if (!action->isSeparator())
            action->setIcon(pixelIcon({QImage(u":/pictures/%1.gif"_s.arg(action->objectName()))}));
    }
    QObject::connect(&toolbar, &QToolBar::actionTriggered, &toolbar, [handler](QAction* action) {
        handler(action->objectName(), action->isChecked());
    });
}

} // namespace platform
