#include "exchange/export_preview.h"

#include "exchange/map_image.h"
#include "mapview/reduced_picture.h"
#include "platform/core/spanish_number.h"

#include <QPainter>

using namespace Qt::StringLiterals;

using platform::spanishNumber;

namespace {

QImage picturePreview(const ExportedMap& map, const ExportOptions& options, QSize room,
                      const Advance& advance)
{
    const QRect part = map.partOf(options.zone);
    const QSize size =
        part.size().scaled(room, Qt::KeepAspectRatio).boundedTo(part.size()).expandedTo({1, 1});
    QImage picture = reducedPart(map.picture(), part, size, advance);
    const std::vector<Overlay> overlays = map.overlays(options);
    const double scale = static_cast<double>(size.width()) / part.width();
    QPainter painter(&picture);
    drawOverlays(painter, map.geometry(), {part, scale, 1}, overlays);
    return picture;
}

QString sizeText(const MapFormat& format, const ExportedMap& map, const ExportOptions& options)
{
    if (format.heeds(u"escala"_s)) {
        const QSize size = map.partOf(options.zone).size() * options.scale;
        return u"%1 × %2 píxeles"_s.arg(spanishNumber(size.width()), spanishNumber(size.height()));
    }
    if (map.map().mapaPines.empty())
        return u"El mapa no tiene lugares."_s;
    return u"%1 lugares"_s.arg(spanishNumber(static_cast<double>(map.map().mapaPines.size())));
}

} // namespace

ExportPreview exportPreview(const MapFormat& format, const ExportedMap& map,
                            const ExportOptions& options, QSize room, const Advance& advance)
{
    return {picturePreview(map, options, room, advance), sizeText(format, map, options)};
}
