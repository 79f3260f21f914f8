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
    {
        const QMutexLocker lock(&mutex_);
        (urgency == Urgency::Urgent ? urgent_ : idle_).push_back(std::move(work));
    }
    thread_.start([this] { takeNext()(); }); // one for each piece of work, whichever comes first
}

std::function<void()> Background::takeNext()
{
    const QMutexLocker lock(&mutex_);
    std::deque<std::function<void()>>& queue = urgent_.empty() ? idle_ : urgent_;
    std::function<void()> next = std::move(queue.front());
    queue.pop_front();
    return next;
}

void Background::finish()
{
    QSemaphore done;
    run([&done] { done.release(); });
    done.acquire();
}

} // namespace platform
