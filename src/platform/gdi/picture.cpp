#include "platform/gdi/picture.h"

#include "platform/core/app_folder.h"
#include "platform/core/text_file.h"

#include <QBuffer>
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr qint64 maxPictureBytes = 32 * 1024 * 1024;

/// Whether a GIF file holds all data blocks of its first frame. The decoder can't be asked: it
/// fills up what a file that was cut off lacks.
bool holdsWholeFrame(QByteArrayView gif)
{
    qsizetype at = 6; // after the signature
    const auto byteAt = [&](qsizetype index) -> int {
        return index < gif.size() ? static_cast<uchar>(gif[index]) : 0;
    };
    const auto colourTableSize = [](int flags) {
        return flags & 0x80 ? 3 << ((flags & 7) + 1) : 0;
    };
    const auto skipBlocks = [&] {
        while (byteAt(at) != 0)
            at += 1 + byteAt(at);
        ++at;
        return at <= gif.size();
    };

    at += 7 + colourTableSize(byteAt(at + 4));
    while (byteAt(at) == '!') { // an extension: its label, then blocks
        at += 2;
        if (!skipBlocks())
            return false;
    }
    if (byteAt(at) != ',')
        return false;
    at += 10 + colourTableSize(byteAt(at + 9));
    ++at; // the code size
    return skipBlocks();
}

} // namespace

QImage loadPicture(const QString& path)
{
    QByteArray bytes = readFile(path, maxPictureBytes);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "gif");
    reader.setAutoDetectImageFormat(false);
    QImage picture = reader.read();
    if (picture.isNull() || !holdsWholeFrame(bytes))
        throw Error(ErrorNumber::BadPicture,
                    u"«%1» no es una imagen GIF válida."_s.arg(displayPath(path)));
    return picture;
}

MemoryDC loadPictureDC(const QString& path)
{
    return MemoryDC(loadPicture(path));
}

} // namespace platform
