#pragma once

#include "platform/core/error.h"
#include "platform/core/saving.h"
#include "platform/core/text_codec.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

namespace platform {

/// A text file of the program, read whole and decoded.
struct TextFile {
    QString path;
    std::vector<QString> lines; ///< without their ends
    QString text{};             ///< with them
    KnownFile known{};          ///< the file as it was read
    bool isUtf8 = false;        ///< else it is in Windows-1252, as the program writes it

    /// The text from the beginning of a line (counted from 0) on, as it stands in the file.
    QString textFrom(std::size_t line) const;

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

/// Reads an ordinary file of at most maxBytes bytes. Throws Error: FileNotFound, FileUnreadable,
/// TooLarge.
QByteArray readFile(const QString& path, qint64 maxBytes);

/// The text of a file's bytes, by decodeText. Throws Error (BadFormat).
DecodedText decodeFile(const QString& path, const QByteArray& bytes);

/// A text file made of the bytes of the file at a path. Throws Error (BadFormat).
TextFile textFileOf(const QString& path, const QByteArray& bytes);

/// Reads a text file, by decodeText. A line ends at CR, at CR LF or at LF; a last line needs no
/// end. Throws as readFile does, and Error (BadFormat).
TextFile readTextFile(const QString& path);

/// Cuts a text into lines as readTextFile does.
std::vector<QString> splitLines(const QString& text);

} // namespace platform
