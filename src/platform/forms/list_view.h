#pragma once

#include "platform/core/list_items.h"
#include "platform/core/text_filter.h"
#include "platform/gdi/image_list.h"

#include <QElapsedTimer>
#include <QListView>
#include <QTreeView>

namespace platform {

/// A report list: shows a ListItems in columns, each row with its small icon. A click on a column's
/// header sorts the items by it. The lists shown must outlive the view.
class ListView : public QTreeView
{
    Q_OBJECT

public:
    explicit ListView(QWidget* parent = nullptr);
    void setItems(ListItems& items, const ImageList& icons);
    ListItem* selectedItem();
    void selectFirst();
    /// Selects one of the list's items and scrolls to it; a filter that hides it is dropped.
    void select(const ListItem& item);

    /// Hides the rows of the items that a filter doesn't let through. They stay in the list, and
    /// one of them selected.
    void setFilter(const TextFilter& filter);
    bool isFiltered() const { return !filter_.isEmpty(); }
    int hiddenRows() const { return hiddenRows_; }
    /// Whether the filter lets one of the list's items through.
    bool isShown(const ListItem& item) const;
    /// The row to be seen next below a row or, where there is none, next above it; -1 if that one
    /// is alone.
    int shownBeside(int row) const;
    /// Gives the list the focus, with the first of the rows to be seen selected if none of them is.
    void enterRows();
    /// Letters search the list, also where they are somebody's shortcuts.
    void keepLetters() { keepsLetters_ = true; }

    void reset() override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles = {}) override;

signals:
    /// A double click anywhere in the list, on a row or below them.
    void dblClick();
    /// There are other rows to be seen, or as many of other ones.
    void rowsShownChanged();
    /// The filter was taken away to show an item.
    void filterDropped();

protected:
    bool event(QEvent* event) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    void applyColumns();
    void filterRows(int first, int last);

    bool keepsLetters_ = false;
    ListItems* items_ = nullptr;
    std::size_t columnsApplied_ = 0;
    TextFilter filter_;
    int hiddenRows_ = 0;
};

/// Shows a ListItems as large icons with the text below.
class IconView : public QListView
{
    Q_OBJECT

public:
    explicit IconView(QWidget* parent = nullptr);
    void setItems(ListItems& items, const ImageList& icons);
    ListItem* selectedItem();
    /// Selects one of the list's items and scrolls to it.
    void select(const ListItem& item);
    /// The width of every cell, in pixels.
    int cellWidth() const { return cellWidth_; }
    void doItemsLayout() override;
    /// Goes to the next item that begins with what was typed without a pause, letter case and
    /// accents forgiven; a letter typed again goes from one of its items to the next.
    void keyboardSearch(const QString& typed) override;

signals:
    /// A double click anywhere in the list, on an item or beside them.
    void dblClick();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool goToBeginning(const QString& folded, int first);

    ListItems* items_ = nullptr;
    int cellWidth_ = 0;
    QString typed_;
    QElapsedTimer sinceTyped_;
};

} // namespace platform
