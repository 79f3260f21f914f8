#include "exchange/csv_table.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';

QChar separatorOf(const QString& text)
{
    const QStringView first = QStringView(text).left(text.indexOf(u'\n'));
    constexpr std::array<char16_t, 3> separators{u',', u';', u'\t'};
    return *std::max_element(separators.begin(), separators.end(),
                             [&](QChar a, QChar b) { return first.count(a) < first.count(b); });
}

bool looksLikeFormula(const QString& text)
{
    static const QRegularExpression form(u"^'*[=+\\-@]"_s);
    return form.match(text).hasMatch();
}

QString quoted(const QString& field)
{
    static const QRegularExpression special(u"[\",;\\t\\r\\n]"_s);
    // Blanks at an end would be taken away by some readers.
    if (!special.match(field).hasMatch() && field.trimmed() == field)
        return field;
    return quote + QString(field).replace(quote, u"\"\""_s) + quote;
}

} // namespace

QString csvLine(const QStringList& fields)
{
    QStringList all;
    for (const QString& field : fields)
        all.append(quoted(field));
    return all.join(u',') + u"\r\n"_s;
}

std::vector<CsvRow> csvRows(const QString& text)
{
    const QChar separator = separatorOf(text);
    std::vector<CsvRow> rows;
    CsvRow row{1, {}};
    QString field;
    bool isQuoted = false;
    int line = 1;
    const auto endField = [&] { row.fields.append(std::exchange(field, {})); };
    const auto endRow = [&] {
        endField();
        if (row.fields != QStringList{QString()})
            rows.push_back(row);
        row = {line, {}};
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isNext = i + 1 < text.size();
        if (c == u'\n')
            ++line;
        if (isQuoted) {
            if (c != quote)
                field += c;
            else if (isNext && text[i + 1] == quote)
                field += text[++i];
            else
                isQuoted = false;
        } else if (c == quote && field.isEmpty()) {
            isQuoted = true;
        } else if (c == separator) {
            endField();
        } else if (c == u'\n') {
            endRow();
        } else if (c != u'\r' || !isNext || text[i + 1] != u'\n') {
            field += c;
        }
    }
    row.isClosed = !isQuoted;
    if (!field.isEmpty() || !row.fields.isEmpty() || isQuoted)
        endRow();
    return rows;
}

QString guardedCell(const QString& text)
{
    return looksLikeFormula(text) ? u'\'' + text : text;
}

QString unguardedCell(const QString& cell)
{
    return cell.startsWith(u'\'') && looksLikeFormula(cell) ? cell.sliced(1) : cell;
}
