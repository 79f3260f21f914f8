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

/// Opens the mark, which stays in the folder and means nothing by itself; where none can be made,
/// as on a disk that is read-only, the folder serves.
int openMark(const QString& folder)
{
    constexpr int permissions = 0666;
    const QByteArray mark = QFile::encodeName(folder + u"/.kestrune.lock"_s);
    const int handle =
        open(mark.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, permissions);
    return handle >= 0 ? handle : open(QFile::encodeName(folder).constData(), O_RDONLY | O_CLOEXEC);
}

} // namespace

FolderClaim::FolderClaim(const QString& folder) : mark_(std::make_unique<QFile>())
{
    const int handle = openMark(folder);
    if (handle < 0)
        return;
    mark_->open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    isTaken_ = flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

#else

/// Elsewhere the mark is removed while it is not in use: a file in use can't be.
FolderClaim::FolderClaim(const QString& folder)
    : mark_(std::make_unique<QFile>(folder + u"/.kestrune.lock"_s))
{
    isTaken_ = mark_->exists() && !mark_->remove();
    if (!isTaken_)
        mark_->open(QIODevice::ReadWrite);
}

#endif

FolderClaim::~FolderClaim() = default;

} // namespace platform
