#pragma once

#include "platform/core/saving.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// A copy of unsaved work, for the case that the program ends before it is saved.
struct RecoveryCopy {
    QString work;              ///< whose work it is, as Recovery::watch was told: "mapa", "Armas"
    QString target;            ///< the file that saving would write
    platform::KnownFile known; ///< what the document knew of its file
    QDateTime when;            ///< of the last change in it, in local time
    QByteArray content;        ///< what saving would put into the file, but for its checks
    QString file{};            ///< that the copy was read from
};

/// The bytes of a copy's own file: a head of lines in UTF-8, then the content. Paths below
/// AppFolder are written relative to it.
QByteArray bytesOf(const RecoveryCopy& copy);

/// Reads the file of a copy. Throws Error: as readFile does; BadFormat for one that is damaged, cut
/// short or of another version of the program.
RecoveryCopy readRecoveryCopy(const QString& path);

/// A text as the content of a copy: as files hold it, characters that they can't hold included.
QByteArray copyContent(const QString& text);
