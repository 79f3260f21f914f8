#pragma once

#include "cli/command.h"

#include <QByteArray>
#include <QImage>
#include <QTextStream>

class Progress;

/// The largest scale of a picture.
inline constexpr int maxScale = 16;

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

    /// Writes a picture's bytes. Throws Error.
    void write(const QByteArray& png) const;
    void tell(QTextStream& out, QSize size) const;

private:
    QString name_;
};

/// Throws Error when a picture of that size, enlarged, would be too large.
void checkPictureSize(QSize size, int scale);

/// The bytes of a picture as a PNG file, enlarged. Throws Error.
QByteArray pngBytes(const QImage& picture, int scale, Progress& progress);

/// Throws Error when no file can be written there, so that nothing is half done when it turns out.
void checkWritable(const QString& path);
