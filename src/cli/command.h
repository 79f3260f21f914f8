#pragma once

#include <QHash>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

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

/// The arguments of a command, taken apart. All members throw UsageError.
struct Arguments {
    QHash<QString, QString> options; ///< by name, without the dashes; empty for one without a value
    QStringList positional;
    bool wantsHelp = false;
    bool wantsVersion = false;

    /// The one argument that isn't an option; `what` names it in the message when it's missing.
    const QString& only(const QString& what) const;
    /// The arguments that aren't options, as many as are named for the message.
    const QStringList& exactly(const QStringList& what) const;
    /// For commands whose every argument is an option.
    void none() const;
    bool has(const QString& option) const { return options.contains(option); }
    /// An option's value, which must be there and not empty.
    QString value(const QString& option) const;
    /// An option's value as a whole number between two bounds, or `otherwise` without the option.
    int number(const QString& option, int lowest, int highest,
               std::optional<int> otherwise = std::nullopt) const;
    /// Seeds the random source with the option "semilla"; without it with any number, which is told
    /// on standard error.
    void seed() const;
    /// An option's value "X,Y" as a cell; nothing when it has another form.
    std::optional<QPoint> cell(const QString& option) const;
};

/// A text as a whole number between two bounds; `what` names it in the message. Throws UsageError.
int parseNumber(const QString& text, int lowest, int highest, const QString& what);

/// An option of a command, as it is read and explained.
struct Option {
    QString name;        ///< without the dashes
    QString value;       ///< what stands for its value in the help; empty for an option without one
    QString explanation; ///< without a full stop
    bool required = false;
};

/// One command: its name, what it takes, and the code that runs it. Commands throw UsageError and
/// platform::Error, which main reports.
struct Command {
    QString name;
    QString arguments;   ///< what stands in the help for those that aren't options
    QString explanation; ///< lines of --ayuda
    std::vector<Option> options;
    ExitCode (*run)(const Arguments& arguments);
};

const std::vector<Command>& commands();

/// Takes the words behind the name of a command with these options apart. Throws UsageError that
/// names the option.
Arguments parse(const std::vector<Option>& options, const QStringList& words);

/// What --ayuda writes for the program and for a command, and a command's first line of it.
QString generalHelp();
QString help(const Command& command);
QString usage(const Command& command);

ExitCode generar(const Arguments& arguments);
ExitCode dibujar(const Arguments& arguments);
ExitCode exportar(const Arguments& arguments);
ExitCode importar(const Arguments& arguments);
ExitCode ruta(const Arguments& arguments);
ExitCode lugares(const Arguments& arguments);
ExitCode clima(const Arguments& arguments);
ExitCode nombres(const Arguments& arguments);
ExitCode local(const Arguments& arguments);
ExitCode validar(const Arguments& arguments);
