#include "app/procs.h"

#include "platform/core/random_source.h"

using namespace Qt::StringLiterals;

namespace Procs {

std::int32_t RandomInRange(std::int32_t lo, std::int32_t hi)
{
    return inRange(lo, hi, platform::randomSource().next());
}

QString errorReport(const platform::Error& error, const QString& procedure, const QString& owner)
{
    return u"Error %1 (%2) in procedure %3 of %4"_s.arg(
        QString::number(static_cast<int>(error.number)), error.description, procedure, owner);
}

} // namespace Procs
