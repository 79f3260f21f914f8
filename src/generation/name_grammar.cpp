#include "generation/name_grammar.h"

#include "generation/grammar_file.h"
#include "platform/core/app_folder.h"

#include <deque>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxTextLength = 1024 * 1024;

/// A text that is looked through from its beginning, while others are put in front of what is left.
class Pending
{
public:
    void putInFront(const QString& text)
    {
        if (text.isEmpty())
            return;
        texts_.push_back(text);
        pieces_.emplace_back(texts_.back());
    }

    /// Takes everything in front of the next such mark, and the mark. Nothing when there is none;
    /// `taken` is then all that was left.
    bool takeThrough(QChar mark, QString& taken)
    {
        taken.clear();
        while (!pieces_.empty()) {
            QStringView& piece = pieces_.back();
            const qsizetype end = piece.indexOf(mark);
            const qsizetype length = end < 0 ? piece.size() : end;
            taken += piece.first(length);
            piece = piece.sliced(end < 0 ? length : length + 1);
            if (piece.isEmpty())
                pieces_.pop_back();
            if (end >= 0)
                return true;
        }
        return false;
    }

private:
    std::deque<QString> texts_;
    std::vector<QStringView> pieces_; ///< what is left of them, the next one last
};

/// One call of generarNombre, over all files that it reaches.
class Expansion
{
public:
    QString generate(int count, const QString& path);

private:
    QString expand(const Grammar& grammar);
    QString include(const Grammar& grammar, const QString& name);
    void count(const Grammar& grammar, const QString& name, const QString& inserted);

    /// The text with everything that stands between two marks replaced by what the function gives
    /// for it, which is looked through in its turn.
    template <typename Replacement>
    QString replaceAll(const Grammar& grammar, const QString& text, QChar open, QChar close,
                       const Replacement& replacement);

    int replacements_ = 0;
    int depth_ = 0;
    qsizetype length_ = 0; ///< of all texts that were inserted, those that are gone again too
    qint64 bytes_ = 0;     ///< of all files that were read
};

QString Expansion::generate(int count, const QString& path)
{
    const Grammar grammar(path);
    bytes_ = grammar.bytes();
    QString result;
    for (int i = 0; i < count; ++i)
        result += expand(grammar);
    return result;
}

QString Expansion::expand(const Grammar& grammar)
{
    const QString text =
        replaceAll(grammar, grammar.pickFromFirst().toString(), u'<', u'>',
                   [&](const QString& name) { return grammar.pickFrom(name).toString(); });
    return replaceAll(grammar, text, u'{', u'}',
                      [&](const QString& name) { return include(grammar, name); });
}

QString Expansion::include(const Grammar& grammar, const QString& name)
{
    if (++depth_ > Procs::maxNestedFiles)
        throw grammar.faulty(
            u"«{%1}» incluye archivos dentro de archivos sin fin"_s.arg(cited(name)));
    const Grammar included(platform::fromAppFolder(name));
    bytes_ += included.bytes();
    if (bytes_ > Grammar::maxBytes)
        throw grammar.faulty(
            u"con «{%1}» se leen más de %2 MB para un solo nombre"_s.arg(cited(name))
                .arg(Grammar::maxBytes / (1024 * 1024)));
    QString text = expand(included);
    --depth_;
    return text;
}

void Expansion::count(const Grammar& grammar, const QString& name, const QString& inserted)
{
    length_ += inserted.size();
    if (++replacements_ > Procs::maxReplacements || length_ > maxTextLength)
        throw grammar.faulty(u"la regla «%1» no termina nunca"_s.arg(cited(name)));
}

template <typename Replacement>
QString Expansion::replaceAll(const Grammar& grammar, const QString& text, QChar open, QChar close,
                              const Replacement& replacement)
{
    Pending pending;
    pending.putInFront(text);
    QString done;
    QString taken;
    bool isClosed = false;
    while (pending.takeThrough(open, taken)) {
        done += taken;
        // The first closing mark must be the one that belongs to the first opening mark.
        QString name;
        isClosed = isClosed || taken.contains(close);
        if (isClosed || !pending.takeThrough(close, name))
            throw grammar.faulty(u"falta «%1» detrás de «%2» en «%3»"_s.arg(
                QString(close), QString(open), cited(done + open + name)));
        const QString inserted = replacement(name);
        count(grammar, name, inserted);
        pending.putInFront(inserted);
    }
    return done + taken;
}

} // namespace

QString Procs::generarNombre(int count, const QString& grammarFile)
{
    return Expansion().generate(count, platform::fromAppFolder(grammarFile));
}
