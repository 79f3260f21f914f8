#include "platform/gdi/image_list.h"

#include "platform/core/error.h"

using namespace Qt::StringLiterals;

namespace platform {

int ImageList::add(const QString& key, const QImage& picture)
{
    if (positions_.contains(key))
        throw Error(ErrorNumber::DuplicateKey, u"la imagen de «%1» está repetida"_s.arg(key));
    return append(key, picture);
}

int ImageList::append(const QString& key, const QImage& picture)
{
    pictures_.push_back(picture);
    positions_.insert(key, count());
    return count();
}

QImage ImageList::at(int position) const
{
    if (position < 1 || position > count())
        return {};
    return pictures_[static_cast<std::size_t>(position - 1)];
}

} // namespace platform
