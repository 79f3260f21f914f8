#pragma once

#include <QObject>
#include <functional>

namespace platform {

/// Runs a function when the program is to end from outside: a signal that asks it to (SIGTERM,
/// SIGINT, SIGHUP), which then ends it with 128 and the signal's number, as shells count; or the
/// display was lost, upon which the toolkit leaves the program without going back to main. One at a
/// time.
class EndingFromOutside final : public QObject
{
public:
    explicit EndingFromOutside(std::function<void()> before);
    ~EndingFromOutside() override;
    EndingFromOutside(const EndingFromOutside&) = delete;
    EndingFromOutside& operator=(const EndingFromOutside&) = delete;

private:
    void takeSignal();

    std::function<void()> before_;
};

} // namespace platform
