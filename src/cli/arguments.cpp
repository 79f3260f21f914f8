#include "cli/command.h"
#include "platform/core/random_source.h"

#include <QRegularExpression>
#include <limits>

using namespace Qt::StringLiterals;

const QString& Arguments::only(const QString& what) const
{
    if (positional.size() != 1)
        throw UsageError{positional.isEmpty() ? u"falta %1"_s.arg(what)
                                              : u"sobra «%1»"_s.arg(positional[1])};
    return positional.first();
}

QString Arguments::value(const QString& option) const
{
    if (!has(option))
        throw UsageError{u"falta la opción --%1"_s.arg(option)};
    if (options[option].isEmpty())
        throw UsageError{u"la opción --%1 está vacía"_s.arg(option)};
    return options[option];
}

int Arguments::number(const QString& option, int lowest, int highest,
                      std::optional<int> otherwise) const
{
    if (otherwise && !has(option))
        return *otherwise;
    return parseNumber(value(option), lowest, highest, u"--"_s + option);
}

void Arguments::seed() const
{
    if (!has(u"semilla"_s)) {
        platform::randomSource().seedFromClock();
        return;
    }
    bool isNumber = false;
    const quint64 number = value(u"semilla"_s).toULongLong(&isNumber);
    if (!isNumber)
        throw UsageError{u"--semilla ha de ser un número entero de 0 a %1"_s.arg(
            std::numeric_limits<quint64>::max())};
    platform::randomSource().seed(number);
}

QPoint Arguments::cell(const QString& option) const
{
    static const QRegularExpression pattern(u"^(-?\\d{1,6}),(-?\\d{1,6})$"_s);
    const QRegularExpressionMatch match = pattern.match(value(option));
    if (!match.hasMatch())
        throw UsageError{u"--%1 ha de ser una casilla X,Y y no «%2»"_s.arg(option, value(option))};
    return {match.captured(1).toInt(), match.captured(2).toInt()};
}

int parseNumber(const QString& text, int lowest, int highest, const QString& what)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < lowest || number > highest)
        throw UsageError{u"%1 ha de ser un número entero de %2 a %3 y no «%4»"_s.arg(
            what, QString::number(lowest), QString::number(highest), text)};
    return number;
}
