// kestrune-cli: Kestrune's work without a window, for scripts.
#include "cli/command.h"
#include "platform/core/error.h"
#include "platform/core/file_replacement.h"

#include <QCoreApplication>
#include <QTextStream>
#include <algorithm>
#include <cstdio>
#include <new>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{
        {u"generar"_s,
         u"--ancho N --alto N [--semilla N] [--nombre T] --mapa ARCHIVO [--png ARCHIVO] "
         "[--escala N]"_s,
         u"Crea un mundo al azar, con terreno, bosques y poblados, y lo guarda como mapa.\n"
         "  --ancho, --alto  columnas y filas, de 2 a 1000\n"
         "  --semilla        un número entero; la misma semilla da siempre el mismo mundo\n"
         "  --nombre         nombre del mapa; sin él se inventa uno\n"
         "  --mapa           archivo .map que se escribe\n"
         "  --png            imagen del mapa entero\n"
         "  --escala         aumento de la imagen, de 1 a 16"_s,
         {u"ancho"_s, u"alto"_s, u"semilla"_s, u"nombre"_s, u"mapa"_s, u"png"_s, u"escala"_s},
         {},
         &generar},
        {u"dibujar"_s,
         u"MAPA --png ARCHIVO [--escala N]"_s,
         u"Dibuja un mapa entero en una imagen PNG, aumentada de 1 a 16 veces.\n"
         "MAPA es la ruta de un archivo .map o el nombre de un mapa de la carpeta «mapas»."_s,
         {u"png"_s, u"escala"_s},
         {},
         &dibujar},
        {u"ruta"_s,
         u"MAPA --desde X,Y --hasta X,Y [--png ARCHIVO]"_s,
         u"Busca el camino más barato entre dos casillas. Escribe las casillas del camino, de la "
         "última\na la primera, como fila;columna unidas por «|», y después cuántas son y cuánto "
         "cuesta.\nSi no hay camino escribe «No encontrado» y acaba con 1.\n"
         "  --desde, --hasta  columna y fila, contadas desde 0\n"
         "  --png             imagen del mapa con el camino"_s,
         {u"desde"_s, u"hasta"_s, u"png"_s},
         {},
         &ruta},
        {u"clima"_s,
         u"MAPA"_s,
         u"Escribe el informe del clima: los grados de latitud que abarca el mapa, los de cada "
         "fila\ny, fila por fila, una cifra por casilla."_s,
         {},
         {},
         &clima},
        {u"nombres"_s,
         u"N [--gramatica ARCHIVO]"_s,
         u"Inventa N nombres, uno por línea.\n"
         "  --gramatica  otra gramática que la de los nombres de lugares"_s,
         {u"gramatica"_s},
         {},
         &nombres},
        {u"local"_s,
         u"[--semilla N] (--png ARCHIVO | --texto)"_s,
         u"Crea un mapa local al azar: un río, árboles y cuatro edificios.\n"
         "  --semilla  un número entero; la misma semilla da siempre el mismo mapa\n"
         "  --png      imagen del mapa\n"
         "  --texto    escribe los nombres de los tiles, fila por fila"_s,
         {u"semilla"_s, u"png"_s},
         {u"texto"_s},
         &local},
        {u"validar"_s,
         u"[MAPA…]"_s,
         u"Revisa todos los archivos de datos, o solo los mapas nombrados, y escribe cada falta "
         "con\nsu archivo y su línea. Acaba con 0 si no hay ninguna y con 1 si hay alguna."_s,
         {},
         {},
         &validar},
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
        if (!command.options.contains(name) && !command.flags.contains(name))
            throw UsageError{u"no existe la opción «%1»"_s.arg(words[i])};
        if (command.flags.contains(name)) {
            arguments.flags.append(name);
            continue;
        }
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
        const ExitCode result = command->run(parse(*command, words.sliced(1)));
        if (std::fflush(stdout) == 0 && !std::ferror(stdout))
            return result;
        err << u"kestrune-cli %1: no se puede escribir la respuesta.\n"_s.arg(command->name);
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
    platform::outliveFileSizeLimit();
    return run(QCoreApplication::arguments().sliced(1));
}
