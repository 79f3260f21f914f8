#pragma once

#include "platform/core/fresh_file.h"

#include <QString>
#include <QStringList>
#include <deque>
#include <functional>

/// Thrown by an Advance when the user gives an export up.
struct ExportCancelled {
};

/// Is told how far an export has come, from 0 to 1, many times a second. May throw ExportCancelled.
using Advance = std::function<void(double share)>;

/// The files that an export writes: all of them take their places when it is done, or none.
class ExportFiles
{
public:
    /// Of an export into that file, or that folder.
    explicit ExportFiles(const QString& path) : path_(path) {}
    ~ExportFiles();
    ExportFiles(const ExportFiles&) = delete;
    ExportFiles& operator=(const ExportFiles&) = delete;

    const QString& path() const { return path_; }

    /// The export's own file, to be filled. Throws Error where it can't be written.
    QIODevice& main() { return add(path_); }
    /// A further file. Its folder is made if it isn't there.
    QIODevice& add(const QString& path);

    /// Brings them to the disk, where they are yet to take their places. Throws Error.
    void settle();
    /// Does that and puts them in their places. Returns what the user is to be told, in Spanish;
    /// mostly nothing. Throws Error, with no new file left.
    QStringList finish();

private:
    QString path_;
    std::deque<platform::FreshFile> files_;
    QStringList foldersMade_; ///< the innermost last
    bool isFinished_ = false;
};
