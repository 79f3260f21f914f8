#include "cli/command.h"
#include "cli/progress.h"
#include "generation/name_grammar.h"
#include "platform/core/console.h"

#include <QFileInfo>
#include <QTextStream>

using namespace Qt::StringLiterals;

ExitCode nombres(const Arguments& arguments)
{
    constexpr int most = 1'000'000;
    const int count = parseNumber(arguments.only(u"el número de nombres"_s), 1, most, u"N"_s);
    QString grammar = Procs::placeNames;
    if (arguments.has(u"gramatica"_s)) {
        // A path from the working folder, like any command's; else one of the program's own.
        const QFileInfo file(arguments.value(u"gramatica"_s));
        grammar = file.exists() ? file.absoluteFilePath() : file.filePath();
    }
    arguments.seed();
    constexpr int felt = 20'000; // names that take a time that is
    Progress progress(count > felt && !platform::isTerminal(stdout));
    QTextStream out(stdout);
    for (int i = 0; i < count; ++i) {
        out << Procs::generarNombre(1, grammar) << '\n';
        progress.tell(u"Nombres"_s, static_cast<double>(i) / count);
    }
    return Success;
}
