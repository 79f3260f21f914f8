#pragma once

#include <QString>
#include <vector>

namespace platform {

/// A text as it is searched: letter case, accents and variant forms of characters don't count, in
/// whatever way they are composed ("Árbol" and "arbol" fold to the same).
QString foldText(const QString& text);

/// What was typed to filter a list: words between blanks, all of which a text must hold, each
/// anywhere in it.
class TextFilter
{
public:
    TextFilter() = default;
    explicit TextFilter(const QString& typed);

    /// Whether it lets everything through.
    bool isEmpty() const { return words_.empty(); }
    /// Whether a text, folded by foldText, holds every word.
    bool matches(const QString& folded) const;

private:
    std::vector<QString> words_; ///< none is part of another one
};

} // namespace platform
