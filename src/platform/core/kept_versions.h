#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace platform {

/// An earlier version of a data file, as it is kept.
struct KeptVersion {
    QString path;
    QDateTime when;         ///< when it was kept, in local time
    bool isUnsaved = false; ///< work that was replaced without ever being in the file
};

/// The folder that holds the earlier versions of a file: below AppFolder\respaldo, where the file
/// lies below AppFolder, and named after it.
QString versionsFolder(const QString& path);

/// The folder below AppFolder that all kept versions are in.
QString versionsRoot();

/// The data files that kept versions are of, by their paths. The files themselves may be gone.
QStringList filesWithVersions();

/// The kept versions of a file, the newest first. Whatever else lies in their folder is left out.
std::vector<KeptVersion> keptVersions(const QString& path);

/// How many versions of a file are kept, and as many of its unsaved ones; the oldest go first.
inline constexpr int maxKeptVersions = 10;

/// Keeps bytes as the newest version of a file, or its newest unsaved one; if they are those of the
/// newest one already, that one serves. Returns the path of the version. Throws Error
/// (FileUnwritable).
QString keepVersion(const QString& path, const QByteArray& bytes, bool isUnsaved = false);

/// Moves a file, of any size, among the versions of another one as the newest. Returns its path.
/// Throws Error (FileUnwritable).
QString keepFile(const QString& path, const QString& file);

} // namespace platform
