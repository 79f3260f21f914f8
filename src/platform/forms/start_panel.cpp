#include "platform/forms/start_panel.h"

#include <QAction>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace platform {

StartPanel::StartPanel(QWidget* parent)
    : QFrame(parent),
      line_(new QLabel(this)),
      buttons_(new QHBoxLayout)
{
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    line_->setObjectName(u"lblInicio"_s);
    line_->setTextFormat(Qt::PlainText);
    line_->setAlignment(Qt::AlignCenter);
    line_->setWordWrap(true);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(12, 12, 12, 12); // so that it fits into the narrowest view
    rows->setSpacing(12);
    rows->addWidget(line_);
    rows->addLayout(buttons_);
    hide();
}

void StartPanel::offer(const QString& line, const std::vector<Button>& buttons, QWidget& before)
{
    line_->setText(line);
    QWidget* previous = &before;
    for (const Button& one : buttons) {
        auto* const button = new QPushButton(one.command->icon(), one.text, this);
        button->setObjectName(one.name);
        button->setToolTip(one.command->toolTip());
        button->setIconSize({24, 24});
        button->installEventFilter(this);
        connect(button, &QPushButton::clicked, one.command, &QAction::trigger);
        buttons_->addWidget(button);
        setTabOrder(previous, button);
        previous = button;
    }
}

void StartPanel::standIn(const QRect& area)
{
    const QMargins margins = contentsMargins() + layout()->contentsMargins();
    const QSize room = area.size().shrunkBy(margins);
    buttons_->setDirection(QBoxLayout::LeftToRight);
    if (buttons_->sizeHint().width() > room.width())
        buttons_->setDirection(QBoxLayout::TopToBottom);
    QSize inner = buttons_->sizeHint();
    const int lineHeight = line_->heightForWidth(inner.width()) + layout()->spacing();
    const bool hasLine = inner.height() + lineHeight <= room.height();
    line_->setVisible(hasLine);
    if (hasLine)
        inner.rheight() += lineHeight;
    QRect place(QPoint(), inner.grownBy(margins).boundedTo(area.size()));
    place.moveCenter(area.center());
    setGeometry(place);
}

bool StartPanel::eventFilter(QObject* button, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QFrame::eventFilter(button, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (event->type() == QEvent::KeyPress && isEnter) {
        static_cast<QPushButton*>(button)->click();
        return true;
    }
    if (isEnter || key == Qt::Key_Space)
        event->accept();
    return QFrame::eventFilter(button, event);
}

} // namespace platform
