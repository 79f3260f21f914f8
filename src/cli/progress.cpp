#include "cli/progress.h"

#include "platform/core/console.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

Progress::Progress(bool isLong) : isTold_(isLong && platform::isTerminal(stderr)) {}

Progress::~Progress()
{
    if (width_ > 0) {
        show({});
        QTextStream(stderr) << '\r';
    }
}

void Progress::step(const QString& what)
{
    if (isTold_)
        show(what);
}

void Progress::tell(const QString& what, double share)
{
    constexpr qint64 milliseconds = 200;
    constexpr double hundred = 100;
    if (isTold_ && (!sinceTold_.isValid() || sinceTold_.hasExpired(milliseconds)))
        show(u"%1… %2 %"_s.arg(what).arg(static_cast<int>(share * hundred)));
}

void Progress::show(const QString& what)
{
    // Blanks over what is left of a longer text before.
    QTextStream(stderr) << '\r' << what.leftJustified(width_);
    width_ = what.size();
    sinceTold_.start();
}
