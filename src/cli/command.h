#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// What the commands of kestrune-cli end with.
enum ExitCode { Success = 0, Failure = 2 };

/// The arguments of a command, taken apart: "--name value" pairs and the rest in order.
struct Arguments {
    QHash<QString, QString> options; ///< by name, without the dashes
    QStringList positional;
};

/// One command: its name, what it takes, and the code that runs it. Commands throw platform::Error,
/// which main reports.
struct Command {
    QString name;
    QString usage;       ///< what follows the name
    QString explanation; ///< for --ayuda
    QStringList options; ///< the options it knows, without the dashes
    ExitCode (*run)(const Arguments& arguments);
};

/// A fault in how a command was called; its text is Spanish.
struct UsageError {
    QString text;
};

ExitCode dibujar(const Arguments& arguments);
