// kestrune-cli: Kestrune's work without a window, for scripts.
#include "cli/command.h"
#include "platform/core/error.h"
#include "platform/core/file_replacement.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextStream>
#include <algorithm>
#include <cstdio>
#include <new>

using namespace Qt::StringLiterals;

namespace {

ExitCode tellVersion()
{
    QTextStream(stdout) << u"Kestrune %1\n"_s.arg(QStringLiteral(KESTRUNE_VERSION));
    return Success;
}

/// Runs a command on the words behind its name.
ExitCode run(const Command& command, const QStringList& words)
{
    QTextStream err(stderr);
    try {
        const Arguments arguments = parse(command.options, words);
        if (arguments.wantsHelp) {
            QTextStream(stdout) << help(command);
            return Success;
        }
        const ExitCode result = arguments.wantsVersion ? tellVersion() : command.run(arguments);
        if (std::fflush(stdout) == 0 && !std::ferror(stdout))
            return result;
        err << u"kestrune-cli %1: no se puede escribir la respuesta.\n"_s.arg(command.name);
    } catch (const UsageError& fault) {
        err << u"kestrune-cli %1: %2.\nUso: kestrune-cli %3\n"_s.arg(command.name, fault.text,
                                                                     usage(command));
    } catch (const platform::Error& error) {
        err << u"kestrune-cli %1: %2\n"_s.arg(command.name, error.description);
    } catch (const std::bad_alloc&) {
        err << u"kestrune-cli %1: no queda memoria.\n"_s.arg(command.name);
    }
    return Failure;
}

/// Runs the program on the words behind its name when the first of them is no command.
ExitCode runWithoutCommand(const QStringList& words)
{
    QTextStream err(stderr);
    try {
        const Arguments arguments = parse({}, words);
        if (arguments.wantsVersion)
            return tellVersion();
        if (arguments.wantsHelp) {
            QTextStream(stdout) << generalHelp();
            return Success;
        }
        if (!arguments.positional.isEmpty())
            err << u"kestrune-cli: no existe la orden «%1».\n\n"_s.arg(
                arguments.positional.first());
    } catch (const UsageError& fault) {
        err << u"kestrune-cli: %1.\n\n"_s.arg(fault.text);
    }
    err << generalHelp();
    return Failure;
}

ExitCode run(const QStringList& words)
{
    const auto command =
        std::find_if(commands().begin(), commands().end(),
                     [&](const Command& known) { return known.name == words.value(0); });
    return command == commands().end() ? runWithoutCommand(words) : run(*command, words.sliced(1));
}

} // namespace

int main(int argc, char** argv)
{
#ifdef Q_OS_LINUX
    // Letters need fonts, but no screen; nor is there anything to tell of one that is missing.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(u"default.warning=false"_s);
#endif
    const QGuiApplication application(argc, argv);
    platform::outliveFileSizeLimit();
    return run(QCoreApplication::arguments().sliced(1));
}
