#pragma once

#include "cli/command.h"
#include "exchange/export_target.h"
#include "exchange/map_image.h"

#include <QTextStream>

/// Where a command's picture goes: a file, or standard output.
class PictureTarget
{
public:
    /// Takes the option "png", which may be missing. Throws UsageError or Error when no picture can
    /// be written there, or when it would take the place of a map: of that one, or of any other.
    explicit PictureTarget(const Arguments& arguments, const QString& map = {});

    bool isWanted() const { return !name_.isEmpty(); }
    bool isStandardOutput() const { return name_ == QStringLiteral("-"); }
    /// The file; not to be asked for standard output.
    const QString& path() const { return name_; }
    /// Where lines about the work go: standard output, unless the picture goes there.
    std::FILE* lines() const { return isStandardOutput() ? stderr : stdout; }

    /// Writes a picture, if one is wanted. The file takes its place once `between` is done, if that
    /// is given, and not at all if that throws. Throws Error.
    void write(const MapImage& image, bool isLong, const std::function<void()>& between = {}) const;
    void tell(QTextStream& out, QSize size) const;

private:
    QString name_;
};
