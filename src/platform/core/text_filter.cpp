#include "platform/core/text_filter.h"

#include <QStringList>
#include <algorithm>

namespace platform {
namespace {

bool isAccent(QChar c)
{
    return c.category() == QChar::Mark_NonSpacing;
}

} // namespace

QString foldText(const QString& text)
{
    QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    folded.removeIf(isAccent);
    return folded;
}

TextFilter::TextFilter(const QString& typed)
{
    QStringList words = foldText(typed).simplified().split(u' ', Qt::SkipEmptyParts);
    words.removeDuplicates();
    // The longest first: they are the rarest, and a text that holds them holds their parts.
    std::sort(words.begin(), words.end(),
              [](const QString& a, const QString& b) { return a.size() > b.size(); });
    for (const QString& word : words) {
        if (std::none_of(words_.begin(), words_.end(),
                         [&](const QString& longer) { return longer.contains(word); }))
            words_.push_back(word);
    }
}

bool TextFilter::matches(const QString& folded) const
{
    return std::all_of(words_.begin(), words_.end(),
                       [&](const QString& word) { return folded.contains(word); });
}

} // namespace platform
