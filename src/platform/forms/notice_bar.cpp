#include "platform/forms/notice_bar.h"

#include "platform/forms/application.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent),
      text_(new QLabel(this)),
      layout_(new QHBoxLayout(this))
{
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    text_->setObjectName(u"lblAviso"_s);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setForegroundRole(QPalette::ToolTipText);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const close = new QToolButton(this);
    close->setObjectName(u"cmdCerrarAviso"_s);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setToolTip(u"Quitar el aviso"_s);
    close->setAccessibleName(u"Quitar el aviso"_s);
    connect(close, &QToolButton::clicked, this, [this] { dismiss(Notice(notices_.front())); });
    layout_->setContentsMargins(8, 4, 4, 4);
    layout_->addWidget(text_, 1);
    layout_->addWidget(close);
    hide();
}

void NoticeBar::tell(const Notice& notice)
{
    std::erase_if(notices_, [&](const Notice& waiting) { return waiting.isSame(notice); });
    notices_.push_front(notice);
    show(notice);
}

void NoticeBar::tell(const QStringList& texts)
{
    for (auto text = texts.rbegin(); text != texts.rend(); ++text)
        tell(Notice{*text});
}

void NoticeBar::show(const Notice& notice)
{
    for (QWidget* const old : buttons_) {
        old->hide();
        old->setObjectName({}); // the next one may have its name
        old->deleteLater();     // it may be the one that was pressed
    }
    buttons_.clear();
    text_->setText(notice.text);
    for (const Button& button : notice.buttons) {
        auto* const made = new QPushButton(button.text, this);
        made->setObjectName(button.name);
        connect(made, &QPushButton::clicked, this, [this, notice, action = button.action] {
            runCommand([&] {
                action();
                dismiss(notice);
            });
        });
        layout_->insertWidget(layout_->count() - 1, made);
        buttons_.push_back(made);
    }
    setVisible(true);
    emit changed();
}

/// Takes away a notice; another one may be shown by now.
void NoticeBar::dismiss(const Notice& notice)
{
    std::erase_if(notices_, [&](const Notice& waiting) { return waiting.isSame(notice); });
    if (!notices_.empty()) {
        show(notices_.front());
        return;
    }
    hide();
    emit changed();
}

int NoticeBar::heightFor(int width) const
{
    return notices_.empty() ? 0 : layout_->totalHeightForWidth(width);
}

} // namespace platform
