#include "platform/core/file_replacement.h"

#include "platform/core/app_folder.h"
#include "platform/core/new_file.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <csignal>
#include <system_error>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// The most bytes that common file systems take as a file's name.
constexpr qsizetype longestFileName = 255;

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
