#include "cli/saving.h"

#include "platform/core/saving.h"
#include "worldmap/map_file.h"

#include <QFileInfo>
#include <QTextStream>

QString nameByFile(const QString& path)
{
    const QFileInfo file(path);
    const bool isMap = file.suffix().compare(QStringLiteral("map"), Qt::CaseInsensitive) == 0;
    const QString name = isMap ? file.completeBaseName() : file.fileName();
    return mapNameProblem(name) ? QString() : name;
}

void saveMapBytes(const QString& path, const QByteArray& bytes)
{
    platform::KnownFile unknown;
    QTextStream err(stderr);
    for (const QString& notice : platform::saveFile(path, bytes, unknown).notices)
        err << notice << '\n';
}
