#include "generation/name_grammar.h"

#include "app/procs.h"
#include "platform/core/app_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <limits>
#include <vector>

using namespace Qt::StringLiterals;
using platform::Error;
using platform::ErrorNumber;
using platform::OnFault;

namespace {

// A grammar that reaches one of these limits would go on without end.
constexpr int maxReplacements = 10'000;
constexpr int maxNestedFiles = 32;
constexpr qsizetype maxTextLength = 1024 * 1024;

Error faulty(const QString& path, const QString& reason)
{
    return Error(ErrorNumber::BadFormat, u"%1: %2."_s.arg(platform::displayPath(path), reason));
}

/// The rules of one grammar file. They are views of its text, so that reading a file costs little
/// more than looking it through.
class Grammar
{
public:
    explicit Grammar(const QString& path, const OnFault& onFault = platform::giveUp);
    Grammar(const Grammar&) = delete;
    Grammar& operator=(const Grammar&) = delete;

    /// A random alternative of the first rule, or of the rule of that name.
    QStringView pickFromFirst() const;
    QStringView pickFrom(QStringView name) const;
    const QString& path() const { return path_; }
    /// Tells of whatever in the rules' texts could stop an expansion.
    void check(const OnFault& onFault) const;

private:
    struct Alternative {
        QStringView text;
        qint64 upTo; ///< the weights of the rule's alternatives up to this one, added up
    };
    struct Rule {
        QStringView name;
        std::vector<Alternative> alternatives;
    };

    void addRule(QStringView piece, const OnFault& onFault);
    std::optional<QString> problemOf(QStringView text) const;
    bool canEnd(QStringList& files) const;
    static bool fileCanEnd(const QString& path, QStringList& files);
    void addAlternative(Rule& rule, QStringView line) const;
    QStringView pick(const Rule& rule) const;
    Error faultyLine(QStringView place, const QString& reason) const;

    QString path_;
    QString text_;
    std::vector<Rule> rules_;
    QHash<QString, std::size_t> byName_; ///< by the name in small letters
};

/// The names that stand between two marks in a text.
QStringList namesBetween(QStringView text, QChar open, QChar close)
{
    QStringList names;
    for (qsizetype start = text.indexOf(open); start >= 0;) {
        const qsizetype end = text.indexOf(close, start);
        if (end < 0)
            break;
        names.append(text.sliced(start + 1, end - start - 1).toString());
        start = text.indexOf(open, end);
    }
    return names;
}

bool isLineEnd(QChar c)
{
    return c == u'\r' || c == u'\n';
}

Grammar::Grammar(const QString& path, const OnFault& onFault)
    : path_(path),
      text_(platform::readTextFile(path).text)
{
    qsizetype start = text_.indexOf(u'[');
    while (start >= 0) {
        const qsizetype next = text_.indexOf(u'[', start + 1);
        const qsizetype end = next < 0 ? text_.size() : next;
        try {
            addRule(QStringView(text_).sliced(start + 1, end - start - 1), onFault);
        } catch (const Error& fault) {
            onFault(fault);
        }
        start = next;
    }
    if (rules_.empty())
        onFault(faulty(path_, u"no contiene ninguna regla"_s));
}

void Grammar::addRule(QStringView piece, const OnFault& onFault)
{
    const qsizetype nameEnd = piece.indexOf(u']');
    if (nameEnd < 0)
        throw faultyLine(piece, u"falta «]» detrás de «[»"_s);
    Rule rule{piece.first(nameEnd), {}};
    const qsizetype index = static_cast<qsizetype>(rules_.size());
    if (byName_.contains(rule.name.toString().toLower()))
        throw faultyLine(piece, u"la regla «%1» está repetida"_s.arg(rule.name));
    byName_.insert(rule.name.toString().toLower(), static_cast<std::size_t>(index));

    const QChar* at = std::find_if(piece.begin(), piece.end(), isLineEnd); // past the header line
    while (at != piece.end()) {
        const QChar* const start = std::find_if_not(at, piece.end(), isLineEnd);
        at = std::find_if(start, piece.end(), isLineEnd);
        if (start == at)
            continue;
        try {
            addAlternative(rule, QStringView(start, at));
        } catch (const Error& fault) {
            onFault(fault);
        }
    }
    rules_.push_back(std::move(rule));
}

void Grammar::addAlternative(Rule& rule, QStringView line) const
{
    qint64 weight = 1;
    QStringView text = line;
    if (const qsizetype bar = line.indexOf(u'|'); bar >= 0) {
        bool isNumber = false;
        weight = line.first(bar).toInt(&isNumber);
        if (!isNumber)
            throw faultyLine(line, u"el peso «%1» de la regla «%2» no es un número entero"_s.arg(
                                       line.first(bar), rule.name));
        text = line.sliced(bar + 1);
        if (const qsizetype second = text.indexOf(u'|'); second >= 0)
            text = text.first(second);
    }
    if (weight <= 0)
        return;
    const qint64 before = rule.alternatives.empty() ? 0 : rule.alternatives.back().upTo;
    if (before + weight > std::numeric_limits<std::int32_t>::max())
        throw faultyLine(line,
                         u"los pesos de la regla «%1» son demasiado grandes"_s.arg(rule.name));
    rule.alternatives.push_back({text, before + weight});
}

QStringView Grammar::pickFromFirst() const
{
    return pick(rules_.front());
}

QStringView Grammar::pickFrom(QStringView name) const
{
    const auto found = byName_.constFind(name.toString().toLower());
    if (found == byName_.constEnd())
        throw faulty(path_, u"no existe la regla «%1»"_s.arg(name));
    return pick(rules_[*found]);
}

QStringView Grammar::pick(const Rule& rule) const
{
    if (rule.alternatives.empty())
        throw faulty(path_, u"la regla «%1» no tiene ninguna alternativa"_s.arg(rule.name));
    const qint64 drawn =
        Procs::RandomInRange(1, static_cast<std::int32_t>(rule.alternatives.back().upTo));
    return std::lower_bound(rule.alternatives.begin(), rule.alternatives.end(), drawn,
                            [](const Alternative& alternative, qint64 number) {
                                return alternative.upTo < number;
                            })
        ->text;
}

void Grammar::check(const OnFault& onFault) const
{
    for (const Rule& rule : rules_) {
        if (rule.alternatives.empty())
            onFault(faultyLine(rule.name,
                               u"la regla «%1» no tiene ninguna alternativa"_s.arg(rule.name)));
        for (const Alternative& alternative : rule.alternatives) {
            if (const std::optional<QString> problem = problemOf(alternative.text))
                onFault(faultyLine(alternative.text, *problem));
        }
    }
    QStringList files{path_};
    if (!rules_.empty() && !canEnd(files))
        onFault(faulty(path_, u"la regla «%1» no termina nunca"_s.arg(rules_.front().name)));
}

/// What is wrong with the references and inclusions of an alternative, if anything.
std::optional<QString> Grammar::problemOf(QStringView text) const
{
    for (const auto& [open, close] : {std::pair<QChar, QChar>(u'<', u'>'), {u'{', u'}'}}) {
        qsizetype end = -1;
        for (qsizetype start = text.indexOf(open); start >= 0; start = text.indexOf(open, end)) {
            if (const qsizetype stray = text.indexOf(close, end + 1); stray >= 0 && stray < start)
                return u"«%1» está delante de «%2»"_s.arg(close).arg(open);
            end = text.indexOf(close, start);
            if (end < 0)
                return u"falta «%1» detrás de «%2»"_s.arg(close).arg(open);
            const QString name = text.sliced(start + 1, end - start - 1).toString();
            if (open == u'<' && !byName_.contains(name.toLower()))
                return u"no existe la regla «%1»"_s.arg(name);
            if (open == u'{' && !QFileInfo(platform::inAppFolder(name)).isFile())
                return u"no se encuentra el archivo «%1»"_s.arg(name);
        }
    }
    return std::nullopt;
}

/// Whether an expansion of the first rule can come to an end. `files` are those being expanded,
/// from the outermost to this one, which a name can't wait for.
bool Grammar::canEnd(QStringList& files) const
{
    QSet<QString> ending; // rules known to be able to end, by their names in small letters
    const auto isEnding = [&](const Alternative& alternative) {
        for (const QString& name : namesBetween(alternative.text, u'<', u'>')) {
            if (byName_.contains(name.toLower()) && !ending.contains(name.toLower()))
                return false;
        }
        for (const QString& name : namesBetween(alternative.text, u'{', u'}')) {
            if (!fileCanEnd(platform::inAppFolder(name), files))
                return false;
        }
        return true;
    };
    for (bool found = true; found;) {
        found = false;
        for (const Rule& rule : rules_) {
            const QString name = rule.name.toString().toLower();
            if (!ending.contains(name) &&
                std::any_of(rule.alternatives.begin(), rule.alternatives.end(), isEnding)) {
                ending.insert(name);
                found = true;
            }
        }
    }
    return ending.contains(rules_.front().name.toString().toLower());
}

bool Grammar::fileCanEnd(const QString& path, QStringList& files)
{
    if (files.contains(path) || files.size() > maxNestedFiles)
        return false;
    try {
        const Grammar grammar(path);
        files.append(path);
        const bool ends = grammar.canEnd(files);
        files.removeLast();
        return ends;
    } catch (const Error&) {
        return true; // its own faults are told of elsewhere
    }
}

Error Grammar::faultyLine(QStringView place, const QString& reason) const
{
    const QString before = text_.first(place.begin() - QStringView(text_).begin());
    // A line break at its end begins the line that is meant.
    const std::size_t line = platform::splitLines(before + u'.').size() - 1;
    return platform::TextFile{path_, {}}.errorAt(line, reason);
}

/// One call of generarNombre, over all files that it reaches.
class Expansion
{
public:
    QString expand(const Grammar& grammar);

private:
    /// What stands between the first opening mark of the text at or after `from` and the first
    /// closing mark. Before `from` there is neither.
    struct Marked {
        qsizetype start;
        qsizetype length; ///< with both marks
        QString name;
    };
    static std::optional<Marked> find(const Grammar& grammar, const QString& text, qsizetype from,
                                      QChar open, QChar close);
    void count(const Grammar& grammar, const Marked& marked, qsizetype newLength);

    int replacements_ = 0;
    int depth_ = 0;
};

QString Expansion::expand(const Grammar& grammar)
{
    QString text = grammar.pickFromFirst().toString();
    qsizetype from = 0;
    while (const auto reference = find(grammar, text, from, u'<', u'>')) {
        const QStringView chosen = grammar.pickFrom(reference->name);
        count(grammar, *reference, text.size() + chosen.size());
        text.replace(reference->start, reference->length, chosen.data(), chosen.size());
        from = reference->start;
    }
    from = 0;
    while (const auto inclusion = find(grammar, text, from, u'{', u'}')) {
        if (++depth_ > maxNestedFiles)
            throw faulty(
                grammar.path(),
                u"«{%1}» incluye archivos dentro de archivos sin fin"_s.arg(inclusion->name));
        const QString name = expand(Grammar(platform::inAppFolder(inclusion->name)));
        --depth_;
        count(grammar, *inclusion, text.size() + name.size());
        text.replace(inclusion->start, inclusion->length, name);
        from = inclusion->start;
    }
    return text;
}

std::optional<Expansion::Marked> Expansion::find(const Grammar& grammar, const QString& text,
                                                 qsizetype from, QChar open, QChar close)
{
    const qsizetype start = text.indexOf(open, from);
    if (start < 0)
        return std::nullopt;
    const qsizetype end = text.indexOf(close, from);
    if (end < start)
        throw faulty(grammar.path(), u"falta «%1» detrás de «%2» en «%3»"_s.arg(
                                         QString(close), QString(open), text.left(60)));
    return Marked{start, end - start + 1, text.sliced(start + 1, end - start - 1)};
}

void Expansion::count(const Grammar& grammar, const Marked& marked, qsizetype newLength)
{
    if (++replacements_ > maxReplacements || newLength > maxTextLength)
        throw faulty(grammar.path(), u"la regla «%1» no termina nunca"_s.arg(marked.name));
}

} // namespace

QString Procs::generarNombre(int count, const QString& grammarFile)
{
    const Grammar grammar(QDir::isAbsolutePath(grammarFile) ? grammarFile
                                                            : platform::inAppFolder(grammarFile));
    Expansion expansion;
    QString result;
    for (int i = 0; i < count; ++i)
        result += expansion.expand(grammar);
    return result;
}

void Procs::checkGrammar(const QString& path, const OnFault& onFault)
{
    Grammar(path, onFault).check(onFault);
}
