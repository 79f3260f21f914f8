#include "cli/picture.h"

#include "cli/progress.h"
#include "platform/core/console.h"
#include "platform/core/error.h"
#include "platform/core/file_replacement.h"
#include "platform/core/saving.h"
#include "worldmap/map_file.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <limits>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;

namespace {

/// Whether two paths lead to one file.
bool isSameFile(const QString& a, const QString& b)
{
    // Files that aren't there yet all count as equal by the first comparison.
    return (QFileInfo::exists(a) && QFileInfo(a) == QFileInfo(b)) ||
           QDir::cleanPath(QFileInfo(a).absoluteFilePath()) ==
               QDir::cleanPath(QFileInfo(b).absoluteFilePath());
}

/// Whether a file is a map, whatever its tiles and pins.
bool isMap(const QString& path)
{
    const auto any = [](const QString&) { return true; };
    try {
        readMapFile(path, any, any);
        return true;
    } catch (const Error&) {
        return false;
    }
}

/// A buffer that tells how much has been written to it.
class ToldBuffer final : public QBuffer
{
public:
    ToldBuffer(QByteArray* bytes, Progress& progress) : QBuffer(bytes), progress_(progress) {}

protected:
    qint64 writeData(const char* data, qint64 length) override
    {
        constexpr qint64 kilobyte = 1024;
        const qint64 written = QBuffer::writeData(data, length);
        progress_.update(u"Imagen PNG… %1 kB"_s.arg(size() / kilobyte));
        return written;
    }

private:
    Progress& progress_;
};

} // namespace

PictureTarget::PictureTarget(const Arguments& arguments, const QString& map)
{
    if (!arguments.has(u"png"_s))
        return;
    name_ = arguments.value(u"png"_s);
    if (isStandardOutput())
        return;
    if (!map.isEmpty() && isSameFile(name_, map))
        throw UsageError{u"la imagen de --png ocuparía el lugar del mapa"_s};
    checkWritable(name_);
    if (!name_.endsWith(".png"_L1, Qt::CaseInsensitive))
        throw UsageError{
            u"el archivo de --png ha de acabar en «.png», o ser «-», y no «%1»"_s.arg(name_)};
    if (isMap(name_))
        throw UsageError{u"--png: «%1» es un mapa, y la imagen ocuparía su lugar"_s.arg(name_)};
}

void PictureTarget::write(const QByteArray& png) const
{
    if (!isStandardOutput()) {
        QTextStream err(stderr);
        for (const QString& notice : platform::writeFileAtomically(name_, png))
            err << notice << '\n';
        return;
    }
    platform::passBytes(stdout);
    // A failure shows in the stream, which main looks at.
    std::fwrite(png.constData(), 1, static_cast<std::size_t>(png.size()), stdout);
}

void PictureTarget::tell(QTextStream& out, QSize size) const
{
    out << u"Imagen: %1 (%2 × %3 píxeles)\n"_s.arg(name_, QString::number(size.width()),
                                                   QString::number(size.height()));
}

void checkPictureSize(QSize size, int scale)
{
    constexpr qint64 most = std::numeric_limits<int>::max() / qint64{sizeof(QRgb)};
    if (qint64{size.width()} * size.height() * scale * scale > most)
        throw Error(ErrorNumber::TooLarge,
                    scale == 1 ? u"El mapa es demasiado grande para una imagen."_s
                               : u"La imagen sería demasiado grande. Pida una escala menor."_s);
}

QByteArray pngBytes(const QImage& picture, int scale, Progress& progress)
{
    checkPictureSize(picture.size(), scale);
    QByteArray bytes;
    ToldBuffer buffer(&bytes, progress);
    buffer.open(QIODevice::WriteOnly);
    if (!(scale == 1 ? picture : picture.scaled(picture.size() * scale)).save(&buffer, "PNG"))
        throw Error(ErrorNumber::FileUnwritable, u"No se puede crear la imagen PNG."_s);
    return bytes;
}

void checkWritable(const QString& path)
{
    const QFileInfo file(platform::replaceableFile(path));
    if (!(file.exists() ? file : QFileInfo(file.absolutePath())).isWritable())
        throw platform::unwritable(path, u"no hay permiso para escribir ahí"_s);
}
