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
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return name;
    }
    return wanted;
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
    QString path = appFolder();
    const QStringList parts =
        QString(relativePath).replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    for (const QString& part : parts)
        path += u'/' + matchName(path, part);
    return path;
}

QString displayPath(const QString& path)
{
    const QString root = appFolder() + u'/';
    return QDir::toNativeSeparators(path.startsWith(root) ? path.sliced(root.size()) : path);
}

} // namespace platform
