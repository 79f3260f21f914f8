#pragma once

/// The entry procedure: loads catalogues, prepares the palettes, shows the About box and, when that
/// is closed, the map window. The program then lives as long as its windows.
void Main();
