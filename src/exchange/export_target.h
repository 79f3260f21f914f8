#pragma once

#include <QString>

/// Throws Error when no file can be written there, so that nothing is half done when it turns out.
void checkWritable(const QString& path);

/// Throws Error when nothing can be exported to a file: it can't be written, or is a map, that one
/// or any other. The map's own path may be empty.
void checkExportTarget(const QString& path, const QString& map);
