#include "platform/forms/text_guard.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QToolTip>
#include <QValidator>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr char16_t lastOfAscii = 0x7F;

/// The first stretch of a text that the data files can't hold, and what is to stand there instead.
struct Fault {
    qsizetype at;
    qsizetype length;
    QString instead; ///< empty: the stretch is left out, and the user is told
};

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

std::optional<Fault> firstFault(const QString& text, const QString& separators)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isLineBreak(c))
            return Fault{i, c == u'\r' && text.mid(i + 1, 1) == u"\n"_s ? 2 : 1, u" "_s};
        if (const QChar other = withoutSeparator(c, separators); other != c)
            return Fault{i, 1, QString(other)};
        if (c == lineBreakMark)
            return Fault{i, 1, {}};
        if (c.unicode() <= lastOfAscii) // most of any text
            continue;
        const qsizetype length = c.isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        if (firstOutsideWindows1252(QStringView(text).sliced(i, length)))
            return Fault{i, length, {}};
    }
    return std::nullopt;
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
        while (const std::optional<Fault> fault = firstFault(text, separators_)) {
            if (fault->instead.isEmpty())
                showRefusal(*box_, text.mid(fault->at, fault->length));
            text.replace(fault->at, fault->length, fault->instead);
            if (fault->at < cursor)
                cursor += static_cast<int>(fault->instead.size() - fault->length);
        }
        return Acceptable;
    }

private:
    QLineEdit* box_;
    QString separators_;
};

/// Mends the text of a box line by line, in place, so that what was typed before can be undone.
void makeStorable(QPlainTextEdit& box, const QString& separators)
{
    for (QTextBlock line = box.document()->begin(); line.isValid(); line = line.next()) {
        while (const std::optional<Fault> fault = firstFault(line.text(), separators)) {
            if (fault->instead.isEmpty())
                showRefusal(box, line.text().mid(fault->at, fault->length));
            QTextCursor cursor(line);
            cursor.joinPreviousEditBlock();
            cursor.setPosition(line.position() + static_cast<int>(fault->at));
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor,
                                static_cast<int>(fault->length));
            // A line break inside a line stays one: it is the paragraph that begins anew.
            cursor.insertText(fault->instead == u" "_s ? u"\n"_s : fault->instead);
            cursor.endEditBlock();
        }
    }
}

} // namespace

void showRefusal(QWidget& box, const QString& character)
{
    QToolTip::showText(box.mapToGlobal(QPoint(0, box.height())),
                       u"El carácter «%1» no se puede guardar en los archivos."_s.arg(character),
                       &box);
}

void guardText(QLineEdit& box, const QString& separators)
{
    box.setValidator(new StorableText(box, separators));
}

void guardText(QPlainTextEdit& box, const QString& separators)
{
    QObject::connect(&box, &QPlainTextEdit::textChanged, &box,
                     [&box, separators] { makeStorable(box, separators); });
}

} // namespace platform
