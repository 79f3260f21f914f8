#include "generation/grammar_file.h"

#include "app/procs.h"
#include "platform/core/app_folder.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using platform::Error;
using platform::OnFault;

namespace {

bool isLineEnd(QChar c)
{
    return c == u'\r' || c == u'\n';
}

} // namespace

Grammar::Grammar(const QString& path, const OnFault& onFault) : path_(path)
{
    const QByteArray bytes = platform::readFile(path, maxBytes);
    bytes_ = bytes.size();
    text_ = platform::decodeFile(path, bytes).text;
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
        onFault(faulty(u"no contiene ninguna regla"_s));
}

void Grammar::addRule(QStringView piece, const OnFault& onFault)
{
    const qsizetype nameEnd = piece.indexOf(u']');
    if (nameEnd < 0)
        throw faultyLine(piece, u"falta «]» detrás de «[»"_s);
    Rule rule{piece.first(nameEnd), {}};
    if (find(rule.name))
        throw faultyLine(piece, u"la regla «%1» está repetida"_s.arg(cited(rule.name)));
    byName_.insert(rule.name.toString().toLower(), rules_.size());

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
                                       cited(line.first(bar)), cited(rule.name)));
        text = line.sliced(bar + 1);
        if (const qsizetype second = text.indexOf(u'|'); second >= 0)
            text = text.first(second);
    }
    if (weight <= 0)
        return;
    const qint64 before = rule.alternatives.empty() ? 0 : rule.alternatives.back().upTo;
    if (before + weight > std::numeric_limits<std::int32_t>::max())
        throw faultyLine(
            line, u"los pesos de la regla «%1» son demasiado grandes"_s.arg(cited(rule.name)));
    rule.alternatives.push_back({text, before + weight});
}

std::optional<std::size_t> Grammar::find(QStringView name) const
{
    const auto found = byName_.constFind(name.toString().toLower());
    return found == byName_.constEnd() ? std::nullopt : std::optional(*found);
}

QStringView Grammar::pickFromFirst() const
{
    return pick(rules_.front());
}

QStringView Grammar::pickFrom(QStringView name) const
{
    const std::optional<std::size_t> rule = find(name);
    if (!rule)
        throw faulty(u"no existe la regla «%1»"_s.arg(cited(name)));
    return pick(rules_[*rule]);
}

QStringView Grammar::pick(const Rule& rule) const
{
    if (rule.alternatives.empty())
        throw faulty(u"la regla «%1» no tiene ninguna alternativa"_s.arg(cited(rule.name)));
    const qint64 drawn =
        Procs::RandomInRange(1, static_cast<std::int32_t>(rule.alternatives.back().upTo));
    return std::lower_bound(rule.alternatives.begin(), rule.alternatives.end(), drawn,
                            [](const Alternative& alternative, qint64 number) {
                                return alternative.upTo < number;
                            })
        ->text;
}

Error Grammar::faulty(const QString& reason) const
{
    return Error(platform::ErrorNumber::BadFormat,
                 u"%1: %2."_s.arg(platform::displayPath(path_), reason));
}

Error Grammar::faultyLine(QStringView place, const QString& reason) const
{
    if (lineStarts_.empty()) {
        lineStarts_.push_back(0);
        for (qsizetype i = 0; i < text_.size(); ++i) {
            const bool inside = text_[i] == u'\r' && i + 1 < text_.size() && text_[i + 1] == u'\n';
            if (isLineEnd(text_[i]) && !inside)
                lineStarts_.push_back(i + 1);
        }
    }
    const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(),
                                       place.begin() - QStringView(text_).begin());
    const auto line = static_cast<std::size_t>(next - lineStarts_.begin()) - 1;
    return platform::TextFile{path_, {}}.errorAt(line, reason);
}

QString cited(QStringView name)
{
    constexpr qsizetype longest = 60;
    return name.size() > longest ? name.first(longest).toString() + u'…' : name.toString();
}
