#pragma once

#include <QIODevice>
#include <QImage>
#include <memory>

namespace platform {

/// Writes a PNG picture row by row, so that it never has to be in memory whole.
class PngWriter
{
public:
    /// Of a picture of that size, without transparency. Throws Error.
    PngWriter(QIODevice& device, QSize size);
    ~PngWriter();
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    /// Writes further rows, of Format_RGB32, each so many times and every pixel as many times
    /// wide. Throws Error.
    void write(const QImage& rows, int scale = 1);
    /// After the last row. Throws Error.
    void finish();

private:
    struct Writing;
    std::unique_ptr<Writing> writing_;
};

} // namespace platform
