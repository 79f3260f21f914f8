#include "platform/core/kept_versions.h"

#include "platform/core/app_folder.h"
#include "platform/core/file_replacement.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Versions are named by the time they were kept at, so that a list by name is one by age.
const QString& timeFormat()
{
    static const QString format = u"yyyy-MM-dd HH.mm.ss"_s;
    return format;
}

const QString& unsavedMark()
{
    static const QString mark = u" sin guardar"_s;
    return mark;
}

QString versionName(const QString& path, const QDateTime& when, bool isUnsaved)
{
    const QString suffix = QFileInfo(path).suffix();
    return when.toString(timeFormat()) + (isUnsaved ? unsavedMark() : QString()) +
           (suffix.isEmpty() ? QString() : u'.' + suffix);
}

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

QString keepVersion(const QString& path, const QByteArray& bytes, bool isUnsaved)
{
    std::vector<KeptVersion> before = keptVersions(path);
    std::erase_if(before, [&](const KeptVersion& one) { return one.isUnsaved != isUnsaved; });
    if (!before.empty() && holds(before.front().path, bytes))
        return before.front().path;

    const QString folder = versionsFolder(path);
    QDir().mkpath(folder);
    QDateTime when = QDateTime::currentDateTime();
    // A clock that was set back must not make the newest version the first to go.
    if (!before.empty() && when < before.front().when.addSecs(1))
        when = before.front().when.addSecs(1);
    QString version = folder + u'/' + versionName(path, when, isUnsaved);
    if (!replaceFile(version, bytes))
        throw unwritable(version, u"la carpeta no admite archivos nuevos"_s);
    for (std::size_t i = maxKeptVersions - 1; i < before.size(); ++i)
        QFile::remove(before[i].path);
    return version;
}

} // namespace platform
