#include "platform/core/new_file.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#elif defined(Q_OS_WIN)
#include <io.h>
#endif

using namespace Qt::StringLiterals;

namespace platform {

QString openingReason()
{
    return u"no se puede abrir; compruebe los permisos del archivo y de su carpeta"_s;
}

QString writingReason()
{
    return u"no se puede escribir; compruebe el espacio libre del disco"_s;
}

QString readingReason()
{
    return u"lo que se ha escrito no se puede volver a leer"_s;
}

QString diskReason()
{
    return u"el disco no confirma que los datos estén escritos"_s;
}

QString temporaryPattern()
{
    return u".kestrune-*.tmp"_s;
}

bool syncFile(const QFile& file)
{
#ifdef Q_OS_UNIX
    int result = 0;
    do
        result = fsync(file.handle());
    while (result != 0 && errno == EINTR);
    return result == 0 || errno == EINVAL; // some file systems have nothing to bring
#elif defined(Q_OS_WIN)
    return _commit(file.handle()) == 0;
#else
    return true;
#endif
}

bool syncFolder([[maybe_unused]] const QString& path)
{
#ifdef Q_OS_UNIX
    QFile folder;
    const int handle =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return true; // a folder that may be written but not read
    folder.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    return syncFile(folder);
#else
    return true;
#endif
}

bool claim([[maybe_unused]] const QFile& file)
{
#ifdef Q_OS_UNIX
    return flock(file.handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
#else
    return true; // an open file can't be removed there
#endif
}

NewFile::NewFile(const QString& folder, QIODevice::OpenMode mode)
{
    constexpr int tries = 8;
    for (int i = 0; i < tries && !file_.isOpen(); ++i) {
        QString name = temporaryPattern();
        // A forked process goes on with the numbers of its parent.
        name.replace(u'*', QString::number(QCoreApplication::applicationPid(), 36) + u'-' +
                               QString::number(QRandomGenerator::global()->generate64(), 36));
        file_.setFileName(folder + u'/' + name);
        file_.open(QIODevice::ReadWrite | QIODevice::NewOnly | mode);
    }
    if (file_.isOpen())
        claim(file_);
}

NewFile::~NewFile()
{
    if (!file_.isOpen() || renamed_)
        return;
    file_.close();
    QFile::remove(file_.fileName()); // the object's own remove() stops at bytes it can't write
}

std::error_code NewFile::renameTo(const QString& path)
{
    std::error_code error;
    std::filesystem::rename(QFileInfo(file_).filesystemFilePath(),
                            QFileInfo(path).filesystemFilePath(), error);
    renamed_ = !error;
    return error;
}

bool NewFile::exchangeWith(const QString& path) const
{
#if defined(Q_OS_LINUX) && defined(RENAME_EXCHANGE)
    return renameat2(AT_FDCWD, QFile::encodeName(file_.fileName()).constData(), AT_FDCWD,
                     QFile::encodeName(path).constData(), RENAME_EXCHANGE) == 0;
#else
    Q_UNUSED(path)
    return false;
#endif
}

bool isForbidden(const std::error_code& error)
{
    for (const std::errc forbidden :
         {std::errc::permission_denied, std::errc::operation_not_permitted,
          std::errc::read_only_file_system, std::errc::device_or_resource_busy,
          std::errc::cross_device_link}) {
        if (error == forbidden)
            return true;
    }
    return false;
}

} // namespace platform
