#include "cli/command.h"
#include "cli/map_source.h"
#include "cli/progress.h"
#include "exchange/export_target.h"
#include "exchange/map_formats.h"

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString knownSuffixes()
{
    QStringList all;
    for (const MapFormat& format : mapFormats())
        all.append(u'.' + format.suffix);
    return all.join(u", "_s);
}

/// The format that the options ask for or, without that, the file's suffix.
const MapFormat& formatOf(const Arguments& arguments, const QString& path)
{
    const QString suffix = QFileInfo(path).suffix();
    const MapFormat* const bySuffix = mapFormat(suffix);
    if (arguments.has(u"formato"_s)) {
        const QString wanted = arguments.value(u"formato"_s);
        const MapFormat* const format = mapFormat(wanted);
        if (!format)
            throw UsageError{u"--formato ha de ser uno de %1, sin el punto, y no «%2»"_s.arg(
                knownSuffixes(), wanted)};
        if (bySuffix && bySuffix != format)
            throw UsageError{u"--formato dice «%1», pero «%2» acaba en «.%3»"_s.arg(format->suffix,
                                                                                    path, suffix)};
        return *format;
    }
    if (!bySuffix)
        throw UsageError{
            u"«%1» no acaba en ninguno de %2; cambie el nombre o añada --formato"_s.arg(
                path, knownSuffixes())};
    return *bySuffix;
}

/// Throws UsageError for an option that the format has no use for.
void checkOptions(const Arguments& arguments, const MapFormat& format)
{
    QStringList known; // to some format
    for (const MapFormat& any : mapFormats())
        known += any.options;
    for (auto option = arguments.options.keyBegin(); option != arguments.options.keyEnd();
         ++option) {
        if (known.contains(*option) && !format.heeds(*option))
            throw UsageError{u"--%1 no sirve para el formato «%2»"_s.arg(*option, format.suffix)};
    }
}

QRect zoneOf(const Arguments& arguments, const WorldMap& map)
{
    static const QRegularExpression form(u"^(\\d{1,6}),(\\d{1,6}),(\\d{1,6}),(\\d{1,6})$"_s);
    const QRegularExpressionMatch match = form.match(arguments.value(u"zona"_s));
    const auto number = [&](int i) { return match.captured(i).toInt(); };
    const QRect zone(number(1), number(2), number(3), number(4));
    if (!match.hasMatch() || zone.isEmpty())
        throw UsageError{u"--zona ha de ser X,Y,ANCHO,ALTO, en casillas, y no «%1»"_s.arg(
            arguments.value(u"zona"_s))};
    if (!QRect(0, 0, map.ancho(), map.alto()).contains(zone))
        throw UsageError{
            u"--zona se sale del mapa, que tiene %1 columnas y %2 filas contadas desde "
            "0"_s.arg(map.ancho())
                .arg(map.alto())};
    return zone;
}

Paper paperOf(const QString& name)
{
    static const QHash<QString, Paper> all{{u"a4"_s, Paper::A4},
                                           {u"a3"_s, Paper::A3},
                                           {u"carta"_s, Paper::Letter},
                                           {u"uno"_s, Paper::One}};
    const auto found = all.constFind(name.toLower());
    if (found == all.cend())
        throw UsageError{u"--papel ha de ser A4, A3, carta o uno, y no «%1»"_s.arg(name)};
    return *found;
}

double rowMillimetresOf(const QString& text)
{
    bool isNumber = false;
    const double number = QString(text).replace(u',', u'.').toDouble(&isNumber);
    if (!isNumber || !(number >= leastRowMillimetres) || !(number <= mostRowMillimetres))
        throw UsageError{u"--mm ha de ser un número de milímetros de %1 a %2, y no «%3»"_s
                             .arg(leastRowMillimetres)
                             .arg(mostRowMillimetres)
                             .arg(text)};
    return number;
}

ExportOptions optionsOf(const Arguments& arguments, const WorldMap& map)
{
    ExportOptions options;
    options.scale = arguments.number(u"escala"_s, 1, maxScale, 1);
    if (arguments.has(u"zona"_s))
        options.zone = zoneOf(arguments, map);
    options.hasGrid = arguments.has(u"rejilla"_s);
    options.hasNumbers = arguments.has(u"coordenadas"_s);
    options.hasNames = arguments.has(u"nombres"_s);
    options.hasClimate = arguments.has(u"clima"_s);
    options.hasInhabitants = arguments.has(u"habitantes"_s);
    options.hasScaleBar = arguments.has(u"barra-escala"_s);
    options.hasKey = arguments.has(u"leyenda"_s);
    if (arguments.has(u"papel"_s))
        options.paper = paperOf(arguments.value(u"papel"_s));
    options.isLandscape = arguments.has(u"apaisado"_s);
    if (arguments.has(u"mm"_s))
        options.rowMillimetres = rowMillimetresOf(arguments.value(u"mm"_s));
    options.isForPlayers = arguments.has(u"jugadores"_s);
    options.isFolder = arguments.has(u"carpeta"_s);
    return options;
}

} // namespace

ExitCode exportar(const Arguments& arguments)
{
    const QStringList& words = arguments.exactly({u"el mapa"_s, u"el archivo"_s});
    const QString& source = words[0];
    const QString& target = words[1];
    const MapFormat& format = formatOf(arguments, target);
    checkOptions(arguments, format);
    if (!arguments.has(u"carpeta"_s))
        checkExportTarget(target, mapPath(source));

    const WorldWorkspace workspace;
    WorldMap read = workspace.read(source);
    const ExportOptions options = optionsOf(arguments, read);
    ExportedMap map(std::move(read), workspace.tiles, workspace.pins, workspace.pictures,
                    options.isForPlayers);
    ExportFiles files(target);
    QStringList notices;
    {
        Progress progress(true);
        format.write(files, map, options, [&](double share) { progress.tell(format.name, share); });
        notices = files.finish();
    }
    QTextStream err(stderr);
    for (const QString& notice : notices)
        err << notice << '\n';
    QTextStream(stdout) << u"%1: %2\n"_s.arg(format.name, target);
    return Success;
}
