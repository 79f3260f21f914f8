#pragma once

#include "platform/core/background.h"
#include "platform/core/saving.h"

#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

/// Looks now and then, in the background, whether another program changed the files of the open
/// documents; what it wrote is kept among their versions.
class DiskWatch final : public QObject
{
    Q_OBJECT

public:
    /// Files are looked at this often, in milliseconds.
    static constexpr int interval = 2000;

    explicit DiskWatch(platform::Background& background);
    ~DiskWatch() override;

    /// Watches the file of a document from now on, once. The function is called on the main thread
    /// while `owner` is there; a file whose digest isn't known isn't looked at.
    void watch(const QObject& owner, std::function<platform::KnownFile()> known);
    void begin() { timer_.start(interval); }
    /// Looks now.
    void look();

signals:
    /// A file isn't what its document read or wrote. Told once for each content.
    void changed(const platform::OtherVersion& other);

private:
    struct Watched {
        QPointer<const QObject> owner;
        std::function<platform::KnownFile()> known;
    };
    class Looks;
    bool isCurrent(const platform::KnownFile& known) const;

    platform::Background& background_;
    std::vector<Watched> files_;
    std::shared_ptr<Looks> looks_; ///< the background's
    bool isLooking_ = false;
    QTimer timer_;
};
