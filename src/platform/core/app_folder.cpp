#include "platform/core/app_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace platform {
namespace {

QString& folderOverride()
{
    static QString folder;
    return folder;
}

/// The name in the folder that equals the wanted one but for letter case, or the wanted one.
QString matchName(const QString& folder, const QString& wanted)
{
    if (wanted.isEmpty() || QFileInfo::exists(folder + u'/' + wanted))
        return wanted;
    const QStringList names =
        QDir(folder + u'/')
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return name;
    }
    return wanted;
}

/// A folder's path with the parts of another behind it, each matched to what is there.
QString matchParts(QString path, const QString& rest)
{
    const QStringList parts = QString(rest).replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    for (const QString& part : parts)
        path += u'/' + matchName(path, part);
    return path;
}

} // namespace

QString appFolder()
{
    return folderOverride().isEmpty() ? QCoreApplication::applicationDirPath() : folderOverride();
}

ScopedAppFolder::ScopedAppFolder(const QString& folder) : previous_(folderOverride())
{
    folderOverride() = folder;
}

ScopedAppFolder::~ScopedAppFolder()
{
    folderOverride() = previous_;
}

QString inAppFolder(const QString& relativePath)
{
    return matchParts(appFolder(), relativePath);
}

QString fromAppFolder(const QString& path)
{
    const QString parts = QString(path).replace(u'\\', u'/');
    const qsizetype root = parts.indexOf(u'/');
    if (root < 0 || !QDir::isAbsolutePath(parts))
        return inAppFolder(path);
    return QFileInfo::exists(path) ? path : matchParts(parts.first(root), parts.sliced(root));
}

QString displayPath(const QString& path)
{
    const QString root = appFolder() + u'/';
    return QDir::toNativeSeparators(path.startsWith(root) ? path.sliced(root.size()) : path);
}

} // namespace platform
