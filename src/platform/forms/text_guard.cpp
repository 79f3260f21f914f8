#include "platform/forms/text_guard.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QToolTip>
#include <QValidator>
#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr char16_t lastOfAscii = 0x7F;
constexpr char16_t lastOfLatin = 0xFF;

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

/// What a box makes of the characters that enter it.
struct Rules {
    QString separators;
    bool marksLineBreaks; ///< the files hold its line breaks as marks
};

/// How many characters the letter at a place has: surrogates, and accents of their own.
qsizetype letterLength(QStringView text, qsizetype at)
{
    qsizetype end = at + (text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1);
    while (end < text.size() && text[end].isMark())
        ++end;
    return end - at;
}

/// The first fault from a place on.
std::optional<Fault> firstFault(const QString& text, const Rules& rules, qsizetype from)
{
    for (qsizetype i = from; i < text.size(); ++i) {
        const QChar c = text[i];
        const qsizetype length = letterLength(text, i);
        if (length > 1 || c.unicode() > lastOfLatin) {
            const QString letter = text.mid(i, length);
            if (const QString composed = letter.normalized(QString::NormalizationForm_C);
                composed != letter)
                return Fault{i, length, composed};
        }
        if (isLineBreak(c))
            return Fault{i, c == u'\r' && text.mid(i + 1, 1) == u"\n"_s ? 2 : 1, u" "_s};
        if (const QChar other = withoutSeparator(c, rules.separators); other != c)
            return Fault{i, 1, QString(other)};
        if (c == lineBreakMark && rules.marksLineBreaks)
            return Fault{i, 1, {}};
        if (c.unicode() <= lastOfAscii) // most of any text
            continue;
        const qsizetype pair = c.isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        if (firstOutsideWindows1252(QStringView(text).sliced(i, pair)))
            return Fault{i, pair, {}};
    }
    return std::nullopt;
}

/// Where to look for the next fault: what is left out may have kept an accent from its letter.
qsizetype placeAfter(const Fault& fault)
{
    return std::max<qsizetype>(0, fault.at - 1);
}

class StorableText final : public QValidator
{
public:
    StorableText(QLineEdit& box, const QString& separators)
        : QValidator(&box),
          box_(&box),
          rules_{separators, false}
    {
    }

    State validate(QString& text, int& cursor) const override
    {
        qsizetype from = 0;
        while (const std::optional<Fault> fault = firstFault(text, rules_, from)) {
            if (fault->instead.isEmpty())
                showRefusal(*box_, text.mid(fault->at, fault->length));
            text.replace(fault->at, fault->length, fault->instead);
            if (fault->at < cursor)
                cursor += static_cast<int>(fault->instead.size() - fault->length);
            from = placeAfter(*fault);
        }
        return Acceptable;
    }

private:
    QLineEdit* box_;
    Rules rules_;
};

/// Mends the text of a box line by line, in place, so that what was typed before can be undone.
void makeStorable(QPlainTextEdit& box, const Rules& rules)
{
    for (QTextBlock line = box.document()->begin(); line.isValid(); line = line.next()) {
        qsizetype from = 0;
        while (const std::optional<Fault> fault = firstFault(line.text(), rules, from)) {
            if (fault->instead.isEmpty())
                showRefusal(box, line.text().mid(fault->at, fault->length));
            QTextCursor cursor(line);
            cursor.joinPreviousEditBlock();
            const int at = line.position() + static_cast<int>(fault->at);
            cursor.setPosition(at); // by positions: moving would take a letter with its accents
            cursor.setPosition(at + static_cast<int>(fault->length), QTextCursor::KeepAnchor);
            // A line break inside a line stays one: it is the paragraph that begins anew.
            cursor.insertText(fault->instead == u" "_s ? u"\n"_s : fault->instead);
            cursor.endEditBlock();
            from = placeAfter(*fault);
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
    box.setMaxLength(std::numeric_limits<int>::max());
    box.setValidator(new StorableText(box, separators));
}

void guardText(QPlainTextEdit& box, const QString& separators)
{
    QObject::connect(&box, &QPlainTextEdit::textChanged, &box, [&box, separators] {
        makeStorable(box, {separators, true});
    });
}

QString textOf(const QPlainTextEdit& box)
{
    // toPlainText() would turn no-break spaces into spaces.
    return box.document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

} // namespace platform
