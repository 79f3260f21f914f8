// The commands, and the help that is made of them.
#include "cli/command.h"
#include "exchange/map_formats.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

Option seedOption(const QString& what)
{
    return {u"semilla"_s, u"N"_s,
            u"un número entero; la misma semilla da siempre %1. Sin ella se elige una y se "
            "dice en la salida de errores"_s.arg(what)};
}

Option pictureOption(const QString& what)
{
    return {u"png"_s, u"ARCHIVO"_s,
            what + u"; el nombre ha de acabar en .png, o ser «-» para la salida estándar"_s};
}

Option scaleOption()
{
    return {u"escala"_s, u"N"_s, u"aumento de la imagen, de 1 a 16"_s};
}

/// With the formats, each with what it heeds.
QString exportExplanation()
{
    QStringList formats;
    for (const MapFormat& format : mapFormats())
        formats.append(u".%1, %2"_s.arg(format.suffix, format.explanation));
    return u"Exporta un mapa en el formato que dice el final del archivo: %1."_s.arg(
        formats.join(u"; "_s));
}

Option required(Option option)
{
    option.required = true;
    return option;
}

/// A text in lines of at most the width of a terminal, all but the first indented.
QString wrapped(const QString& text, qsizetype indent)
{
    constexpr qsizetype width = 100;
    const QString lineBreak = u'\n' + QString(indent, u' ');
    QString result;
    qsizetype column = indent;
    for (const QString& word : text.split(u' ')) {
        if (column > indent && column + 1 + word.size() > width) {
            result += lineBreak;
            column = indent;
        } else if (column > indent) {
            result += u' ';
            ++column;
        }
        result += word;
        column += word.size();
    }
    return result + u'\n';
}

QString written(const Option& option)
{
    const QString dashed = u"--"_s + option.name;
    return option.value.isEmpty() ? dashed : dashed + u' ' + option.value;
}

} // namespace

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{
        {u"generar"_s,
         {},
         u"Crea un mundo al azar, con terreno, bosques y poblados, y lo guarda como mapa."_s,
         {required({u"ancho"_s, u"N"_s, u"columnas, de 2 a 1000"_s}),
          required({u"alto"_s, u"N"_s, u"filas, de 2 a 1000"_s}),
          required({u"mapa"_s, u"ARCHIVO"_s, u"archivo .map que se escribe"_s}),
          seedOption(u"el mismo mundo"_s),
          {u"nombre"_s, u"T"_s,
           u"nombre del mapa; sin él, el de su archivo, o uno inventado si ese no puede ser"_s},
          {u"norte"_s, u"N"_s, u"latitud norte en grados, de -90 a 90; sin ella, 45"_s},
          {u"sur"_s, u"N"_s, u"latitud sur, menor que la norte; sin ella, -45"_s},
          {u"notas"_s, u"T"_s, u"notas del mapa"_s},
          pictureOption(u"imagen del mapa entero"_s),
          scaleOption()},
         &generar},
        {u"dibujar"_s,
         u"MAPA"_s,
         u"Dibuja un mapa entero en una imagen PNG."_s,
         {required(pictureOption(u"la imagen"_s)), scaleOption()},
         &dibujar},
        {u"exportar"_s,
         u"MAPA ARCHIVO"_s,
         exportExplanation(),
         {{u"formato"_s, u"F"_s, u"el formato, si no es el que dice el final del archivo"_s},
          scaleOption(),
          {u"zona"_s, u"X,Y,ANCHO,ALTO"_s, u"solo esas casillas, contadas desde 0"_s},
          {u"rejilla"_s, {}, u"con los bordes de las casillas"_s},
          {u"coordenadas"_s, {}, u"con el número de cada casilla"_s},
          {u"nombres"_s, {}, u"con los nombres de los lugares"_s},
          {u"clima"_s, {}, u"con el clima en colores"_s},
          {u"habitantes"_s, {}, u"con los habitantes en colores"_s},
          {u"barra-escala"_s, {}, u"con una barra de escala, si el mapa la dice en sus notas"_s},
          {u"leyenda"_s, {}, u"con la leyenda de los terrenos y pines que hay"_s},
          {u"papel"_s, u"P"_s, u"A4, A3, carta, o uno para una sola página; sin ella, A4"_s},
          {u"apaisado"_s, {}, u"con el papel apaisado"_s},
          {u"mm"_s, u"N"_s, u"milímetros por fila en el papel; sin ella, 10"_s},
          {u"jugadores"_s,
           {},
           u"sin notas ni lugares ocultos (aquellos cuyas notas empiezan por "
           "«!»)"_s},
          {u"carpeta"_s, {}, u"una nota por lugar, en una carpeta"_s}},
         &exportar},
        {u"importar"_s,
         u"ARCHIVO MAPA"_s,
         u"Lleva a un mapa los lugares de una tabla .csv, en lugar de los que tiene, o el terreno "
         u"y "
         "los lugares de un mapa .tmx; de este también puede hacer un mapa nuevo. Lo que no encaja "
         "se dice con su línea, y el mapa queda como estaba."_s,
         {},
         &importar},
        {u"ruta"_s,
         u"MAPA"_s,
         u"Busca el camino más barato entre dos casillas. Escribe las casillas del camino, de la "
         "última a la primera, como fila;columna unidas por «|», y después cuántas son y cuánto "
         "cuesta. Si no hay camino escribe «No encontrado» y acaba con 1."_s,
         {required({u"desde"_s, u"LUGAR"_s,
                    u"el principio: columna y fila, contadas desde 0 (X,Y), o el nombre de un "
                    "lugar del mapa"_s}),
          required({u"hasta"_s, u"LUGAR"_s, u"el final, igual"_s}),
          pictureOption(u"imagen del mapa con el camino"_s)},
         &ruta},
        {u"lugares"_s,
         u"MAPA"_s,
         u"Escribe los lugares del mapa, uno por línea y fila por fila, como los guarda el "
         "archivo: fila;columna;marca;nombre;notas. En las notas «¶» es un salto de línea."_s,
         {},
         &lugares},
        {u"clima"_s,
         u"MAPA"_s,
         u"Escribe el informe del clima: los grados de latitud que abarca el mapa, los de cada "
         "fila y, fila por fila, una cifra por casilla: más alta, más frío."_s,
         {},
         &clima},
        {u"nombres"_s,
         u"N"_s,
         u"Inventa N nombres, uno por línea."_s,
         {seedOption(u"los mismos nombres"_s),
          {u"gramatica"_s, u"ARCHIVO"_s, u"otra gramática que la de los nombres de lugares"_s}},
         &nombres},
        {u"local"_s,
         {},
         u"Crea un mapa local al azar: un río, árboles y cuatro edificios. Hace falta --png o "
         "--texto; pueden ir los dos."_s,
         {seedOption(u"el mismo mapa"_s),
          pictureOption(u"imagen del mapa"_s),
          {u"texto"_s, {}, u"escribe los nombres de los tiles, fila por fila"_s}},
         &local},
        {u"validar"_s,
         u"[MAPA…]"_s,
         u"Revisa todos los archivos de datos, o solo los mapas nombrados, y escribe cada falta "
         "con su archivo y su línea, y cuántos archivos ha revisado. Acaba con 0 si no hay "
         "ninguna "
         "falta y con 1 si hay alguna."_s,
         {},
         &validar},
    };
    return all;
}

QString generalHelp()
{
    QString text = u"Uso: kestrune-cli ORDEN [ARGUMENTOS]\n\nÓrdenes:\n"_s;
    for (const Command& command : commands())
        text += u"  "_s + usage(command) + u'\n';
    return text +
           u"\nMAPA es la ruta de un archivo .map o el nombre de un mapa de la carpeta «mapas».\n"
           "Una opción también se escribe --opción=valor, y detrás de «--» no hay más opciones.\n"
           "«kestrune-cli ORDEN --ayuda» explica una orden; «--version» dice la versión.\n"_s;
}

QString help(const Command& command)
{
    std::vector<Option> options = command.options;
    options.push_back({u"ayuda, -h"_s, {}, u"esta explicación"_s});
    qsizetype width = 0;
    for (const Option& option : options)
        width = std::max(width, written(option).size());
    QString text =
        u"Uso: kestrune-cli %1\n%2"_s.arg(usage(command), wrapped(command.explanation, 0));
    for (const Option& option : options)
        text += u"  "_s + written(option).leftJustified(width + 2) +
                wrapped(option.explanation, width + 4);
    return text;
}

QString usage(const Command& command)
{
    QStringList words{command.name};
    if (!command.arguments.isEmpty())
        words.append(command.arguments);
    for (const Option& option : command.options)
        words.append(option.required ? written(option) : u'[' + written(option) + u']');
    return words.join(u' ');
}
