#include "platform/core/list_items.h"

#include "platform/core/error.h"
#include "platform/core/text_filter.h"

#include <QCollator>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

Error duplicateKey(const QString& key)
{
    return Error(ErrorNumber::DuplicateKey, u"«%1» está repetido"_s.arg(key));
}

void ListItem::changed()
{
    searchText_ = QString();
    owner_->itemChanged(*this);
}

void ListItem::setIcon(int icon)
{
    contents_.icon = icon;
    changed();
}

void ListItem::setText(const QString& text)
{
    contents_.text = text;
    changed();
}

void ListItem::exchange(Contents& contents)
{
    if (contents.key != key()) {
        if (owner_->byKey_.contains(contents.key))
            throw duplicateKey(contents.key);
        owner_->byKey_.remove(key());
        owner_->byKey_.insert(contents.key, this);
    }
    std::swap(contents_, contents);
    changed();
}

const ListItem::SubItem* ListItem::findSubItem(const QString& key) const
{
    const std::vector<SubItem>& all = contents_.subItems;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const SubItem& subItem) { return subItem.key == key; });
    return found == all.end() ? nullptr : &*found;
}

const QString& ListItem::subItem(const QString& key) const
{
    if (const SubItem* const found = findSubItem(key))
        return found->text;
    throw Error(ErrorNumber::NoSuchKey, u"«%1» no tiene el dato «%2»."_s.arg(text(), key));
}

void ListItem::setSubItem(const QString& key, const QString& text)
{
    std::vector<SubItem>& all = contents_.subItems;
    if (const SubItem* const found = findSubItem(key))
        all[static_cast<std::size_t>(found - all.data())].text = text;
    else
        all.push_back({key, text});
    changed();
}

const QString& ListItem::searchText() const
{
    if (searchText_.isNull()) {
        QString all = text() + u'\n';
        for (const SubItem& subItem : contents_.subItems)
            all += subItem.text + u'\n';
        searchText_ = foldText(all);
    }
    return searchText_;
}

void ListItems::setColumns(const std::vector<ListColumn>& columns)
{
    beginResetModel();
    columns_ = columns;
    endResetModel();
}

ListItem& ListItems::add(const QString& key, const QString& text)
{
    return insert(count(), make({key, text, 0, {}}));
}

std::unique_ptr<ListItem> ListItems::make(ListItem::Contents contents)
{
    return std::unique_ptr<ListItem>(new ListItem(*this, std::move(contents)));
}

ListItem& ListItems::insert(int position, std::unique_ptr<ListItem> item)
{
    if (byKey_.contains(item->key()))
        throw duplicateKey(item->key());
    beginInsertRows({}, position, position);
    ListItem& inserted = *item;
    byKey_.insert(inserted.key(), &inserted);
    items_.insert(items_.begin() + position, std::move(item));
    renumber(position);
    endInsertRows();
    return inserted;
}

std::unique_ptr<ListItem> ListItems::take(const ListItem& item)
{
    const int row = item.row_;
    beginRemoveRows({}, row, row);
    byKey_.remove(item.key());
    std::unique_ptr<ListItem> taken = std::move(items_.at(static_cast<std::size_t>(row)));
    items_.erase(items_.begin() + row);
    taken->row_ = -1;
    renumber(row);
    endRemoveRows();
    return taken;
}

void ListItems::move(const ListItem& item, int position)
{
    const int row = item.row_;
    if (row == position)
        return;
    beginMoveRows({}, row, row, {}, position > row ? position + 1 : position);
    const auto from = items_.begin() + row;
    const auto to = items_.begin() + position;
    if (position > row)
        std::rotate(from, from + 1, to + 1);
    else
        std::rotate(to, from, from + 1);
    renumber(std::min(row, position));
    endMoveRows();
}

const ListItem* ListItems::findText(const QString& text) const
{
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) {
        return item->text().compare(text, Qt::CaseInsensitive) == 0;
    });
    return found == items_.end() ? nullptr : found->get();
}

void ListItems::clear()
{
    beginResetModel();
    byKey_.clear();
    items_.clear();
    sortColumn_ = -1;
    endResetModel();
}

void ListItems::sortByColumn(int column)
{
    sortColumn_ = column;
    ++sortings_;
    orderBy();
}

void ListItems::orderBy()
{
    QCollator collator(QLocale(QLocale::Spanish, QLocale::Spain));
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    struct Entry {
        QCollatorSortKey key;
        std::unique_ptr<ListItem> item;
    };
    std::vector<Entry> entries;
    entries.reserve(items_.size());

    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList oldIndexes = persistentIndexList();
    std::vector<const ListItem*> pinned;
    for (const QModelIndex& index : oldIndexes)
        pinned.push_back(&at(index.row()));

    for (std::unique_ptr<ListItem>& item : items_) {
        const QCollatorSortKey key = collator.sortKey(shownText(*item, sortColumn_));
        entries.push_back({key, std::move(item)});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.key < b.key; });
    std::transform(entries.begin(), entries.end(), items_.begin(),
                   [](Entry& entry) { return std::move(entry.item); });
    renumber();

    for (qsizetype i = 0; i < oldIndexes.size(); ++i)
        changePersistentIndex(oldIndexes[i], index(pinned[static_cast<std::size_t>(i)]->row_,
                                                   oldIndexes[i].column()));
    emit layoutChanged({}, VerticalSortHint);
}

void ListItems::sortAgain()
{
    if (sortColumn_ >= 0)
        orderBy();
}

std::vector<ListItem::Contents> ListItems::contents() const
{
    std::vector<ListItem::Contents> all;
    all.reserve(items_.size());
    for (const std::unique_ptr<ListItem>& item : items_)
        all.push_back(item->contents());
    return all;
}

void ListItems::swapItems(ListItems& other)
{
    beginResetModel();
    other.beginResetModel();
    items_.swap(other.items_);
    byKey_.swap(other.byKey_);
    for (ListItems* const list : {this, &other}) {
        for (const std::unique_ptr<ListItem>& item : list->items_)
            item->owner_ = list;
    }
    other.endResetModel();
    endResetModel();
}

int ListItems::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

int ListItems::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : std::max(1, static_cast<int>(columns_.size()));
}

QVariant ListItems::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ListItem& item = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return shownText(item, index.column());
    case Qt::TextAlignmentRole:
        if (index.column() < static_cast<int>(columns_.size()))
            return QVariant::fromValue(
                columns_[static_cast<std::size_t>(index.column())].alignment | Qt::AlignVCenter);
        return {};
    case KeyRole:
        return item.key();
    case IconRole:
        return index.column() == 0 ? item.icon() : 0;
    default:
        return {};
    }
}

Qt::ItemFlags ListItems::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QVariant ListItems::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= static_cast<int>(columns_.size()))
        return {};
    const ListColumn& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return column.header;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(column.alignment | Qt::AlignVCenter);
    return {};
}

QString ListItems::shownText(const ListItem& item, int column) const
{
    if (column == 0)
        return item.text();
    const ListItem::SubItem* const subItem =
        item.findSubItem(columns_.at(static_cast<std::size_t>(column)).key);
    return subItem ? subItem->text : QString();
}

void ListItems::itemChanged(const ListItem& item)
{
    emit dataChanged(index(item.row_, 0), index(item.row_, columnCount() - 1));
}

/// Tells the items from a position on where they are.
void ListItems::renumber(int first)
{
    for (int row = first; row < count(); ++row)
        at(row).row_ = row;
}

} // namespace platform
