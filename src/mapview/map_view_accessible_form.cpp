#include "mapview/map_view_accessible_form.h"

#include "mapview/map_view_form.h"

#include <QAccessibleWidget>

namespace {

/// The cell that the keyboard, or the pointer, has come to.
class CellInterface final : public QAccessibleInterface
{
public:
    explicit CellInterface(MapView& view) : view_(&view) {}

    bool isValid() const override { return true; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(view_);
    }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QString text(QAccessible::Text what) const override
    {
        return what == QAccessible::Name ? view_->spokenText() : QString();
    }
    void setText(QAccessible::Text /*what*/, const QString& /*text*/) override {}
    QRect rect() const override
    {
        const QRect inView = view_->cellInWidget(view_->spokenCell());
        return {view_->mapToGlobal(inView.topLeft()), inView.size()};
    }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.focusable = true;
        state.focused = view_->hasFocus() && view_->cursor().has_value();
        return state;
    }

private:
    MapView* view_;
};

class MapViewInterface final : public QAccessibleWidget
{
public:
    explicit MapViewInterface(MapView& view)
        : QAccessibleWidget(&view, QAccessible::Table),
          cell_(QAccessible::registerAccessibleInterface(new CellInterface(view)))
    {
    }
    ~MapViewInterface() override { QAccessible::deleteAccessibleInterface(cell_); }
    MapViewInterface(const MapViewInterface&) = delete;
    MapViewInterface& operator=(const MapViewInterface&) = delete;

    // The cell stands before the children that the widget has.
    int childCount() const override { return QAccessibleWidget::childCount() + 1; }
    QAccessibleInterface* child(int index) const override
    {
        return index == 0 ? cell() : QAccessibleWidget::child(index - 1);
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        if (child == cell())
            return 0;
        const int index = QAccessibleWidget::indexOfChild(child);
        return index < 0 ? index : index + 1;
    }
    QAccessibleInterface* focusChild() const override
    {
        return cell()->state().focused ? cell() : QAccessibleWidget::focusChild();
    }

private:
    QAccessibleInterface* cell() const { return QAccessible::accessibleInterface(cell_); }

    QAccessible::Id cell_;
};

QAccessibleInterface* interfaceOf(const QString& /*key*/, QObject* object)
{
    auto* const view = qobject_cast<MapView*>(object);
    return view ? new MapViewInterface(*view) : nullptr;
}

} // namespace

void installMapViewAccessibility()
{
    QAccessible::installFactory(interfaceOf);
}
