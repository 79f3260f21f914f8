#include "platform/forms/list_view.h"

#include "platform/forms/application.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/twips.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

// The cells of a list of icons, in pixels.
constexpr int narrowestCell = 96;
constexpr int widestCell = 200;
constexpr int cellMargin = 4;

constexpr qsizetype longestTip = 2000;

bool beginsWithNumber(const QString& text)
{
    const bool hasSign = text.startsWith(u'-') || text.startsWith(u'+');
    return text.size() > hasSign && text[hasSign ? 1 : 0].isDigit();
}

/// Draws an item's picture, which the list knows only by its position, before its text or above it.
class IconDelegate final : public QStyledItemDelegate
{
public:
    IconDelegate(const ImageList& pictures, QAbstractItemView* view)
        : QStyledItemDelegate(view),
          view_(view),
          pictures_(&pictures)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const int position = index.data(ListItems::IconRole).toInt();
        if (position == 0)
            return;
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QRect place =
            view_->style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &cell, view_);
        drawPicture(*painter, place, pictures_->at(position));
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto* const icons = qobject_cast<const IconView*>(view_);
        if (!icons)
            return QStyledItemDelegate::sizeHint(option, index);
        const QRect room(0, 0, icons->cellWidth() - 2 * cellMargin, icons->height());
        const QRect text = option.fontMetrics.boundingRect(
            room, Qt::AlignHCenter | Qt::TextWordWrap, index.data().toString());
        return {icons->cellWidth(), view_->iconSize().height() + text.height() + 3 * cellMargin};
    }

    /// Shows the whole text of a cell that is too narrow for it.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (event->type() != QEvent::ToolTip || !index.isValid())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const QString text = index.data().toString();
        const bool isCut =
            QStyledItemDelegate::sizeHint(option, index).width() > view->visualRect(index).width();
        // As markup that stands for plain text, so that it is wrapped.
        const QString tip = Qt::convertFromPlainText(text.left(longestTip), Qt::WhiteSpaceNormal);
        QToolTip::showText(event->globalPos(), isCut ? tip : QString(), view);
        return true;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text.replace(QChar::LineSeparator, u' '); // a row is one line high
        if (option->displayAlignment & Qt::AlignRight && beginsWithNumber(option->text))
            option->textElideMode = Qt::ElideMiddle; // without its end it is another number
        if (index.column() != 0)
            return;
        // An item without a picture keeps its place free, so that the texts stand in one line.
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = view_->iconSize();
    }

private:
    QAbstractItemView* view_;
    const ImageList* pictures_;
};

/// A header whose texts end in "…" where they don't fit. Qt's own eliding leaves out right-aligned
/// texts, which lose their beginning then. The arrow of the sorted column has a place of its own,
/// at the end where its text doesn't begin.
class ElidingHeader final : public QHeaderView
{
public:
    explicit ElidingHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override
    {
        QHeaderView::initStyleOptionForIndex(option, section);
        option->sortIndicator = QStyleOptionHeader::None; // the style's arrow covers the text
        const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, option, this);
        const int room = sectionSize(section) - 2 * margin - (isSorted(section) ? arrowWidth : 0);
        option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight, room);
    }

    void paintSection(QPainter* painter, const QRect& rect, int section) const override
    {
        painter->save();
        QHeaderView::paintSection(painter, rect, section);
        painter->restore();
        if (!isSorted(section))
            return;
        const auto alignment = Qt::Alignment(
            model()->headerData(section, orientation(), Qt::TextAlignmentRole).toInt());
        const int left = alignment & Qt::AlignRight ? rect.left() + arrowMargin
                                                    : rect.right() - arrowMargin - arrowWidth;
        const QPoint tip(left + arrowWidth / 2, rect.center().y() - arrowHeight / 2);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(palette().buttonText());
        painter->drawPolygon(QPolygon({tip, tip + QPoint(arrowHeight, arrowHeight),
                                       tip + QPoint(-arrowHeight, arrowHeight)}));
        painter->restore();
    }

private:
    static constexpr int arrowHeight = 4;
    static constexpr int arrowWidth = 2 * arrowHeight;
    static constexpr int arrowMargin = 2;

    bool isSorted(int section) const
    {
        return isSortIndicatorShown() && sortIndicatorSection() == section;
    }
};

ListItem* selectedItemOf(const QAbstractItemView& view, ListItems* items)
{
    const QModelIndexList rows =
        view.selectionModel() ? view.selectionModel()->selectedRows() : QModelIndexList();
    return rows.isEmpty() ? nullptr : &items->at(rows.first().row());
}

void selectIn(QAbstractItemView& view, const ListItems& items, const ListItem& item)
{
    const QModelIndex row = items.index(items.positionOf(item), 0);
    view.setCurrentIndex(row);
    view.scrollTo(row);
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
            runCommand([&] { items_->sortByColumn(column); });
        header()->setSortIndicator(column, Qt::AscendingOrder);
        header()->setSortIndicatorShown(true);
    });
}

void ListView::setItems(ListItems& items, const ImageList& icons)
{
    items_ = &items;
    attach(*this, items, icons);
    applyColumns();
    connect(&items, &QAbstractItemModel::modelReset, this, &ListView::applyColumns);
    connect(&items, &QAbstractItemModel::rowsRemoved, this, &ListView::rowsShownChanged);
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

void ListView::select(const ListItem& item)
{
    if (!isShown(item)) {
        setFilter({});
        emit filterDropped();
    }
    selectIn(*this, *items_, item);
}

bool ListView::isShown(const ListItem& item) const
{
    return !isRowHidden(items_->positionOf(item), {});
}

void ListView::setFilter(const TextFilter& filter)
{
    filter_ = filter;
    filterRows(0, items_->count() - 1);
}

void ListView::filterRows(int first, int last)
{
    for (int row = first; row <= last; ++row) {
        const bool hides = isFiltered() && !filter_.matches(items_->at(row).searchText());
        if (hides == isRowHidden(row, {}))
            continue;
        setRowHidden(row, {}, hides);
        hiddenRows_ += hides ? 1 : -1;
    }
    emit rowsShownChanged();
}

int ListView::shownBeside(int row) const
{
    int above = -1;
    for (int other = 0; other < items_->count(); ++other) {
        if (other == row || isRowHidden(other, {}))
            continue;
        if (other > row)
            return other;
        above = other;
    }
    return above;
}

void ListView::enterRows()
{
    setFocus();
    const ListItem* const selected = selectedItem();
    if (selected && isShown(*selected))
        return;
    if (const int first = shownBeside(-1); first != -1)
        select(items_->at(first));
}

void ListView::reset()
{
    QTreeView::reset(); // shows all rows
    hiddenRows_ = 0;
    filterRows(0, isFiltered() ? items_->count() - 1 : -1);
}

void ListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                           const QList<int>& roles)
{
    QTreeView::dataChanged(topLeft, bottomRight, roles);
    if (isFiltered())
        filterRows(topLeft.row(), bottomRight.row());
}

bool ListView::event(QEvent* event)
{
    if (keepsLetters_ && event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool isPlain = (key.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
        if (isPlain && !key.text().isEmpty() && key.text().front().isLetter()) {
            event->accept();
            return true;
        }
    }
    return QTreeView::event(event);
}

void ListView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    if (isFiltered())
        filterRows(start, end);
}

void ListView::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end)
{
    for (int row = start; row <= end; ++row)
        hiddenRows_ -= isRowHidden(row, parent) ? 1 : 0;
    QTreeView::rowsAboutToBeRemoved(parent, start, end);
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit dblClick();
}

/// A click below the rows leaves the selected one selected.
QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const
{
    return index.isValid() ? QTreeView::selectionCommand(index, event)
                           : QItemSelectionModel::NoUpdate;
}

IconView::IconView(QWidget* parent) : QListView(parent)
{
    setViewMode(IconMode);
    setIconSize({largeIconSize, largeIconSize});
    setResizeMode(Adjust);
    setMovement(Static);
    setWordWrap(true);
    setEditTriggers(NoEditTriggers);
}

/// Cells as wide as the longest word, so that names can be read whole.
void IconView::doItemsLayout()
{
    int widest = narrowestCell;
    for (int i = 0; items_ && i < items_->count(); ++i) {
        for (const QString& word : items_->at(i).text().split(u' '))
            widest = std::max(widest, fontMetrics().horizontalAdvance(word) + 4 * cellMargin);
    }
    cellWidth_ = std::min(widest, widestCell);
    QListView::doItemsLayout();
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

void IconView::select(const ListItem& item)
{
    selectIn(*this, *items_, item);
}

void IconView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit dblClick();
}

/// A key that moves selects, also where it finds the current item unselected and stays there.
void IconView::keyPressEvent(QKeyEvent* event)
{
    QListView::keyPressEvent(event);
    const bool moves = event->key() >= Qt::Key_Home && event->key() <= Qt::Key_PageDown;
    if (moves && currentIndex().isValid() && !selectedItem())
        setCurrentIndex(currentIndex());
}

void IconView::keyboardSearch(const QString& typed)
{
    const bool goesOn =
        sinceTyped_.isValid() && !sinceTyped_.hasExpired(QApplication::keyboardInputInterval());
    sinceTyped_.start();
    typed_ = goesOn ? typed_ + typed : typed;
    const int current = currentIndex().row();
    const QString folded = foldText(typed_);
    if (!items_ || folded.isEmpty())
        return;
    if (!goToBeginning(folded, goesOn ? current : current + 1) &&
        folded == QString(folded.size(), folded[0]))
        goToBeginning(folded.left(1), current + 1);
}

/// Selects the first item that begins so, from a position on and round to it, if there is one.
bool IconView::goToBeginning(const QString& folded, int first)
{
    const int count = items_->count();
    for (int i = 0; i < count; ++i) {
        const ListItem& item = items_->at((std::max(first, 0) + i) % count);
        if (item.searchText().startsWith(folded)) {
            select(item);
            return true;
        }
    }
    return false;
}

} // namespace platform
