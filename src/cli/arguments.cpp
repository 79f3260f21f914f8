#include "cli/command.h"
#include "platform/core/random_source.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTextStream>
#include <QTranslator>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// The parser's own messages in Spanish.
class ParserMessages final : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        static const QHash<QByteArray, QString> messages{
            {"Missing value after '%1'.", u"falta el valor de la opción «%1»"_s},
            {"Unexpected value after '%1'.", u"la opción «%1» no lleva valor"_s}};
        return QByteArrayView(context) == "QCommandLineParser" ? messages.value(source) : QString();
    }
};

/// Why the parser refused the words.
QString problem(const QCommandLineParser& parser)
{
    const QStringList unknown = parser.unknownOptionNames();
    if (unknown.isEmpty())
        return parser.errorText();
    const QString dashes = unknown.first().size() == 1 ? u"-"_s : u"--"_s;
    return u"no existe la opción «%1»"_s.arg(dashes + unknown.first());
}

} // namespace

Arguments parse(const std::vector<Option>& options, const QStringList& words)
{
    ParserMessages messages;
    QCoreApplication::installTranslator(&messages);
    QCommandLineParser parser;
    const QCommandLineOption help(QStringList{u"h"_s, u"help"_s, u"ayuda"_s});
    const QCommandLineOption version(u"version"_s);
    parser.addOptions({help, version});
    for (const Option& option : options)
        parser.addOption(QCommandLineOption(option.name, {}, option.value));

    const bool isUnderstood = parser.parse(QStringList{u"kestrune-cli"_s} + words);
    Arguments arguments;
    arguments.wantsHelp = parser.isSet(help);
    arguments.wantsVersion = parser.isSet(version);
    if (arguments.wantsHelp || arguments.wantsVersion)
        return arguments;
    if (!isUnderstood)
        throw UsageError{problem(parser)};
    for (const Option& option : options) {
        const QStringList values = parser.values(option.name);
        if (values.size() > 1)
            throw UsageError{u"la opción «--%1» está repetida"_s.arg(option.name)};
        if (parser.isSet(option.name))
            arguments.options.insert(option.name, values.value(0));
    }
    arguments.positional = parser.positionalArguments();
    return arguments;
}

const QString& Arguments::only(const QString& what) const
{
    return exactly({what}).first();
}

const QStringList& Arguments::exactly(const QStringList& what) const
{
    if (positional.size() < what.size())
        throw UsageError{u"falta %1"_s.arg(what[positional.size()])};
    if (positional.size() > what.size())
        throw UsageError{u"sobra «%1»"_s.arg(positional[what.size()])};
    return positional;
}

void Arguments::none() const
{
    if (!positional.isEmpty())
        throw UsageError{u"sobra «%1»"_s.arg(positional.first())};
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
    quint64 number = QRandomGenerator::system()->generate();
    bool isNumber = true;
    if (has(u"semilla"_s))
        number = value(u"semilla"_s).toULongLong(&isNumber);
    else
        QTextStream(stderr) << u"Semilla: %1\n"_s.arg(number);
    if (!isNumber)
        throw UsageError{u"--semilla ha de ser un número entero de 0 a %1"_s.arg(
            std::numeric_limits<quint64>::max())};
    platform::randomSource().seed(number);
}

std::optional<QPoint> Arguments::cell(const QString& option) const
{
    static const QRegularExpression pattern(u"^(-?\\d{1,6}),(-?\\d{1,6})$"_s);
    const QRegularExpressionMatch match = pattern.match(value(option));
    if (!match.hasMatch())
        return std::nullopt;
    return QPoint(match.captured(1).toInt(), match.captured(2).toInt());
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
