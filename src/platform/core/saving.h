#pragma once

#include "platform/core/file_replacement.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace platform {

/// What a document knows of its file: which it is, and a digest of what was last read from it or
/// written to it.
struct KnownFile {
    QString path;
    QByteArray digest;
    bool isWritten = false; ///< by the document itself, else read
};

/// The digest by which contents of files are compared.
QByteArray contentDigest(const QByteArray& bytes);

/// Puts bytes into a file so that a failure or a crash leaves the old file whole. Where the folder
/// takes no new file, the file is overwritten in place, after a copy of it was kept among its
/// versions or in the folder for temporary files. Returns what the user is to be told of that, in
/// Spanish; mostly nothing. Throws Error (FileUnwritable).
QStringList writeFileAtomically(const QString& path, const QByteArray& bytes,
                                const OnReplaced& onReplaced = {});

/// A version of a file that was replaced and wasn't the document's own.
struct OtherVersion {
    QString path;   ///< where it is kept; empty if it isn't
    QString text;   ///< what the user is to be told, in Spanish
    QString file{}; ///< that it was in
};

/// What came of a save.
struct Saved {
    QStringList notices; ///< what the user is to be told, in Spanish; mostly nothing
    std::optional<OtherVersion> other;
};

/// Saves a document: writes its file as writeFileAtomically does, and keeps the version that is
/// replaced: always when it isn't what the document last read or wrote, else when no version was
/// kept in the last ten minutes. `known` then says what was written. That a version couldn't be
/// kept is told; the save goes on. Throws Error (FileUnwritable), with `known` as it was.
Saved saveFile(const QString& path, const QByteArray& bytes, KnownFile& known);

/// Copies a file over another, with the care of writeFileAtomically. Throws Error.
void copyFileAtomically(const QString& from, const QString& to);

} // namespace platform
