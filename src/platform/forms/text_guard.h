#pragma once

#include "platform/core/text_codec.h"

class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace platform {

/// Keeps a text box to what the data files can hold, as the text enters and where the user sees it:
/// letters and accents that came apart are composed, the characters that separate fields there turn
/// into others (";" into ",", "|" into "/"), line breaks in a box of one line into blanks;
/// characters outside the files' code page and, in a box of several lines, the mark that stands for
/// a line break are left out, and a tip says so. Any length is taken.
void guardText(QLineEdit& box, const QString& separators = mapSeparators);
void guardText(QPlainTextEdit& box, const QString& separators = mapSeparators);

/// The text of a box as it is, no-break spaces too, its lines ending in '\n'.
QString textOf(const QPlainTextEdit& box);

/// Says in a tip below a box that it doesn't take a character.
void showRefusal(QWidget& box, const QString& character);

} // namespace platform
