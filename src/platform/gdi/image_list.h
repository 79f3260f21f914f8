#pragma once

#include <QHash>
#include <QImage>
#include <QString>
#include <vector>

namespace platform {

// The sides of the icons in report lists and in lists of icons, in pixels.
inline constexpr int smallIconSize = 16;
inline constexpr int largeIconSize = 32;

/// The ordered, keyed pictures that a list view shows as icons. Positions count from 1, so that 0
/// can stand for "no icon". A picture is kept no larger than its icon at twice its size, whatever
/// the size of its file; the file itself is only remembered.
class ImageList
{
public:
    ImageList() = default;
    explicit ImageList(int iconSize) : iconSize_(iconSize) {}
    /// The largest size in which a picture is kept, in pixels.
    QSize largest() const { return {2 * iconSize_, 2 * iconSize_}; }

    /// Appends a picture and returns its position. Throws Error (DuplicateKey) when the key is
    /// taken.
    int add(const QString& key, const QImage& picture, const QString& path = {});
    /// Appends a picture and returns its position; it gets the key even if another one has it.
    int append(const QString& key, const QImage& picture, const QString& path = {});
    int count() const { return static_cast<int>(pictures_.size()); }
    /// The picture at a position, or a null picture for a position that isn't there.
    QImage at(int position) const;
    /// The path that the picture at a position was added with.
    QString pathAt(int position) const;
    /// The position of the key's picture, or 0.
    int positionOf(const QString& key) const { return positions_.value(key, 0); }

private:
    struct Picture {
        QImage icon;
        QString path;
    };
    const Picture* find(int position) const;

    int iconSize_ = smallIconSize;
    std::vector<Picture> pictures_;
    QHash<QString, int> positions_;
};

} // namespace platform
