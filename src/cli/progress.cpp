#include "cli/progress.h"

#include "platform/core/console.h"

#include <QTextStream>

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

void Progress::update(const QString& what)
{
    constexpr qint64 milliseconds = 200;
    if (isTold_ && (!sinceTold_.isValid() || sinceTold_.hasExpired(milliseconds)))
        show(what);
}

void Progress::show(const QString& what)
{
    // Blanks over what is left of a longer text before.
    QTextStream(stderr) << '\r' << what.leftJustified(width_);
    width_ = what.size();
    sinceTold_.start();
}
