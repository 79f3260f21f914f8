#include "platform/forms/filter_box.h"

#include "platform/forms/list_view.h"

#include <QKeyEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int countGap = 4; // beside the count, in pixels

bool isRedo(const QKeyEvent& event)
{
    return event.keyCombination() == (Qt::CTRL | Qt::Key_Y);
}

bool isEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

FilterBox::FilterBox(QWidget* parent) : QLineEdit(parent), count_(new QLabel(this))
{
    setPlaceholderText(u"Filtrar…"_s);
    setClearButtonEnabled(true);
    count_->setForegroundRole(QPalette::PlaceholderText);
    count_->setAttribute(Qt::WA_TransparentForMouseEvents);
    count_->hide();
}

void FilterBox::filter(ListView& list)
{
    list_ = &list;
    setAccessibleName(u"Filtrar: "_s + list.accessibleName());
    count_->setObjectName(u"lbl"_s + objectName().sliced(3));
    connect(this, &QLineEdit::textChanged, &list,
            [&list](const QString& text) { list.setFilter(TextFilter(text)); });
    connect(&list, &ListView::filterDropped, this, &QLineEdit::clear);
    connect(&list, &ListView::rowsShownChanged, this, &FilterBox::showCount);
}

void FilterBox::beginSearch()
{
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

/// Keys that are the box's own while it has the focus, whatever they are to the window.
bool FilterBox::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (isRedo(key) || isEnter(key) || (key.key() == Qt::Key_Escape && !text().isEmpty())) {
            event->accept();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void FilterBox::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (text().isEmpty())
            event->ignore();
        else
            clear();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        list_->enterRows();
        break;
    default:
        if (isRedo(*event))
            redo();
        else
            QLineEdit::keyPressEvent(event);
    }
}

void FilterBox::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    placeCount();
}

void FilterBox::showCount()
{
    const int all = list_->model()->rowCount();
    count_->setText(u"%1 de %2"_s.arg(all - list_->hiddenRows()).arg(all));
    count_->setVisible(list_->isFiltered());
    placeCount();
}

/// The count stands before the button that empties the box.
void FilterBox::placeCount()
{
    const QSize size = count_->sizeHint();
    const int right = width() - height() - countGap;
    count_->setGeometry(right - size.width(), (height() - size.height()) / 2, size.width(),
                        size.height());
    setTextMargins(0, 0, list_ && list_->isFiltered() ? size.width() + 2 * countGap : 0, 0);
}

} // namespace platform
