// kestrune-cli: Kestrune's work without a window, for scripts.
#include "cli/command.h"
#include "platform/core/error.h"

#include <QCoreApplication>
#include <QTextStream>
#include <algorithm>
#include <new>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{
        {u"dibujar"_s,
         u"MAPA --png ARCHIVO"_s,
         u"Dibuja un mapa entero en una imagen PNG. MAPA es la ruta de un archivo "
         ".map\no el nombre de un mapa de la carpeta «mapas»."_s,
         {u"png"_s},
         &dibujar},
    };
    return all;
}

QString generalHelp()
{
    QString text = u"Uso: kestrune-cli ORDEN [ARGUMENTOS]\n\nÓrdenes:\n"_s;
    for (const Command& command : commands())
        text += u"  %1 %2\n"_s.arg(command.name, command.usage);
    return text + u"\n«kestrune-cli ORDEN --ayuda» explica una orden.\n"_s;
}

/// Takes the words after the command's name apart. Throws UsageError.
Arguments parse(const Command& command, const QStringList& words)
{
    Arguments arguments;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (!words[i].startsWith("--"_L1)) {
            arguments.positional.append(words[i]);
            continue;
        }
        const QString name = words[i].sliced(2);
        if (!command.options.contains(name))
            throw UsageError{u"no existe la opción «%1»"_s.arg(words[i])};
        if (i + 1 == words.size())
            throw UsageError{u"falta el valor de la opción «%1»"_s.arg(words[i])};
        if (arguments.options.contains(name))
            throw UsageError{u"la opción «%1» está repetida"_s.arg(words[i])};
        arguments.options.insert(name, words[++i]);
    }
    return arguments;
}

ExitCode run(const QStringList& words)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QString help = u"--ayuda"_s;
    if (words.isEmpty() || words.first() == help) {
        (words.isEmpty() ? err : out) << generalHelp();
        return words.isEmpty() ? Failure : Success;
    }
    const auto command =
        std::find_if(commands().begin(), commands().end(),
                     [&](const Command& known) { return known.name == words.first(); });
    if (command == commands().end()) {
        err << u"kestrune-cli: no existe la orden «%1».\n\n"_s.arg(words.first()) << generalHelp();
        return Failure;
    }
    const QString usage = u"Uso: kestrune-cli %1 %2\n"_s.arg(command->name, command->usage);
    if (words.contains(help)) {
        out << usage << command->explanation << '\n';
        return Success;
    }
    try {
        return command->run(parse(*command, words.sliced(1)));
    } catch (const UsageError& fault) {
        err << u"kestrune-cli %1: %2.\n"_s.arg(command->name, fault.text) << usage;
    } catch (const platform::Error& error) {
        err << u"kestrune-cli %1: %2\n"_s.arg(command->name, error.description);
    } catch (const std::bad_alloc&) {
        err << u"kestrune-cli %1: no queda memoria.\n"_s.arg(command->name);
    }
    return Failure;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return run(QCoreApplication::arguments().sliced(1));
}
