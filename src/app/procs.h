#pragma once

#include "platform/core/error.h"

#include <QString>
#include <cstdint>

/// The shared procedures that need no window.
namespace Procs {

/// A random whole number n with lo <= n <= hi, every value equally likely. Callers give lo <= hi.
std::int32_t RandomInRange(std::int32_t lo, std::int32_t hi);

/// The text of an error report: number, description, and the procedure that trapped the error with
/// its owner ("Módulo Procs", or "Formulario " and the window's name).
QString errorReport(const platform::Error& error, const QString& procedure, const QString& owner);

} // namespace Procs
