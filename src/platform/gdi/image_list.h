#pragma once

#include <QHash>
#include <QImage>
#include <QString>
#include <vector>

namespace platform {

/// The ordered, keyed pictures that a list view shows as icons. Positions count from 1, so that 0
/// can stand for "no icon".
class ImageList
{
public:
    /// Appends a picture and returns its position. Throws Error (DuplicateKey) when the key is
    /// taken.
    int add(const QString& key, const QImage& picture);
    /// Appends a picture and returns its position; it gets the key even if another one has it.
    int append(const QString& key, const QImage& picture);
    int count() const { return static_cast<int>(pictures_.size()); }
    /// The picture at a position, or a null picture for a position that isn't there.
    QImage at(int position) const;
    /// The position of the key's picture, or 0.
    int positionOf(const QString& key) const { return positions_.value(key, 0); }

private:
    std::vector<QImage> pictures_;
    QHash<QString, int> positions_;
};

} // namespace platform
