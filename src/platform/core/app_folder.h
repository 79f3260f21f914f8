#pragma once

#include <QString>

namespace platform {

/// AppFolder: the folder that holds the program file. Every data path starts here and nothing else
/// decides where data lives.
QString appFolder();

/// Puts another folder in AppFolder's place for the lifetime of the object. For tests and tools.
class ScopedAppFolder
{
public:
    explicit ScopedAppFolder(const QString& folder);
    ~ScopedAppFolder();
    ScopedAppFolder(const ScopedAppFolder&) = delete;
    ScopedAppFolder& operator=(const ScopedAppFolder&) = delete;

private:
    QString previous_;
};

/// The full path of a data file or folder given relative to AppFolder, with "\" or "/" between its
/// parts. A part that isn't there as written is matched without regard to letter case, because the
/// data comes from systems that ignore it; parts that match nothing stay as written.
QString inAppFolder(const QString& relativePath);

/// The same of a path that may also be whole, with its root: that one is used as it is, but for
/// letter case and separators.
QString fromAppFolder(const QString& path);

/// A path as messages show it: relative to AppFolder where it lies inside, native separators.
QString displayPath(const QString& path);

} // namespace platform
