#pragma once

#include "platform/core/text_codec.h"

class QLineEdit;
class QPlainTextEdit;

namespace platform {

/// Keeps a text box to what the data files can hold, as the text enters and where the user sees it:
/// the characters that separate fields there turn into others (";" into ",", "|" into "/");
/// characters outside the files' code page are left out, and a tip says so.
void guardText(QLineEdit& box, const QString& separators = mapSeparators);
void guardText(QPlainTextEdit& box, const QString& separators = mapSeparators);

} // namespace platform
