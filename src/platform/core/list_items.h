#pragma once

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
    const QString& key() const { return key_; }
    const QString& text() const { return text_; }
    /// Position (from 1) of the item's picture in the list's ImageList, 0 for none.
    int icon() const { return icon_; }
    void setIcon(int icon);
    void setText(const QString& text);
    /// Throws Error (DuplicateKey) when another item has that key.
    void setKey(const QString& key);

    bool hasSubItem(const QString& key) const { return findSubItem(key) != nullptr; }
    /// Throws Error (NoSuchKey) when the item has no such sub-item.
    const QString& subItem(const QString& key) const;
    /// Adds the sub-item, or replaces its text.
    void setSubItem(const QString& key, const QString& text);
    /// All of the item's texts, a line each, folded as a TextFilter takes them.
    const QString& searchText() const;

private:
    friend class ListItems;
    struct SubItem {
        QString key;
        QString text;
    };

    ListItem(ListItems& owner, int row, const QString& key, const QString& text)
        : owner_(&owner),
          row_(row),
          key_(key),
          text_(text)
    {
    }
    const SubItem* findSubItem(const QString& key) const;

    ListItems* owner_;
    int row_;
    QString key_;
    QString text_;
    int icon_ = 0;
    std::vector<SubItem> subItems_;
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
    ListItem* findText(const QString& text);
    /// Takes the item out and destroys it.
    void remove(const ListItem& item);
    void clear();

    /// Orders the items by the text shown in a column (from 0), ascending, with the rules of the
    /// Spanish alphabet and without regard to letter case; equal texts keep their order.
    void sortByColumn(int column);
    /// Sorts by the column of the last sortByColumn, if there was one. For after items were added.
    void sortAgain();

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
    void renumber();

    std::vector<ListColumn> columns_;
    std::vector<std::unique_ptr<ListItem>> items_;
    QHash<QString, ListItem*> byKey_;
    int sortColumn_ = -1;
};

} // namespace platform
