#include "generation/grammar_check.h"

#include "generation/grammar_file.h"
#include "generation/name_grammar.h"
#include "platform/core/app_folder.h"
#include "platform/core/text_codec.h"

#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <array>
#include <memory>
#include <queue>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using platform::Error;
using platform::OnFault;

namespace {

/// A grammar file of a check.
struct File {
    std::unique_ptr<Grammar> grammar; ///< none when it can't be read
    QString problem;                  ///< why it can't
    std::size_t firstRule;            ///< the place of its rules among those of all files
};

/// A rule that stands in an alternative, by a reference or as the first one of a file.
struct Part {
    std::size_t rule;
    qint64 included; ///< how many bytes are read for it; none for a reference
};

struct Choice {
    const Grammar* grammar;
    std::size_t rule;
    QStringView text;
    std::vector<Part> parts; ///< those that are there
};

/// What making up a name may take only so much of.
struct Measure {
    qint64 limit;
    qint64 (*ofPart)(const Part& part);
    bool nests; ///< of the parts of an alternative the largest counts, not their sum
    QString excess;
};

const std::array<Measure, 3>& measures()
{
    static const std::array<Measure, 3> all{
        {{Procs::maxReplacements, [](const Part&) { return qint64{1}; }, false,
          u"siempre pasa de %1 sustituciones"_s.arg(Procs::maxReplacements)},
         {Procs::maxNestedFiles, [](const Part& part) { return qint64{part.included > 0}; }, true,
          u"siempre incluye más de %1 archivos uno dentro de otro"_s.arg(Procs::maxNestedFiles)},
         {Grammar::maxBytes, [](const Part& part) { return part.included; }, false,
          u"siempre lee más de %1 MB de archivos"_s.arg(Grammar::maxBytes / (1024 * 1024))}}};
    return all;
}

/// The files of a check with all that they include, each read once, as one net of rules.
class Net
{
public:
    explicit Net(const OnFault& onFault) : onFault_(onFault) {}

    void addFiles(const QStringList& paths);
    void tellOfEndless();
    void tellOfExcess(const Measure& measure);
    int fileCount() const { return static_cast<int>(files_.size()); }

private:
    std::size_t fileAt(const QString& path);
    void addChoices(const Grammar& grammar, std::size_t firstRule);
    std::vector<Part> partsOf(const Grammar& grammar, std::size_t firstRule, QStringView text);
    const File& included(const QString& name);
    std::vector<std::optional<qint64>> least(const Measure& measure) const;

    const OnFault& onFault_;
    std::vector<File> files_;
    QHash<QString, std::size_t> byPath_; ///< the files', by their canonical paths
    QHash<QString, std::size_t> byName_; ///< the same by the names that inclusions give
    std::size_t ruleCount_ = 0;
    std::vector<Choice> choices_;
};

/// The names between the marks of an alternative. Throws Error when the marks don't pair.
QStringList namesBetween(const Grammar& grammar, QStringView text, QChar open, QChar close)
{
    QStringList names;
    qsizetype end = -1;
    for (qsizetype start = text.indexOf(open); start >= 0; start = text.indexOf(open, end)) {
        if (const qsizetype stray = text.indexOf(close, end + 1); stray >= 0 && stray < start)
            throw grammar.faultyLine(text, u"«%1» está delante de «%2»"_s.arg(close).arg(open));
        end = text.indexOf(close, start);
        if (end < 0)
            throw grammar.faultyLine(text, u"falta «%1» detrás de «%2»"_s.arg(close).arg(open));
        names.append(text.sliced(start + 1, end - start - 1).toString());
    }
    return names;
}

void Net::addFiles(const QStringList& paths)
{
    for (const QString& path : paths) {
        const File& file = files_[fileAt(path)];
        if (!file.grammar)
            onFault_(Error(platform::ErrorNumber::FileUnreadable, file.problem));
    }
    // Further files are added while the inclusions of these are looked up.
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (files_[i].grammar)
            addChoices(*files_[i].grammar, files_[i].firstRule);
    }
}

/// The place of a file among the files, where it is put when it isn't there.
std::size_t Net::fileAt(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString& key = canonical.isEmpty() ? path : canonical;
    if (const auto known = byPath_.constFind(key); known != byPath_.constEnd())
        return *known;
    byPath_.insert(key, files_.size());
    File file{nullptr, {}, ruleCount_};
    try {
        file.grammar = std::make_unique<Grammar>(path, onFault_);
        ruleCount_ += file.grammar->rules().size();
    } catch (const Error& error) {
        file.problem = error.description;
    }
    files_.push_back(std::move(file));
    return files_.size() - 1;
}

void Net::addChoices(const Grammar& grammar, std::size_t firstRule)
{
    std::size_t index = firstRule;
    for (const Grammar::Rule& rule : grammar.rules()) {
        if (rule.alternatives.empty()) {
            onFault_(grammar.faultyLine(
                rule.name, u"la regla «%1» no tiene ninguna alternativa"_s.arg(cited(rule.name))));
            choices_.push_back({&grammar, index, rule.name, {}}); // told of once is enough
        }
        for (const Grammar::Alternative& alternative : rule.alternatives) {
            Choice choice{&grammar, index, alternative.text, {}};
            try {
                choice.parts = partsOf(grammar, firstRule, alternative.text);
                if (const auto outside = platform::firstOutsideWindows1252(alternative.text))
                    onFault_(grammar.faultyLine(
                        alternative.text, u"«%1» no se puede guardar en un mapa"_s.arg(*outside)));
            } catch (const Error& fault) {
                onFault_(fault);
            }
            choices_.push_back(std::move(choice));
        }
        ++index;
    }
}

/// Throws Error when something is wrong with a reference or an inclusion of an alternative.
std::vector<Part> Net::partsOf(const Grammar& grammar, std::size_t firstRule, QStringView text)
{
    std::vector<Part> parts;
    for (const QString& name : namesBetween(grammar, text, u'<', u'>')) {
        const std::optional<std::size_t> rule = grammar.find(name);
        if (!rule)
            throw grammar.faultyLine(text, u"no existe la regla «%1»"_s.arg(cited(name)));
        parts.push_back({firstRule + *rule, 0});
    }
    for (const QString& name : namesBetween(grammar, text, u'{', u'}')) {
        if (name.contains(u'<'))
            continue; // the file is known only when the reference has been expanded
        const File& file = included(name);
        if (!file.grammar)
            throw grammar.faultyLine(
                text, u"no se puede incluir «%1». %2"_s.arg(cited(name), file.problem));
        if (!file.grammar->rules().empty())
            parts.push_back({file.firstRule, file.grammar->bytes()});
    }
    return parts;
}

const File& Net::included(const QString& name)
{
    auto known = byName_.constFind(name);
    if (known == byName_.constEnd())
        known = byName_.insert(name, fileAt(platform::fromAppFolder(name)));
    return files_[*known];
}

/// The least that expanding each rule takes, up to one more than the limit; nothing for a rule that
/// never comes to an end. Rules are found from the cheapest to the dearest, each when all parts of
/// one of its alternatives have been.
std::vector<std::optional<qint64>> Net::least(const Measure& measure) const
{
    std::vector<std::vector<std::pair<std::size_t, qint64>>> uses(ruleCount_); // choice, own cost
    std::vector<std::size_t> waiting(choices_.size());
    std::vector<qint64> costs(choices_.size());
    using Entry = std::pair<qint64, std::size_t>; // cost, rule
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> found;
    for (std::size_t i = 0; i < choices_.size(); ++i) {
        waiting[i] = choices_[i].parts.size();
        if (waiting[i] == 0)
            found.emplace(0, choices_[i].rule);
        for (const Part& part : choices_[i].parts)
            uses[part.rule].emplace_back(i, measure.ofPart(part));
    }
    std::vector<std::optional<qint64>> result(ruleCount_);
    while (!found.empty()) {
        const auto [cost, rule] = found.top();
        found.pop();
        if (result[rule])
            continue;
        result[rule] = cost;
        for (const auto& [choice, own] : uses[rule]) {
            qint64& sum = costs[choice];
            sum = measure.nests ? std::max(sum, cost + own) : sum + cost + own;
            sum = std::min(sum, measure.limit + 1);
            if (--waiting[choice] == 0)
                found.emplace(sum, choices_[choice].rule);
        }
    }
    return result;
}

void Net::tellOfEndless()
{
    const auto costs = least(measures().front());
    for (const File& file : files_) {
        std::size_t index = file.firstRule;
        if (!file.grammar)
            continue;
        for (const Grammar::Rule& rule : file.grammar->rules()) {
            if (!costs[index++])
                onFault_(file.grammar->faultyLine(
                    rule.name, u"la regla «%1» no termina nunca"_s.arg(cited(rule.name))));
        }
    }
}

/// Tells of each alternative that passes the limit though none of its parts does.
void Net::tellOfExcess(const Measure& measure)
{
    const auto costs = least(measure);
    for (const Choice& choice : choices_) {
        qint64 sum = 0;
        const bool partsKeepIt =
            std::all_of(choice.parts.begin(), choice.parts.end(), [&](const Part& part) {
                const qint64 cost = costs[part.rule].value_or(measure.limit + 1);
                const qint64 taken = cost + measure.ofPart(part);
                sum = measure.nests ? std::max(sum, taken) : sum + taken;
                return cost <= measure.limit;
            });
        if (partsKeepIt && sum > measure.limit)
            onFault_(
                choice.grammar->faultyLine(choice.text, u"esta alternativa "_s + measure.excess));
    }
}

} // namespace

int Procs::checkGrammars(const QStringList& paths, const OnFault& onFault)
{
    Net net(onFault);
    net.addFiles(paths);
    net.tellOfEndless();
    for (const Measure& measure : measures())
        net.tellOfExcess(measure);
    return net.fileCount();
}
