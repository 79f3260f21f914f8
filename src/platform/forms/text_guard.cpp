#include "platform/forms/text_guard.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolTip>
#include <QValidator>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

void showRefusal(QWidget& box, const QString& character)
{
    QToolTip::showText(box.mapToGlobal(QPoint(0, box.height())),
                       u"El carácter «%1» no se puede guardar en los archivos."_s.arg(character),
                       &box);
}

/// Makes the text storable; the cursor moves with what is left out before it.
void makeStorable(QString& text, int& cursor, QWidget& box, const QString& separators)
{
    text = withoutSeparators(text, separators);
    while (const std::optional<QString> outside = firstOutsideWindows1252(text)) {
        const qsizetype at = text.indexOf(*outside);
        text.remove(at, outside->size());
        if (at < cursor)
            cursor -= static_cast<int>(outside->size());
        showRefusal(box, *outside);
    }
}

class StorableText final : public QValidator
{
public:
    StorableText(QLineEdit& box, const QString& separators)
        : QValidator(&box),
          box_(&box),
          separators_(separators)
    {
    }

    State validate(QString& text, int& cursor) const override
    {
        makeStorable(text, cursor, *box_, separators_);
        return Acceptable;
    }

private:
    QLineEdit* box_;
    QString separators_;
};

} // namespace

void guardText(QLineEdit& box, const QString& separators)
{
    box.setValidator(new StorableText(box, separators));
}

void guardText(QPlainTextEdit& box, const QString& separators)
{
    QObject::connect(&box, &QPlainTextEdit::textChanged, &box, [&box, separators] {
        QString text = box.toPlainText();
        int position = box.textCursor().position();
        makeStorable(text, position, box, separators);
        if (text == box.toPlainText())
            return;
        box.setPlainText(text);
        QTextCursor cursor = box.textCursor();
        cursor.setPosition(position);
        box.setTextCursor(cursor);
    });
}

} // namespace platform
