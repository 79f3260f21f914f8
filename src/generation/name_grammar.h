#pragma once

#include <QString>

namespace Procs {

/// The grammar of the names of places and maps.
inline const QString placeNames = QStringLiteral("gramaticas\\Nombres de lugares.txt");

// A name whose making passes one of these limits would go on without end, or nearly so.
inline constexpr int maxReplacements = 10'000;
inline constexpr int maxNestedFiles = 32;

/// Makes up a name from a grammar file, given relative to AppFolder or with its whole path: `count`
/// random alternatives of its first rule, one after the other, with every reference and inclusion
/// in them expanded. The file and those it includes are read anew at every call. Throws Error that
/// names file and rule when the grammar is faulty or passes a limit.
QString generarNombre(int count, const QString& grammarFile);

} // namespace Procs
