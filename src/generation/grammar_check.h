#pragma once

#include "platform/core/text_file.h"

#include <QStringList>

namespace Procs {

/// Looks grammar files, and all that they include, through for what could stop generarNombre:
/// files that can't be read, faulty lines, rules without alternatives, references to rules and
/// files that aren't there, rules that never come to an end, alternatives that always pass a limit,
/// characters that no map can hold. Returns how many files they were.
int checkGrammars(const QStringList& paths, const platform::OnFault& onFault);

} // namespace Procs
