#pragma once

class QLineEdit;
class QPlainTextEdit;

namespace platform {

/// Keeps a text box to what the data files can hold, as the text enters and where the user sees it:
/// ";" turns into "," and "|" into "/"; characters outside the files' code page are left out, and a
/// tip says so.
void guardText(QLineEdit& box);
void guardText(QPlainTextEdit& box);

} // namespace platform
