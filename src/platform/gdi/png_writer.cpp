#include "platform/gdi/png_writer.h"

#include "platform/core/error.h"

#include <csetjmp>
#include <png.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int bytesAPixel = 3;
// Higher ones make pictures of tiles hardly smaller, and take several times as long.
constexpr int compression = 4;

extern "C" void writeBytes(png_structp png, png_bytep bytes, png_size_t count)
{
    auto* const device = static_cast<QIODevice*>(png_get_io_ptr(png));
    if (device->write(reinterpret_cast<const char*>(bytes), static_cast<qint64>(count)) !=
        static_cast<qint64>(count))
        png_error(png, "write error");
}

extern "C" void flushBytes(png_structp /*png*/) {}

/// Stays silent; what is wrong is told by an Error.
extern "C" void ignoreWarning(png_structp /*png*/, png_const_charp /*text*/) {}

/// Runs a step of the library, which leaves it by longjmp when it fails: it may hold no object
/// that needs to be destroyed. Returns whether it succeeded.
template <typename Step>
bool attempt(png_structp png, const Step& step)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): the library's own way
        return false;
    step();
    return true;
}

} // namespace

struct PngWriter::Writing {
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::vector<png_byte> row;

    ~Writing() { png_destroy_write_struct(&png, &info); }
    void check(bool isDone) const
    {
        if (!isDone)
            throw Error(ErrorNumber::FileUnwritable, u"No se puede escribir la imagen PNG."_s);
    }
};

PngWriter::PngWriter(QIODevice& device, QSize size) : writing_(std::make_unique<Writing>())
{
    Writing& writing = *writing_;
    writing.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, &ignoreWarning);
    writing.info = writing.png ? png_create_info_struct(writing.png) : nullptr;
    writing.check(writing.info != nullptr);
    writing.row.resize(static_cast<std::size_t>(size.width()) * bytesAPixel);
    png_set_write_fn(writing.png, &device, &writeBytes, &flushBytes);
    writing.check(attempt(writing.png, [&] {
        png_set_user_limits(writing.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(writing.png, writing.info, static_cast<png_uint_32>(size.width()),
                     static_cast<png_uint_32>(size.height()), 8, PNG_COLOR_TYPE_RGB,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_compression_level(writing.png, compression);
        png_set_filter(writing.png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE | PNG_FILTER_UP);
        png_write_info(writing.png, writing.info);
    }));
}

PngWriter::~PngWriter() = default;

void PngWriter::write(const QImage& rows, int scale)
{
    Writing& writing = *writing_;
    for (int y = 0; y < rows.height(); ++y) {
        const auto* const pixels = reinterpret_cast<const QRgb*>(rows.constScanLine(y));
        png_byte* byte = writing.row.data();
        for (int x = 0; x < rows.width(); ++x) {
            for (int i = 0; i < scale; ++i) {
                *byte++ = static_cast<png_byte>(qRed(pixels[x]));
                *byte++ = static_cast<png_byte>(qGreen(pixels[x]));
                *byte++ = static_cast<png_byte>(qBlue(pixels[x]));
            }
        }
        writing.check(attempt(writing.png, [&] {
            for (int i = 0; i < scale; ++i) {
                // Tiles repeat along a row; a row that is repeated is nothing but noughts.
                png_set_filter(writing.png, PNG_FILTER_TYPE_BASE,
                               i == 0 ? PNG_FILTER_NONE : PNG_FILTER_UP);
                png_write_row(writing.png, writing.row.data());
            }
        }));
    }
}

void PngWriter::finish()
{
    writing_->check(attempt(writing_->png, [&] { png_write_end(writing_->png, nullptr); }));
}

} // namespace platform
