#pragma once

#include <QCoreApplication>
#include <QMutex>
#include <QPointer>
#include <QThreadPool>
#include <deque>
#include <functional>
#include <memory>

namespace platform {

/// Does work on a thread of its own, one piece after the other, so that windows wait for no disk.
/// What is begun for a document is handed a copy of it. Work may not throw.
class Background
{
public:
    /// Urgent work comes before all that waits and is not; each kind in the order given.
    enum class Urgency { WhenIdle, Urgent };

    Background();
    /// Finishes what is urgent; the rest is dropped.
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    void run(std::function<void()> work, Urgency urgency = Urgency::Urgent);
    /// The same for work with a result, which `done` then gets on the main thread, if the receiver
    /// is still there.
    template <typename Work, typename Done>
    void run(QObject& receiver, Work work, Done done, Urgency urgency = Urgency::Urgent)
    {
        run(
            [guard = QPointer<QObject>(&receiver), work = std::move(work), done = std::move(done)] {
                auto result = std::make_shared<decltype(work())>(work());
                QMetaObject::invokeMethod(
                    qApp,
                    [guard, done, result] {
                        if (guard)
                            done(std::move(*result));
                    },
                    Qt::QueuedConnection);
            },
            urgency);
    }

    /// Waits until all urgent work is done.
    void finish();

private:
    std::function<void()> takeNext();

    QMutex mutex_;
    // The pool's own priorities don't hold for a thread that waits for work.
    std::deque<std::function<void()>> urgent_;
    std::deque<std::function<void()>> idle_;
    QThreadPool thread_;
};

} // namespace platform
