#include "platform/core/file_replacement.h"

#include "platform/core/app_folder.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <system_error>

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
namespace {

/// The most bytes that common file systems take as a file's name.
constexpr qsizetype longestFileName = 255;

QString temporaryPattern()
{
    return u".kestrune-*.tmp"_s;
}

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

/// Brings what was written to an open file to the disk. Returns whether that is done.
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

/// Brings a folder's names to the disk, so that a renamed file is found after a loss of power.
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

/// Marks an open file as in use until it is closed, even by a killed program. Returns false when
/// another program has marked it.
bool claim([[maybe_unused]] const QFile& file)
{
#ifdef Q_OS_UNIX
    return flock(file.handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
#else
    return true; // an open file can't be removed there
#endif
}

/// A new file beside another one, which goes with the object unless it was renamed.
class NewFile
{
public:
    explicit NewFile(const QString& folder)
    {
        constexpr int tries = 8;
        for (int i = 0; i < tries && !file_.isOpen(); ++i) {
            QString name = temporaryPattern();
            // A forked process goes on with the numbers of its parent.
            name.replace(u'*', QString::number(QCoreApplication::applicationPid(), 36) + u'-' +
                                   QString::number(QRandomGenerator::global()->generate64(), 36));
            file_.setFileName(folder + u'/' + name);
            file_.open(QIODevice::ReadWrite | QIODevice::NewOnly | QIODevice::Unbuffered);
        }
        if (file_.isOpen())
            claim(file_);
    }
    ~NewFile()
    {
        if (file_.isOpen() && !renamed_)
            file_.remove();
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool isOpen() const { return file_.isOpen(); }
    QFile& file() { return file_; }

    std::error_code renameTo(const QString& path)
    {
        std::error_code error;
        std::filesystem::rename(QFileInfo(file_).filesystemFilePath(),
                                QFileInfo(path).filesystemFilePath(), error);
        renamed_ = !error;
        return error;
    }

    /// Exchanges its name with a file's: that one is then under the new file's name, and goes with
    /// the object. Returns false, with nothing done, where the system can't.
    bool exchangeWith(const QString& path) const
    {
#if defined(Q_OS_LINUX) && defined(RENAME_EXCHANGE)
        return renameat2(AT_FDCWD, QFile::encodeName(file_.fileName()).constData(), AT_FDCWD,
                         QFile::encodeName(path).constData(), RENAME_EXCHANGE) == 0;
#else
        Q_UNUSED(path)
        return false;
#endif
    }

private:
    QFile file_;
    bool renamed_ = false;
};

/// Whether an error says that this folder, or this user, may not do what was tried.
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

} // namespace

Error unwritable(const QString& path, const QString& reason)
{
    return Error(ErrorNumber::FileUnwritable,
                 u"No se puede guardar «%1»: %2."_s.arg(displayPath(path), reason));
}

QString replaceableFile(const QString& path)
{
    QFileInfo info(path);
    if (info.isSymLink())
        info.setFile(info.symLinkTarget());
    if (info.exists() && !info.isFile())
        throw unwritable(path, info.isDir() ? u"hay una carpeta con ese nombre"_s
                                            : u"no es un archivo corriente"_s);
    if (const QFileInfo folder(info.path()); !folder.isDir()) {
        QFileInfo first = folder; // of those above it that are there
        while (!first.exists() && first.path() != first.filePath())
            first.setFile(first.path());
        throw unwritable(path,
                         first.exists() && !first.isDir()
                             ? u"«%1» no es una carpeta"_s.arg(displayPath(first.filePath()))
                             : u"falta la carpeta «%1»"_s.arg(displayPath(folder.filePath())));
    }
    if (QFile::encodeName(info.fileName()).size() > longestFileName)
        throw unwritable(path, u"el nombre del archivo es demasiado largo"_s);
    return info.filePath();
}

bool replaceFile(const QString& path, const QByteArray& bytes, const OnReplaced& onReplaced)
{
    const QString target = replaceableFile(path);
    const QFileInfo old(target);
    if (old.exists() && !old.isWritable()) // what the user protected stays protected
        throw unwritable(path, openingReason());
    NewFile fresh(old.path());
    if (!fresh.isOpen())
        return false;
    QFile& file = fresh.file();
    if (file.write(bytes) != bytes.size())
        throw unwritable(path, writingReason());
    if (!syncFile(file))
        throw unwritable(path, diskReason());
    if (!file.seek(0) || file.readAll() != bytes)
        throw unwritable(path, readingReason());
    if (old.exists())
        file.setPermissions(old.permissions());
    if (onReplaced && old.exists() && fresh.exchangeWith(target)) {
        onReplaced(file.fileName());
    } else if (const std::error_code error = fresh.renameTo(target)) {
        if (isForbidden(error))
            return false;
        throw unwritable(path,
                         error == std::errc::no_space_on_device ? writingReason() : diskReason());
    }
    if (!syncFolder(old.path()))
        throw unwritable(path, diskReason());
    return true;
}

void overwriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        throw unwritable(path, openingReason());
    const qint64 oldSize = file.size();
    if (bytes.size() > oldSize) {
        const QByteArray beyond = bytes.sliced(oldSize);
        if (!file.seek(oldSize) || file.write(beyond) != beyond.size()) {
            file.resize(oldSize);
            throw unwritable(path, writingReason());
        }
    }
    const qint64 within = std::min(qint64{bytes.size()}, oldSize);
    if (!file.seek(0) || file.write(bytes.constData(), within) != within ||
        !file.resize(bytes.size()))
        throw unwritable(path, writingReason());
    if (!syncFile(file))
        throw unwritable(path, diskReason());
    if (!file.seek(0) || file.readAll() != bytes)
        throw unwritable(path, readingReason());
}

void outliveFileSizeLimit()
{
#ifdef Q_OS_UNIX
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

void removeAbandonedFiles(const QStringList& folders)
{
    for (const QString& folder : folders) {
        QDirIterator found(inAppFolder(folder), {temporaryPattern()},
                           QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                           QDirIterator::Subdirectories);
        while (found.hasNext()) {
            QFile file(found.next());
            if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && claim(file))
                file.remove();
        }
    }
}

} // namespace platform
