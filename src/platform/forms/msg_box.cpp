#include "platform/forms/msg_box.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace platform::MsgBox {
namespace {

Script* currentScript = nullptr;

QMessageBox::Icon qtIcon(Icon icon)
{
    switch (icon) {
    case Icon::None:
        return QMessageBox::NoIcon;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

} // namespace

Answer show(const QString& text, const QString& title, Icon icon, Buttons buttons)
{
    if (currentScript)
        return currentScript->reply({text, title, icon, buttons});

    QMessageBox box;
    box.setObjectName(u"MsgBox"_s);
    box.setWindowFlag(Qt::WindowStaysOnTopHint); // no topmost palette may cover it
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText); // a "<" in a file's name is no markup
    box.setText(text);
    box.setIcon(qtIcon(icon));
    if (buttons == Buttons::Ok) {
        box.addButton(QMessageBox::Ok)->setText(u"Aceptar"_s);
        box.exec();
        return Answer::Ok;
    }
    box.addButton(QMessageBox::Yes)->setText(u"&Sí"_s);
    box.addButton(QMessageBox::No)->setText(u"&No"_s);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

Script::Script()
{
    Q_ASSERT(!currentScript);
    currentScript = this;
}

Script::~Script()
{
    currentScript = nullptr;
}

Answer Script::reply(const Asked& box)
{
    asked_.push_back(box);
    if (answers_.empty()) {
        unexpected_.push_back(box);
        return box.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
    }
    const Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

} // namespace platform::MsgBox
