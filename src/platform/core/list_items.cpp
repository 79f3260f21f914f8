#include "platform/core/list_items.h"

#include "platform/core/error.h"
#include "platform/core/text_filter.h"

#include <QCollator>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

void ListItem::setIcon(int icon)
{
    icon_ = icon;
    owner_->itemChanged(*this);
}

void ListItem::setText(const QString& text)
{
    text_ = text;
    searchText_ = QString();
    owner_->itemChanged(*this);
}

void ListItem::setKey(const QString& key)
{
    if (key == key_)
        return;
    if (owner_->byKey_.contains(key))
        throw Error(ErrorNumber::DuplicateKey, u"«%1» está repetido"_s.arg(key));
    owner_->byKey_.remove(key_);
    owner_->byKey_.insert(key, this);
    key_ = key;
}

const ListItem::SubItem* ListItem::findSubItem(const QString& key) const
{
    const auto found = std::find_if(subItems_.begin(), subItems_.end(),
                                    [&](const SubItem& subItem) { return subItem.key == key; });
    return found == subItems_.end() ? nullptr : &*found;
}

const QString& ListItem::subItem(const QString& key) const
{
    if (const SubItem* const found = findSubItem(key))
        return found->text;
    throw Error(ErrorNumber::NoSuchKey, u"«%1» no tiene el dato «%2»."_s.arg(text_, key));
}

void ListItem::setSubItem(const QString& key, const QString& text)
{
    if (const SubItem* const found = findSubItem(key))
        subItems_[static_cast<std::size_t>(found - subItems_.data())].text = text;
    else
        subItems_.push_back({key, text});
    searchText_ = QString();
    owner_->itemChanged(*this);
}

const QString& ListItem::searchText() const
{
    if (searchText_.isNull()) {
        QString all = text_ + u'\n';
        for (const SubItem& subItem : subItems_)
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
    if (byKey_.contains(key))
        throw Error(ErrorNumber::DuplicateKey, u"«%1» está repetido"_s.arg(key));
    const int row = count();
    beginInsertRows({}, row, row);
    items_.push_back(std::unique_ptr<ListItem>(new ListItem(*this, row, key, text)));
    byKey_.insert(key, items_.back().get());
    endInsertRows();
    return *items_.back();
}

ListItem* ListItems::findText(const QString& text)
{
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) {
        return item->text_.compare(text, Qt::CaseInsensitive) == 0;
    });
    return found == items_.end() ? nullptr : found->get();
}

void ListItems::remove(const ListItem& item)
{
    const int row = item.row_;
    beginRemoveRows({}, row, row);
    byKey_.remove(item.key_);
    items_.erase(items_.begin() + row);
    renumber();
    endRemoveRows();
}

void ListItems::clear()
{
    beginResetModel();
    byKey_.clear();
    items_.clear();
    endResetModel();
}

void ListItems::sortByColumn(int column)
{
    sortColumn_ = column;
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
        const QCollatorSortKey key = collator.sortKey(shownText(*item, column));
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
        sortByColumn(sortColumn_);
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
        return item.text_;
    const ListItem::SubItem* const subItem =
        item.findSubItem(columns_.at(static_cast<std::size_t>(column)).key);
    return subItem ? subItem->text : QString();
}

void ListItems::itemChanged(const ListItem& item)
{
    emit dataChanged(index(item.row_, 0), index(item.row_, columnCount() - 1));
}

void ListItems::renumber()
{
    int row = 0;
    for (const std::unique_ptr<ListItem>& item : items_)
        item->row_ = row++;
}

} // namespace platform
