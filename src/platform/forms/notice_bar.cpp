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
    connect(close, &QToolButton::clicked, this, &NoticeBar::dismiss);
    layout_->setContentsMargins(8, 4, 4, 4);
    layout_->addWidget(text_, 1);
    layout_->addWidget(close);
    hide();
}

void NoticeBar::tell(const Notice& notice)
{
    const auto known = std::find_if(notices_.begin(), notices_.end(), [&](const Notice& waiting) {
        return waiting.text == notice.text;
    });
    const bool isShown = known == notices_.begin(); // now, or as the first one
    if (known == notices_.end())
        notices_.push_back(notice);
    else
        *known = notice;
    if (isShown)
        show(notice);
}

void NoticeBar::tell(const QStringList& texts)
{
    for (const QString& text : texts)
        tell(Notice{text});
}

void NoticeBar::show(const Notice& notice)
{
    for (QWidget* const old : buttons_) {
        old->hide();
        old->deleteLater(); // it may be the one that was pressed
    }
    buttons_.clear();
    text_->setText(notice.text);
    for (const Button& button : notice.buttons) {
        auto* const made = new QPushButton(button.text, this);
        made->setObjectName(button.name);
        connect(made, &QPushButton::clicked, this, [this, action = button.action] {
            runCommand([&] {
                action();
                dismiss();
            });
        });
        layout_->insertWidget(layout_->count() - 1, made);
        buttons_.push_back(made);
    }
    setVisible(true);
    emit changed();
}

void NoticeBar::dismiss()
{
    if (!notices_.empty())
        notices_.pop_front();
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
