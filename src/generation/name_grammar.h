#pragma once

#include "platform/core/text_file.h"

#include <QString>

namespace Procs {

/// The grammar of the names of places and maps.
inline const QString placeNames = QStringLiteral("gramaticas\\Nombres de lugares.txt");

/// Makes up a name from a grammar file, given relative to AppFolder or with its whole path: `count`
/// random alternatives of its first rule, one after the other, with every reference and inclusion
/// in them expanded. The file and those it includes are read anew at every call. Throws Error that
/// names file and rule when the grammar is faulty or doesn't come to an end.
QString generarNombre(int count, const QString& grammarFile);

/// Looks a grammar file through for what could stop generarNombre: faulty lines, rules without
/// alternatives, references to rules and files that aren't there. Throws Error when the file can't
/// be read.
void checkGrammar(const QString& path, const platform::OnFault& onFault);

} // namespace Procs
