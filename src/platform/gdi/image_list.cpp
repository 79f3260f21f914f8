#include "platform/gdi/image_list.h"

#include "platform/core/error.h"
#include "platform/gdi/picture.h"

using namespace Qt::StringLiterals;

namespace platform {

int ImageList::add(const QString& key, const QImage& picture, const QString& path)
{
    if (positions_.contains(key))
        throw Error(ErrorNumber::DuplicateKey, u"la imagen de «%1» está repetida"_s.arg(key));
    return append(key, picture, path);
}

int ImageList::append(const QString& key, const QImage& picture, const QString& path)
{
    pictures_.push_back({shrunkTo(picture, largest()), path});
    positions_.insert(key, count());
    return count();
}

const ImageList::Picture* ImageList::find(int position) const
{
    if (position < 1 || position > count())
        return nullptr;
    return &pictures_[static_cast<std::size_t>(position - 1)];
}

QImage ImageList::at(int position) const
{
    const Picture* const picture = find(position);
    return picture ? picture->icon : QImage();
}

QString ImageList::pathAt(int position) const
{
    const Picture* const picture = find(position);
    return picture ? picture->path : QString();
}

} // namespace platform
