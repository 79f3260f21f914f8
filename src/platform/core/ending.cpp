#include "platform/core/ending.h"

#include <QDateTime>
#include <QSocketNotifier>
#include <cstdlib>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace platform {
namespace {

const std::function<void()>* atExit = nullptr;

void leave()
{
    if (atExit)
        (*atExit)();
}

#ifdef Q_OS_UNIX

int signalPipe[2] = {-1, -1};

/// A handler may do next to nothing; the event loop hears of it through a pipe.
extern "C" void signalCame(int signal)
{
    const int before = errno;
    const auto number = static_cast<unsigned char>(signal);
    [[maybe_unused]] const auto written = write(signalPipe[1], &number, 1);
    errno = before;
}

constexpr int endingSignals[] = {SIGTERM, SIGINT, SIGHUP};

#endif

} // namespace

EndingFromOutside::EndingFromOutside(std::function<void()> before) : before_(std::move(before))
{
    atExit = &before_;
    // The toolkit's globals go in reverse order: its calendars must be made before this is told of.
    (void)QDateTime::currentDateTime().toString(Qt::ISODate);
    static const bool isRegistered = std::atexit(leave) == 0;
    Q_UNUSED(isRegistered)
#ifdef Q_OS_UNIX
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* const came = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, this);
    connect(came, &QSocketNotifier::activated, this, [this] { takeSignal(); });
    for (const int signal : endingSignals) {
        if (std::signal(signal, signalCame) == SIG_IGN) // as nohup wants it
            std::signal(signal, SIG_IGN);
    }
#endif
}

EndingFromOutside::~EndingFromOutside()
{
    atExit = nullptr;
#ifdef Q_OS_UNIX
    for (const int signal : endingSignals)
        std::signal(signal, SIG_DFL);
    for (int& end : signalPipe) {
        close(end);
        end = -1;
    }
#endif
}

void EndingFromOutside::takeSignal()
{
#ifdef Q_OS_UNIX
    unsigned char number = 0;
    if (read(signalPipe[0], &number, 1) != 1)
        return;
    before_();
    // Not by way of the event loops: a command that waits for an answer would go on without one.
    constexpr int signalled = 128;
    std::_Exit(signalled + number);
#endif
}

} // namespace platform
