#pragma once

#include <QString>
#include <optional>

/// The way from one cell's centre to the next in kilometres, when a map's notes have a line that
/// tells it: "Escala: 10 km", also with decimals, with the unit's name or in metres.
std::optional<double> kilometresPerCell(const QString& notes);
