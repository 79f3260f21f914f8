#include "platform/core/folder_claim.h"

#include <QFile>
#include <QString>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#endif

using namespace Qt::StringLiterals;

namespace platform {

#ifdef Q_OS_UNIX

namespace {

/// Takes what a handle is of, until the handle is closed. Returns whether another program has it.
bool isTakenBy(int handle)
{
    return handle >= 0 && flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace

/// Takes the folder itself, which can't be removed or be read-only for that; and a mark in it, as
/// shared folders of other machines can only be taken by a file that is open for writing. What lies
/// there from before means nothing.
FolderClaim::FolderClaim(const QString& folder)
{
    constexpr int permissions = 0666;
    const QByteArray path = QFile::encodeName(folder);
    const QByteArray mark = QFile::encodeName(folder + u"/.kestrune.lock"_s);
    for (const int handle :
         {open(path.constData(), O_RDONLY | O_CLOEXEC),
          open(mark.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
               permissions)}) {
        if (handle < 0)
            continue;
        marks_.push_back(std::make_unique<QFile>());
        marks_.back()->open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
        isTaken_ = isTaken_ || isTakenBy(handle);
    }
}

#else

/// Elsewhere the mark is removed while it is not in use: a file in use can't be.
FolderClaim::FolderClaim(const QString& folder)
{
    auto mark = std::make_unique<QFile>(folder + u"/.kestrune.lock"_s);
    isTaken_ = mark->exists() && !mark->remove();
    if (!isTaken_)
        mark->open(QIODevice::ReadWrite);
    marks_.push_back(std::move(mark));
}

#endif

FolderClaim::~FolderClaim() = default;

} // namespace platform
