#include "platform/core/kept_versions.h"

#include "platform/core/app_folder.h"
#include "platform/core/file_replacement.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QMutex>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Versions are named by the time they were kept at, so that a list by name is one by age.
QString timeFormat()
{
    return u"yyyy-MM-dd HH.mm.ss"_s;
}

QString unsavedMark()
{
    return u" sin guardar"_s;
}

QString versionName(const QString& path, const QDateTime& when, bool isUnsaved)
{
    const QString suffix = QFileInfo(path).suffix();
    return when.toString(timeFormat()) + (isUnsaved ? unsavedMark() : QString()) +
           (suffix.isEmpty() ? QString() : u'.' + suffix);
}

constexpr int lastYear = 9999; ///< nothing can be named by a later time

bool holds(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.size() == bytes.size() && file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
}

} // namespace

QString versionsRoot()
{
    return inAppFolder(u"respaldo"_s);
}

QString versionsFolder(const QString& path)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const QString root = QDir::cleanPath(appFolder()) + u'/';
    const bool inside = absolute.startsWith(root);
    return versionsRoot() + u'/' +
           (inside ? absolute.sliced(root.size()) : QFileInfo(path).fileName());
}

std::vector<KeptVersion> keptVersions(const QString& path)
{
    const QDir folder(versionsFolder(path));
    std::vector<KeptVersion> versions;
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name | QDir::Reversed)) {
        const QDateTime when = QDateTime::fromString(name.left(timeFormat().size()), timeFormat());
        const bool isUnsaved = name.mid(timeFormat().size()).startsWith(unsavedMark());
        if (when.isValid() && name == versionName(path, when, isUnsaved))
            versions.push_back({folder.filePath(name), when, isUnsaved});
    }
    return versions;
}

QStringList filesWithVersions()
{
    const QString root = versionsRoot();
    QStringList files;
    QDirIterator folders(root, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks,
                         QDirIterator::Subdirectories);
    while (folders.hasNext()) {
        const QString file = appFolder() + folders.next().sliced(root.size());
        if (!keptVersions(file).empty())
            files.append(file);
    }
    files.sort();
    return files;
}

namespace {

QBasicMutex oneAtATime; // documents are saved while the background keeps versions

/// Makes room for a further version of a file by putting it in place: put(its path).
template <typename Put>
QString keepAs(const QString& path, bool isUnsaved, const std::vector<KeptVersion>& before,
               const Put& put)
{
    const QString folder = versionsFolder(path);
    QDir().mkpath(folder);
    QDateTime when = QDateTime::currentDateTime();
    // A clock that was set back must not make the newest version the first to go.
    if (!before.empty() && when < before.front().when.addSecs(1))
        when = before.front().when.addSecs(1);
    QString version = folder + u'/' + versionName(path, when, isUnsaved);
    if (!put(version))
        throw unwritable(version, u"la carpeta no admite archivos nuevos"_s);
    for (std::size_t i = maxKeptVersions - 1; i < before.size(); ++i)
        QFile::remove(before[i].path);
    return version;
}

/// The versions of one kind that a new one comes before.
std::vector<KeptVersion> versionsBefore(const QString& path, bool isUnsaved)
{
    std::vector<KeptVersion> before = keptVersions(path);
    std::erase_if(before, [&](const KeptVersion& one) {
        return one.isUnsaved != isUnsaved || one.when.date().year() >= lastYear;
    });
    return before;
}

} // namespace

QString keepVersion(const QString& path, const QByteArray& bytes, bool isUnsaved)
{
    const QMutexLocker lock(&oneAtATime);
    const std::vector<KeptVersion> before = versionsBefore(path, isUnsaved);
    if (!before.empty() && holds(before.front().path, bytes))
        return before.front().path;
    return keepAs(path, isUnsaved, before,
                  [&](const QString& version) { return replaceFile(version, bytes); });
}

QString keepFile(const QString& path, const QString& file)
{
    const QMutexLocker lock(&oneAtATime);
    return keepAs(path, false, versionsBefore(path, false),
                  [&](const QString& version) { return QFile::rename(file, version); });
}

} // namespace platform
