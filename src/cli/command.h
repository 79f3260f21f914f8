#pragma once

#include <QHash>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <optional>

/// What the commands of kestrune-cli end with.
enum ExitCode {
    Success = 0,
    No = 1,     ///< the answer is no: there is no such road, the data has faults
    Failure = 2 ///< the command was called badly or couldn't do its work
};

/// A fault in how a command was called; its text is Spanish.
struct UsageError {
    QString text;
};

/// The arguments of a command, taken apart: "--name value" pairs and the rest in order. All members
/// throw UsageError.
struct Arguments {
    QHash<QString, QString> options; ///< by name, without the dashes
    QStringList flags;               ///< options without a value
    QStringList positional;

    /// The one argument that isn't an option; `what` names it in the message when it's missing.
    const QString& only(const QString& what) const;
    bool has(const QString& option) const { return options.contains(option); }
    /// An option's value, which must be there and not empty.
    QString value(const QString& option) const;
    /// An option's value as a whole number between two bounds, or `otherwise` without the option.
    int number(const QString& option, int lowest, int highest,
               std::optional<int> otherwise = std::nullopt) const;
    /// Seeds the random source with the option "semilla", or from the clock without it.
    void seed() const;
    /// An option's value "X,Y" as a cell.
    QPoint cell(const QString& option) const;
};

/// A text as a whole number between two bounds; `what` names it in the message. Throws UsageError.
int parseNumber(const QString& text, int lowest, int highest, const QString& what);

/// One command: its name, what it takes, and the code that runs it. Commands throw UsageError and
/// platform::Error, which main reports.
struct Command {
    QString name;
    QString usage;       ///< what follows the name
    QString explanation; ///< for --ayuda
    QStringList options; ///< the options it knows, without the dashes
    QStringList flags;   ///< the options that take no value
    ExitCode (*run)(const Arguments& arguments);
};

ExitCode generar(const Arguments& arguments);
ExitCode dibujar(const Arguments& arguments);
ExitCode ruta(const Arguments& arguments);
ExitCode clima(const Arguments& arguments);
ExitCode nombres(const Arguments& arguments);
ExitCode local(const Arguments& arguments);
ExitCode validar(const Arguments& arguments);
