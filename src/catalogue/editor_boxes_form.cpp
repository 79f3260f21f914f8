#include "catalogue/editor_boxes_form.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

Qt::KeyboardModifiers realModifiers(const QKeyEvent& event)
{
    return event.modifiers() & ~Qt::KeypadModifier;
}

class FocusSelection final : public QObject
{
public:
    FocusSelection(QLineEdit& box, bool selectsAll)
        : QObject(&box),
          box_(&box),
          selectsAll_(selectsAll)
    {
        box.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::FocusIn)
            return QObject::eventFilter(watched, event);
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (selectsAll_) {
            selectFor(reason);
            return false;
        }
        if (reason == Qt::MouseFocusReason)
            return false;
        // Keys that move the focus would make the box select its text.
        QFocusEvent quiet(QEvent::FocusIn, Qt::OtherFocusReason);
        box_->event(&quiet);
        return true;
    }

private:
    void selectFor(Qt::FocusReason reason)
    {
        // Coming back from another window must not put what was typed at risk.
        const bool returned = reason == Qt::ActiveWindowFocusReason ||
                              reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
        if (returned && box_->isModified())
            return;
        selectBackwards();
        if (reason == Qt::MouseFocusReason) // the click that follows would take the selection away
            QTimer::singleShot(0, box_, [this] { selectBackwards(); });
    }

    /// With the caret at the start, so that a long text shows it.
    void selectBackwards()
    {
        const int length = static_cast<int>(box_->text().size());
        box_->setSelection(length, -length);
    }

    QLineEdit* box_;
    bool selectsAll_;
};

class NotesKeys final : public QObject
{
public:
    explicit NotesKeys(QPlainTextEdit& box) : QObject(&box), box_(&box)
    {
        box.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || !isEnter(*static_cast<QKeyEvent*>(event)))
            return QObject::eventFilter(watched, event);
        const Qt::KeyboardModifiers modifiers = realModifiers(*static_cast<QKeyEvent*>(event));
        if (modifiers == Qt::ControlModifier) {
            box_->insertPlainText(u"\n"_s);
            return true;
        }
        if (modifiers == Qt::NoModifier) {
            QCoreApplication::sendEvent(box_->window(), event);
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QPlainTextEdit* box_;
};

} // namespace

void selectOnFocus(QLineEdit& box, bool selectsAll)
{
    new FocusSelection(box, selectsAll); // the box owns it
}

void saveOnEnter(QPlainTextEdit& box)
{
    new NotesKeys(box); // the box owns it
}

bool isEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool hasModifiers(const QKeyEvent& event)
{
    return realModifiers(event) != Qt::NoModifier;
}
