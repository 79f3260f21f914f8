#include "exchange/export_target.h"

#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/core/file_replacement.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

/// Whether two paths lead to one file.
bool isSameFile(const QString& a, const QString& b)
{
    // Files that aren't there yet all count as equal by the first comparison.
    return (QFileInfo::exists(a) && QFileInfo(a) == QFileInfo(b)) ||
           QDir::cleanPath(QFileInfo(a).absoluteFilePath()) ==
               QDir::cleanPath(QFileInfo(b).absoluteFilePath());
}

/// Whether a file is a map, whatever its tiles and pins.
bool isMap(const QString& path)
{
    const auto any = [](const QString&) { return true; };
    try {
        readMapFile(path, any, any);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace

void checkWritable(const QString& path)
{
    const QFileInfo file(platform::replaceableFile(path));
    if (!(file.exists() ? file : QFileInfo(file.absolutePath())).isWritable())
        throw platform::unwritable(path, u"no hay permiso para escribir ahí"_s);
}

void checkExportTarget(const QString& path, const QString& map)
{
    if (!map.isEmpty() && isSameFile(path, map))
        throw Error(ErrorNumber::BadName, u"Lo exportado ocuparía el lugar del mapa."_s);
    checkWritable(path);
    if (isMap(path))
        throw Error(ErrorNumber::BadName,
                    u"«%1» es un mapa, y lo exportado ocuparía su lugar."_s.arg(
                        platform::displayPath(path)));
}
