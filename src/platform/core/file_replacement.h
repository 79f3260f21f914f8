#pragma once

#include "platform/core/error.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

/// The error of a file that can't be saved, for a reason that follows a colon.
Error unwritable(const QString& path, const QString& reason);

/// The file that a path leads to: a link is followed, so that saving keeps the link. Throws Error
/// (FileUnwritable) where no ordinary file can be written: at a folder, a device, in a folder that
/// isn't there.
QString replaceableFile(const QString& path);

/// Is shown a file that was replaced, under another name, before it goes.
using OnReplaced = std::function<void(const QString& oldFile)>;

/// Puts bytes into a file so that a failure or a crash leaves the old file, or none, whole: a new
/// file beside it is filled, brought to the disk, read back and renamed over it, then the folder
/// too is brought to the disk. Where the system can exchange files, onReplaced is shown the old one
/// as it was to the last moment, with what another program wrote meanwhile. Returns false, with
/// nothing done, where the folder takes no new file. Throws Error (FileUnwritable).
bool replaceFile(const QString& path, const QByteArray& bytes, const OnReplaced& onReplaced = {});

/// Puts bytes into a file that is there, in place: a crash can leave a mixture, a full disk can't,
/// as the room is taken before any old byte is touched. Throws Error (FileUnwritable).
void overwriteFile(const QString& path, const QByteArray& bytes);

/// Makes a file-size limit of the system an error of writing, like a full disk, instead of a signal
/// that ends the process. For the beginning of a program.
void outliveFileSizeLimit();

/// Removes the new files that killed runs of replaceFile left in these folders below AppFolder and
/// in those inside them. Files that a program is filling at the moment stay.
void removeAbandonedFiles(const QStringList& folders);

} // namespace platform
