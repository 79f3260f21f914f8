#pragma once

#include "platform/core/error.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

namespace platform {

/// A text file of the program, read whole and decoded from Windows-1252.
struct TextFile {
    QString path;
    std::vector<QString> lines; ///< without their ends

    /// The error for a fault in a line (counted from 0); its text names file, line and reason.
    Error errorAt(std::size_t line, const QString& reason,
                  ErrorNumber number = ErrorNumber::BadFormat) const;
};

/// What a reader does with a fault. One that returns lets the reader go on behind the fault, to
/// tell of further ones; what was read is then worth nothing.
using OnFault = std::function<void(const Error& fault)>;
/// The usual one: throws the fault.
[[noreturn]] void giveUp(const Error& fault);

/// The largest text file that is read, in bytes: several times the largest map the program draws.
inline constexpr qint64 maxTextFileBytes = 64 * 1024 * 1024;

/// Reads a file of at most maxBytes bytes. Throws Error: FileNotFound, FileUnreadable, TooLarge.
QByteArray readFile(const QString& path, qint64 maxBytes);

/// Reads a text file. A line ends at CR, at CR LF or at LF; a last line needs no end. Throws as
/// readFile does.
TextFile readTextFile(const QString& path);

/// Cuts a text into lines as readTextFile does.
std::vector<QString> splitLines(const QString& text);

/// Puts bytes into a file so that a failure or a crash leaves the old file whole: a new file beside
/// it is filled, flushed and renamed over it. Only where the folder forbids new files is the file
/// itself overwritten, which a crash can spoil, but not a full disk. Throws Error (FileUnwritable).
void writeFileAtomically(const QString& path, const QByteArray& bytes);

/// Copies a file over another, with the same care. Throws Error.
void copyFileAtomically(const QString& from, const QString& to);

} // namespace platform
