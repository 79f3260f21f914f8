#pragma once

class QKeyEvent;
class QLineEdit;
class QPlainTextEdit;

/// Makes a box select its whole text whenever it gets the focus, or never.
void selectOnFocus(QLineEdit& box, bool selectsAll);

/// Lets Enter in the notes go to the window, which saves; Ctrl+Enter begins a new line instead.
void saveOnEnter(QPlainTextEdit& box);

bool isEnter(const QKeyEvent& event);

/// Whether Shift, Ctrl, Alt or the like is held with the key.
bool hasModifiers(const QKeyEvent& event);
