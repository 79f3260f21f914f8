#pragma once

/// Lets screen readers see map views as maps with a current cell. Done once; more does no harm.
void installMapViewAccessibility();
