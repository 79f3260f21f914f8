#pragma once

#include "platform/core/error.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QString>
#include <memory>
#include <vector>

namespace platform {

class ListItems;

/// A column of a report list. The first column shows the items' text, the others the sub-item of
/// their key.
struct ListColumn {
    QString key;
    QString header;
    int width; ///< in twips
    Qt::Alignment alignment = Qt::AlignLeft;
};

/// One entry of a ListItems: a unique key, a text, a small icon and keyed sub-items.
class ListItem
{
public:
    struct SubItem {
        QString key;
        QString text;
        bool operator==(const SubItem&) const = default;
    };
    /// All that an item holds.
    struct Contents {
        QString key;
        QString text;
        int icon = 0;
        std::vector<SubItem> subItems;
        bool operator==(const Contents&) const = default;
    };

    const QString& key() const { return contents_.key; }
    const QString& text() const { return contents_.text; }
    /// Position (from 1) of the item's picture in the list's ImageList, 0 for none.
    int icon() const { return contents_.icon; }
    void setIcon(int icon);
    void setText(const QString& text);

    const Contents& contents() const { return contents_; }
    /// Exchanges all that the item holds. Throws Error (DuplicateKey), with nothing exchanged, when
    /// another item has the key.
    void exchange(Contents& contents);

    bool hasSubItem(const QString& key) const { return findSubItem(key) != nullptr; }
    /// Throws Error (NoSuchKey) when the item has no such sub-item.
    const QString& subItem(const QString& key) const;
    /// Adds the sub-item, or replaces its text.
    void setSubItem(const QString& key, const QString& text);
    /// All of the item's texts, a line each, folded as a TextFilter takes them.
    const QString& searchText() const;

private:
    friend class ListItems;
    ListItem(ListItems& owner, Contents&& contents) : owner_(&owner), contents_(std::move(contents))
    {
    }
    const SubItem* findSubItem(const QString& key) const;
    void changed();

    ListItems* owner_;
    int row_ = -1; ///< while it isn't in the list
    Contents contents_;
    mutable QString searchText_; ///< null until it is asked for
};

/// The ordered, keyed list behind every list view: a catalogue, a palette, a list of files. It is
/// the one copy of that data; a view shows it as the model it is, and loaders and writers work on
/// it without a view. Keys are compared exactly.
class ListItems final : public QAbstractTableModel
{
public:
    enum Role { KeyRole = Qt::UserRole, IconRole };

    void setColumns(const std::vector<ListColumn>& columns);
    const std::vector<ListColumn>& columns() const { return columns_; }

    int count() const { return static_cast<int>(items_.size()); }
    bool isEmpty() const { return items_.empty(); }

    /// Appends an item. Throws Error (DuplicateKey) when the key is taken.
    ListItem& add(const QString& key, const QString& text);
    /// Makes an item that isn't in the list yet.
    std::unique_ptr<ListItem> make(ListItem::Contents contents);
    /// Puts one of the list's items that isn't in it at a position. Throws Error (DuplicateKey)
    /// when the key is taken.
    ListItem& insert(int position, std::unique_ptr<ListItem> item);
    /// Takes the item out.
    std::unique_ptr<ListItem> take(const ListItem& item);
    /// Puts the item at another position.
    void move(const ListItem& item, int position);
    ListItem& at(int position) { return *items_.at(static_cast<std::size_t>(position)); }
    const ListItem& at(int position) const
    {
        return *items_.at(static_cast<std::size_t>(position));
    }
    /// The position of one of the list's own items.
    int positionOf(const ListItem& item) const { return item.row_; }
    /// The item with that key, or null.
    ListItem* find(const QString& key) { return byKey_.value(key); }
    const ListItem* find(const QString& key) const { return byKey_.value(key); }
    /// The first item with that text, letter case ignored, or null.
    const ListItem* findText(const QString& text) const;
    void clear();
    /// What all items hold, in their order.
    std::vector<ListItem::Contents> contents() const;

    /// Orders the items by the text shown in a column (from 0), ascending, with the rules of the
    /// Spanish alphabet and without regard to letter case; equal texts keep their order.
    void sortByColumn(int column);
    /// Sorts by the column of the last sortByColumn, if there was one since the list was emptied.
    /// For after items were added.
    void sortAgain();
    /// How often sortByColumn gave the list another order.
    int sortings() const { return sortings_; }

    /// Exchanges the items, but not the columns, with another list.
    void swapItems(ListItems& other);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    friend class ListItem;
    QString shownText(const ListItem& item, int column) const;
    void itemChanged(const ListItem& item);
    void renumber(int first = 0);
    void orderBy();

    std::vector<ListColumn> columns_;
    std::vector<std::unique_ptr<ListItem>> items_;
    QHash<QString, ListItem*> byKey_;
    int sortColumn_ = -1;
    int sortings_ = 0;
};

/// What is thrown for a key that is taken.
Error duplicateKey(const QString& key);

} // namespace platform
