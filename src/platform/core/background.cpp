#include "platform/core/background.h"

#include <QSemaphore>

namespace platform {

Background::Background()
{
    thread_.setMaxThreadCount(1);
}

Background::~Background()
{
    finish();
    thread_.clear();
    thread_.waitForDone();
}

void Background::run(std::function<void()> work, Urgency urgency)
{
    thread_.start(std::move(work), static_cast<int>(urgency));
}

void Background::finish()
{
    if (thread_.activeThreadCount() == 0)
        return;
    QSemaphore done;
    run([&done] { done.release(); });
    done.acquire();
}

} // namespace platform
