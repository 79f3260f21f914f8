#include "platform/core/saving.h"

#include "platform/core/app_folder.h"
#include "platform/core/file_replacement.h"
#include "platform/core/kept_versions.h"
#include "platform/core/text_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
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
    return std::any_of(versions.begin(), versions.end(), [](const KeptVersion& version) {
        const qint64 age = version.when.secsTo(QDateTime::currentDateTime());
        return !version.isUnsaved && age >= 0 && age < keepEvery;
    });
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

/// What a document's file held before it was saved.
class ReplacedContent
{
public:
    ReplacedContent(const QString& path, const QByteArray& bytes, const KnownFile& known,
                    Saved& saved)
        : path_(path),
          bytes_(bytes),
          known_(known),
          saved_(saved)
    {
    }

    /// Keeps it as it lies in a file, if it is to be kept. One too large to be read is moved away,
    /// once it isn't at its own place any more.
    void keep(const QString& file)
    {
        if (QFileInfo(file).size() <= maxTextFileBytes || file == replaceableFile(path_))
            keep(readFile(file, maxTextFileBytes));
        else
            tellOf(keepFile(path_, file));
    }

private:
    /// What was kept before isn't kept again.
    void keep(const QByteArray& old)
    {
        if (old == bytes_ || old == kept_)
            return;
        const bool isOurs = contentDigest(old) == known_.digest;
        if (isOurs && known_.isWritten && keptLately(path_))
            return;
        const QString version = keepVersion(path_, old);
        kept_ = old;
        if (!isOurs)
            tellOf(version);
    }

    void tellOf(const QString& version)
    {
        const bool isOwnFile = known_.path == path_;
        if (isOwnFile && known_.digest.isEmpty()) // it was this document that left something out
            return;
        const QString was = isOwnFile ? u"Otro programa había cambiado «%1» desde que se leyó o "
                                        "se guardó."_s
                                      : u"Ya había otro archivo «%1»."_s;
        saved_.other = {version,
                        (was + u" Se ha guardado encima; lo que tenía está entre sus "
                               "versiones anteriores."_s)
                            .arg(displayPath(path_)),
                        path_};
    }

    const QString& path_;
    const QByteArray& bytes_;
    const KnownFile& known_;
    Saved& saved_;
    QByteArray kept_;
};

} // namespace

QByteArray contentDigest(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

QStringList writeFileAtomically(const QString& path, const QByteArray& bytes,
                                const OnReplaced& onReplaced)
{
    if (replaceFile(path, bytes, onReplaced))
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

Saved saveFile(const QString& path, const QByteArray& bytes, KnownFile& known)
{
    Saved saved;
    ReplacedContent replaced(path, bytes, known, saved);
    QString problem;
    const auto keep = [&](const QString& file) {
        problem.clear();
        try {
            replaced.keep(file);
        } catch (const std::exception& error) {
            problem =
                u"No se ha podido guardar en «respaldo» la versión anterior de «%1». %2"_s.arg(
                    displayPath(path), QString::fromUtf8(error.what()));
        }
    };
    const QString target = replaceableFile(path);
    if (QFileInfo::exists(target))
        keep(target);
    // Again when it was replaced: another program may have written since.
    saved.notices += writeFileAtomically(path, bytes, keep);
    if (!problem.isEmpty())
        saved.notices.append(problem);
    known = {path, contentDigest(bytes), true};
    return saved;
}

void copyFileAtomically(const QString& from, const QString& to)
{
    writeFileAtomically(to, readFile(from, anySize));
}

} // namespace platform
