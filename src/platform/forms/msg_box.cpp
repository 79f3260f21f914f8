#include "platform/forms/msg_box.h"

#include "platform/forms/placement.h"

#include <QCloseEvent>
#include <QKeyEvent>
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

/// A question is answered by one of its buttons; Escape and the close box leave it where it is.
class Question final : public QMessageBox
{
protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (!event->matches(QKeySequence::Cancel))
            QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

void fill(QMessageBox& box, const Asked& asked)
{
    box.setObjectName(u"MsgBox"_s);
    box.setWindowTitle(asked.title);
    box.setTextFormat(Qt::PlainText); // a "<" in a file's name is no markup
    box.setText(asked.text);
    box.setIcon(qtIcon(asked.icon));
    putAboveActiveWindow(box);
}

} // namespace

Answer show(const QString& text, const QString& title, Icon icon, Buttons buttons)
{
    if (currentScript)
        return currentScript->reply({text, title, icon, buttons});

    if (buttons == Buttons::Ok) {
        QMessageBox box;
        fill(box, {text, title, icon, buttons});
        box.addButton(QMessageBox::Ok)->setText(u"Aceptar"_s);
        box.exec();
        return Answer::Ok;
    }
    Question box;
    fill(box, {text, title, icon, buttons});
    box.addButton(QMessageBox::Yes)->setText(u"&Sí"_s);
    box.addButton(QMessageBox::No)->setText(u"&No"_s);
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
