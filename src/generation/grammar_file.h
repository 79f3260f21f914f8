#pragma once

#include "platform/core/text_file.h"

#include <QHash>
#include <QString>
#include <optional>
#include <vector>

/// The rules of one grammar file. They are views of its text, so that reading a file costs little
/// more than looking it through.
class Grammar
{
public:
    struct Alternative {
        QStringView text;
        qint64 upTo; ///< the weights of the rule's alternatives up to this one, added up
    };
    struct Rule {
        QStringView name;
        std::vector<Alternative> alternatives;
    };

    /// How many bytes of grammar files a name may read; no file is larger.
    static constexpr qint64 maxBytes = 16 * 1024 * 1024;

    /// Reads a file. Throws Error when it can't be read; its faults go to onFault.
    explicit Grammar(const QString& path, const platform::OnFault& onFault = platform::giveUp);
    Grammar(const Grammar&) = delete;
    Grammar& operator=(const Grammar&) = delete;

    const QString& path() const { return path_; }
    qint64 bytes() const { return bytes_; }
    /// In the file's order; the first one is where a name starts. Not empty unless onFault
    /// returned.
    const std::vector<Rule>& rules() const { return rules_; }
    /// The place of the rule of that name among them, whatever its letter case.
    std::optional<std::size_t> find(QStringView name) const;

    /// A random alternative of the first rule, or of the rule of that name. Throw Error.
    QStringView pickFromFirst() const;
    QStringView pickFrom(QStringView name) const;

    /// The error for the file as a whole, or for the line of a part of its text.
    platform::Error faulty(const QString& reason) const;
    platform::Error faultyLine(QStringView place, const QString& reason) const;

private:
    void addRule(QStringView piece, const platform::OnFault& onFault);
    void addAlternative(Rule& rule, QStringView line) const;
    QStringView pick(const Rule& rule) const;

    QString path_;
    qint64 bytes_ = 0;
    QString text_;
    std::vector<Rule> rules_;
    QHash<QString, std::size_t> byName_; ///< by the name in small letters
    /// Where the lines of the text begin; empty until a fault asks for one.
    mutable std::vector<qsizetype> lineStarts_;
};

/// A name as messages show it: its beginning, when it's a long one.
QString cited(QStringView name);
