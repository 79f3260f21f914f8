#include "platform/forms/list_view.h"

#include "platform/forms/picture_box.h"
#include "platform/forms/twips.h"

#include <QHash>
#include <QHeaderView>
#include <QHelpEvent>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

// Room for an icon and up to four lines of text, in pixels.
constexpr int iconCellWidth = 112;
constexpr int iconCellHeight = 92;

QImage transparentPicture()
{
    QImage picture(ListView::smallIconSize, ListView::smallIconSize, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    return picture;
}

/// Draws an item's picture, which the list knows only by its position, before its text.
class IconDelegate final : public QStyledItemDelegate
{
public:
    IconDelegate(const ImageList& pictures, QAbstractItemView* view)
        : QStyledItemDelegate(view),
          view_(view),
          pictures_(&pictures)
    {
    }

    /// Shows the whole text of a cell that is too narrow for it.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (event->type() != QEvent::ToolTip || !index.isValid())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const bool elided = sizeHint(option, index).width() > view->visualRect(index).width();
        const QString text = index.data().toString();
        QToolTip::showText(event->globalPos(), elided ? Qt::convertFromPlainText(text) : QString(),
                           view);
        return true;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text.replace(QChar::LineSeparator, u' '); // a row is one line high
        if (option->displayAlignment & Qt::AlignRight)    // a number without its end is another one
            option->textElideMode = Qt::ElideLeft;
        if (index.column() != 0)
            return;
        // An item without a picture keeps its place free, so that the texts stand in one line.
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = iconAt(index.data(ListItems::IconRole).toInt());
        option->decorationSize = view_->iconSize();
    }

private:
    const QIcon& iconAt(int position) const
    {
        QImage picture = pictures_->at(position);
        if (picture.isNull())
            picture = nothing_;
        const auto known = icons_.find(picture.cacheKey());
        return known != icons_.end() ? *known
                                     : *icons_.insert(picture.cacheKey(), pixelIcon({picture}));
    }

    QAbstractItemView* view_;
    const ImageList* pictures_;
    const QImage nothing_ = transparentPicture();
    mutable QHash<qint64, QIcon> icons_; // by the picture's cache key; pictures never change
};

/// A header whose texts end in "…" where they don't fit. Qt's own eliding leaves out right-aligned
/// texts, which lose their beginning then.
class ElidingHeader final : public QHeaderView
{
public:
    explicit ElidingHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override
    {
        QHeaderView::initStyleOptionForIndex(option, section);
        const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, option, this);
        option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight,
                                                      sectionSize(section) - 2 * margin);
    }
};

ListItem* selectedItemOf(const QAbstractItemView& view, ListItems* items)
{
    const QModelIndexList rows =
        view.selectionModel() ? view.selectionModel()->selectedRows() : QModelIndexList();
    return rows.isEmpty() ? nullptr : &items->at(rows.first().row());
}

void attach(QAbstractItemView& view, ListItems& items, const ImageList& icons)
{
    view.setModel(&items);
    QAbstractItemDelegate* const previous = view.itemDelegate();
    view.setItemDelegate(new IconDelegate(icons, &view));
    delete previous;
}

} // namespace

ListView::ListView(QWidget* parent) : QTreeView(parent)
{
    setHeader(new ElidingHeader(this));
    // The columns' widths were chosen for this font, or for one as narrow.
    QFont narrow = font();
    narrow.setFamily(u"MS Sans Serif"_s);
    setFont(narrow);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setIconSize({smallIconSize, smallIconSize});
    setEditTriggers(NoEditTriggers);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(false);
    connect(header(), &QHeaderView::sectionClicked, this, [this](int column) {
        if (items_)
            items_->sortByColumn(column);
        // The arrow that the style draws for "descending" is the one that stands for ascending
        // here: it points up.
        header()->setSortIndicator(column, Qt::DescendingOrder);
        header()->setSortIndicatorShown(true);
    });
}

void ListView::setItems(ListItems& items, const ImageList& icons)
{
    items_ = &items;
    attach(*this, items, icons);
    applyColumns();
    connect(&items, &QAbstractItemModel::modelReset, this, &ListView::applyColumns);
}

void ListView::applyColumns()
{
    const std::vector<ListColumn>& columns = items_->columns();
    if (columnsApplied_ == columns.size()) // emptied and filled again: the user's widths stay
        return;
    columnsApplied_ = columns.size();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i)
        header()->resizeSection(i, pixelsFromTwips(columns[static_cast<std::size_t>(i)].width));
}

ListItem* ListView::selectedItem()
{
    return selectedItemOf(*this, items_);
}

void ListView::selectFirst()
{
    if (items_ && !items_->isEmpty())
        setCurrentIndex(items_->index(0, 0));
}

IconView::IconView(QWidget* parent) : QListView(parent)
{
    setViewMode(IconMode);
    setIconSize({largeIconSize, largeIconSize});
    setResizeMode(Adjust);
    setMovement(Static);
    setGridSize({iconCellWidth, iconCellHeight});
    setWordWrap(true);
    setEditTriggers(NoEditTriggers);
}

void IconView::setItems(ListItems& items, const ImageList& icons)
{
    items_ = &items;
    attach(*this, items, icons);
}

ListItem* IconView::selectedItem()
{
    return selectedItemOf(*this, items_);
}

void IconView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListView::mouseDoubleClickEvent(event);
    emit dblClick();
}

} // namespace platform
