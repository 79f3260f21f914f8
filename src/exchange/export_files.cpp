#include "exchange/export_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

ExportFiles::~ExportFiles()
{
    if (isFinished_)
        return;
    files_.clear();
    while (!foldersMade_.isEmpty())
        QDir().rmdir(foldersMade_.takeLast());
}

QIODevice& ExportFiles::add(const QString& path)
{
    const QString folder = QFileInfo(path).absolutePath();
    QStringList missing; // the innermost first
    for (QDir above(folder); !above.exists() && !above.isRoot();
         above.setPath(QFileInfo(above.path()).path()))
        missing.append(above.path());
    for (; !missing.isEmpty(); missing.removeLast()) {
        if (QDir().mkdir(missing.last()))
            foldersMade_.append(missing.last());
    }
    files_.emplace_back(path); // tells of a folder that couldn't be made
    return files_.back().device();
}

void ExportFiles::settle()
{
    for (platform::FreshFile& file : files_)
        file.settle();
}

QStringList ExportFiles::finish()
{
    settle();
    QStringList notices;
    QStringList made;
    try {
        for (platform::FreshFile& file : files_) {
            notices += file.finish();
            if (file.isNew())
                made.append(file.path());
        }
    } catch (...) {
        for (const QString& file : made)
            QFile::remove(file);
        throw;
    }
    isFinished_ = true;
    return notices;
}
