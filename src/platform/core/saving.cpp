#include "platform/core/saving.h"

#include "platform/core/app_folder.h"
#include "platform/core/file_replacement.h"
#include "platform/core/kept_versions.h"
#include "platform/core/text_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr qint64 anySize = std::numeric_limits<qint64>::max();

/// Versions of what the document itself wrote are kept this far apart, in seconds.
constexpr qint64 keepEvery = 10 * 60;

bool keptLately(const QString& path)
{
    const std::vector<KeptVersion> versions = keptVersions(path);
    if (versions.empty())
        return false;
    const qint64 age = versions.front().when.secsTo(QDateTime::currentDateTime());
    return age >= 0 && age < keepEvery;
}

/// Keeps a copy of a file that is about to be overwritten in place. Returns where it is.
QString keepSomewhere(const QString& path)
{
    const QByteArray bytes = readFile(path, anySize);
    try {
        return keepVersion(path, bytes);
    } catch (const Error&) {
        QString copy = QDir::tempPath() + u'/' + QFileInfo(path).completeBaseName() +
                       QDateTime::currentDateTime().toString(u" yyyy-MM-dd HH.mm.ss."_s) +
                       QFileInfo(path).suffix();
        if (!replaceFile(copy, bytes))
            throw unwritable(path, u"su carpeta no admite archivos nuevos, y no hay dónde poner "
                                   "antes una copia"_s);
        return copy;
    }
}

} // namespace

QByteArray contentDigest(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

QStringList writeFileAtomically(const QString& path, const QByteArray& bytes)
{
    if (replaceFile(path, bytes))
        return {};
    const QString target = replaceableFile(path);
    if (!QFileInfo::exists(target) || !QFileInfo(target).isWritable())
        throw unwritable(
            path, u"no se puede abrir; compruebe los permisos del archivo y de su carpeta"_s);
    const QString copy = keepSomewhere(target);
    overwriteFile(target, bytes);
    return {u"La carpeta de «%1» no admite archivos nuevos, y se ha escrito encima. Lo que había "
            "está en «%2»."_s.arg(displayPath(path), displayPath(copy))};
}

QStringList saveFile(const QString& path, const QByteArray& bytes, KnownFile& known)
{
    QStringList notices;
    const QString target = replaceableFile(path);
    if (QFileInfo::exists(target)) {
        try {
            const QByteArray old = readFile(target, anySize);
            const bool isOurs = contentDigest(old) == known.digest;
            if (old != bytes && (!isOurs || !keptLately(path)))
                keepVersion(path, old);
        } catch (const Error& error) {
            notices.append(
                u"No se ha podido guardar en «respaldo» la versión anterior de «%1». %2"_s.arg(
                    displayPath(path), error.description));
        }
    }
    notices += writeFileAtomically(path, bytes);
    known = {path, contentDigest(bytes)};
    return notices;
}

void copyFileAtomically(const QString& from, const QString& to)
{
    writeFileAtomically(to, readFile(from, anySize));
}

} // namespace platform
