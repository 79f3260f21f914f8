#pragma once

#include "app/procs.h"

class QWindow;

/// The shared procedures that show or fill windows.
namespace Procs {

/// Tells the user of a trapped error in a message box with the program's title.
void reportError(const platform::Error& error, const QString& procedure, const QString& owner);

/// Puts a window above all that aren't topmost (true) or back among them (false), without moving or
/// resizing it. Returns whether there is such a window and onTop is true.
bool setTopmost(QWindow* handle, bool onTop);

/// The catalogue loaders: each reads its file into its catalogue of the workspace, which frmPrinc
/// shows. An error ends the loading and is reported; what was read stays.
void loadArmas();
void loadArmaduras();
void loadEquipo();
void loadConjuros();

} // namespace Procs
