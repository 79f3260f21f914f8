#include "exchange/import_faults.h"

#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/core/text_codec.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostTold = 20;

/// Why a map's file can't hold a text; nothing if it can.
QString textProblem(const QString& text, bool mayBreakLines)
{
    for (const QChar c : text) {
        if (platform::mapSeparators.contains(c) || c == platform::lineBreakMark)
            return u"contiene «%1», que un mapa no puede guardar"_s.arg(c);
        if (c == u'\r' || (c == u'\n' && !mayBreakLines))
            return u"contiene un salto de línea"_s;
    }
    if (const auto outside = platform::firstOutsideWindows1252(text))
        return u"contiene «%1», que un mapa no puede guardar"_s.arg(*outside);
    return {};
}

} // namespace

void ImportFaults::add(qint64 line, const QString& reason)
{
    faults_.append(u"Línea %1: %2."_s.arg(line).arg(reason));
}

void ImportFaults::check() const
{
    if (faults_.isEmpty())
        return;
    QStringList told = faults_.first(std::min(faults_.size(), mostTold));
    if (const qsizetype more = faults_.size() - told.size(); more > 0)
        told.append(u"Y %1 faltas más."_s.arg(more));
    throw platform::Error(platform::ErrorNumber::BadFormat,
                          u"No se puede importar «%1», y el mapa queda como estaba.\n%2"_s.arg(
                              platform::displayPath(path_), told.join(u'\n')));
}

void ImportedPlaces::add(qint64 line, QPoint cell, const Place& place)
{
    const auto fail = [&](const QString& reason) { faults_->add(line, reason); };
    const QString name = place.name.left(40);
    if (place.name.isEmpty())
        return fail(u"un lugar no tiene nombre"_s);
    if (!cells_.contains(cell))
        return fail(u"el lugar «%1» cae en la columna %2 y la fila %3, fuera del mapa"_s.arg(
            name, QString::number(cell.x()), QString::number(cell.y())));
    if (!pictures_->colPines.contains(place.pin))
        fail(u"el lugar «%1» usa el pin «%2», que no está definido o no tiene imagen"_s.arg(
            name, place.pin.left(40)));
    if (const QString problem = textProblem(place.name, false); !problem.isEmpty())
        fail(u"el nombre «%1» %2"_s.arg(name, problem));
    if (const QString problem = textProblem(place.notes, true); !problem.isEmpty())
        fail(u"la nota de «%1» %2"_s.arg(name, problem));
    if (names_.contains(place.name))
        fail(u"el nombre «%1» está repetido"_s.arg(name));
    names_.insert(place.name);
    if (!places_.emplace(cell, place).second)
        fail(u"el lugar «%1» cae en la casilla de «%2»"_s.arg(name, places_[cell].name.left(40)));
}
