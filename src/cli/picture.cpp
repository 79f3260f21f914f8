#include "cli/picture.h"

#include "cli/progress.h"
#include "platform/core/console.h"

#include <QFile>

using namespace Qt::StringLiterals;

PictureTarget::PictureTarget(const Arguments& arguments, const QString& map)
{
    if (!arguments.has(u"png"_s))
        return;
    name_ = arguments.value(u"png"_s);
    if (isStandardOutput())
        return;
    checkExportTarget(name_, map);
    if (!name_.endsWith(".png"_L1, Qt::CaseInsensitive))
        throw UsageError{
            u"el archivo de --png ha de acabar en «.png», o ser «-», y no «%1»"_s.arg(name_)};
}

void PictureTarget::write(const MapImage& image, bool isLong,
                          const std::function<void()>& between) const
{
    Progress progress(isLong);
    const Advance advance = [&](double share) { progress.tell(u"Imagen PNG"_s, share); };
    if (isStandardOutput()) {
        if (between)
            between();
        platform::passBytes(stdout);
        // A failure shows in the stream, which main looks at.
        QFile out;
        if (out.open(stdout, QIODevice::WriteOnly))
            writePng(out, image, advance);
        return;
    }
    ExportFiles files(name_);
    writePng(files.main(), image, advance);
    files.settle();
    if (between)
        between();
    QTextStream err(stderr);
    for (const QString& notice : files.finish())
        err << notice << '\n';
}

void PictureTarget::tell(QTextStream& out, QSize size) const
{
    out << u"Imagen: %1 (%2 × %3 píxeles)\n"_s.arg(name_, QString::number(size.width()),
                                                   QString::number(size.height()));
}
