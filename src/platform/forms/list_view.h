#pragma once

#include "platform/core/list_items.h"
#include "platform/gdi/image_list.h"

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
    /// Selects one of the list's items and scrolls to it.
    void select(const ListItem& item);

signals:
    /// A double click anywhere in the list, on a row or below them.
    void dblClick();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    void applyColumns();
    ListItems* items_ = nullptr;
    std::size_t columnsApplied_ = 0;
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

signals:
    /// A double click anywhere in the list, on an item or beside them.
    void dblClick();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    ListItems* items_ = nullptr;
    int cellWidth_ = 0;
};

} // namespace platform
