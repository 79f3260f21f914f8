#include "random_use.h"

#include "platform/forms/picture_box.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>
#include <iostream>

using namespace Qt::StringLiterals;

namespace {

/// Texts that boxes and files find hard, one after each "~".
const QString nasty = u"Peñón~Pen\u0303o\u0301n~a;b|c~¶~uno\r\ndos\n~😀 Ł→~\u00A0x\u00A0~"
                      "\t\u0001\u007F~Ã±~#~  ~\u2028y\u2029z~<b>&amp;</b>~%1%2%n~../a~"
                      "\uFEFF~«€‰Ÿ»~\u0081\u009D"_s;
constexpr int longText = 40000; // more than a line takes

} // namespace

QWidget* RandomUse::window(const QString& form)
{
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == form)
            return window;
    }
    return nullptr;
}

bool RandomUse::isOn(const QString& form, const QString& button)
{
    const auto* const action = in<QAction>(form, button);
    return action && action->isChecked();
}

void RandomUse::use(QWidget& form)
{
    if (auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        QAction* const command = anyOf(menu->actions());
        tell(*menu, command->objectName());
        menu->close();
        if (command->objectName() != u"moverLugar"_s) // it waits for a click
            command->trigger();
        usedKey(form);
        return;
    }
    form.activateWindow(); // as a click does; keys go to the active window's focus
    QCoreApplication::processEvents();
    QWidgetList controls;
    for (QWidget* const control : form.findChildren<QWidget*>()) {
        if (form.isMinimized() || !control->isVisible() || !control->isEnabled() ||
            control->visibleRegion().isEmpty() || control->objectName().startsWith(u"qt_"_s) ||
            (control->property("readOnly").toBool() && !oneIn(6)))
            continue;
        for (const char* const kind : {"QAbstractButton", "QAbstractItemView", "QLineEdit",
                                       "QPlainTextEdit", "QComboBox", "QTabBar"}) {
            if (control->inherits(kind))
                controls.append(control);
        }
        if (qobject_cast<platform::PictureBox*>(control))
            controls.append(QWidgetList(20, control));
        if (control->objectName().startsWith(u"cmdGuardar"_s))
            controls.append(QWidgetList(2, control));
    }
    QWidget* const control = oneIn(8) || controls.isEmpty() ? &form : anyOf(controls);
    if (control == &form) {
        useForm(form);
    } else if (auto* const button = qobject_cast<QAbstractButton*>(control)) {
        press(*button);
    } else if (auto* const header = qobject_cast<QHeaderView*>(control)) {
        const int section = below(std::max(1, header->count()));
        tell(*header->parentWidget(), u"column %1"_s.arg(section));
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(section) + 8, header->height() / 2});
    } else if (auto* const list = qobject_cast<QAbstractItemView*>(control)) {
        useList(*list);
    } else if (auto* const tabs = qobject_cast<QTabBar*>(control)) {
        const int tab = below(tabs->count());
        tell(*tabs, QString::number(tab));
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
    } else if (qobject_cast<platform::PictureBox*>(control)) {
        useMap(*control);
    } else if (qobject_cast<QComboBox*>(control)) {
        keyOf({Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End}, *control);
    } else {
        type(*control);
    }
}

void RandomUse::useForm(QWidget& form)
{
    const bool endsProgram =
        form.objectName() == u"frmMapa"_s || form.objectName() == u"frmPrinc"_s;
    const int what = form.isMinimized() ? 0 : below(6);
    if (what == 0) {
        tell(form, form.isMinimized() ? u"restore"_s : u"minimise"_s);
        form.isMinimized() ? form.showNormal() : form.showMinimized();
    } else if (what == 1) {
        const QPoint corner = pointIn({200, 150, 1400, 1000});
        tell(form, u"corner %1,%2"_s.arg(corner.x()).arg(corner.y()));
        form.resize(QSize(corner.x(), corner.y())
                        .expandedTo(form.minimumSize())
                        .boundedTo(form.maximumSize()));
    } else if (what == 2 && !endsProgram) {
        tell(form, u"close"_s);
        form.close();
    } else {
        QWidget* const focus = form.focusWidget();
        keyOf({Qt::Key_Escape, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Delete, Qt::Key_Tab},
              focus && focus->isVisible() ? *focus : form);
    }
}

void RandomUse::useList(QAbstractItemView& list)
{
    const int rows = list.model() ? list.model()->rowCount() : 0;
    if (oneIn(4) || rows == 0) {
        keyOf({Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete,
               Qt::Key_Escape, Qt::Key_End},
              list);
        return;
    }
    const QModelIndex index = list.model()->index(below(rows), 0);
    list.scrollTo(index);
    QPoint place = list.visualRect(index).topLeft() + QPoint(4, 8);
    if (oneIn(8))
        place = list.viewport()->rect().bottomRight() - QPoint(2, 2);
    const bool twice = oneIn(2);
    tell(list, list.indexAt(place).data().toString() + (twice ? u" twice"_s : u" once"_s));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    if (twice) {
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, place);
    }
}

void RandomUse::type(QWidget& box)
{
    const int what = below(8);
    if (what > 4)
        keyOf({Qt::CTRL | Qt::Key_A}, box);
    if (what > 3) {
        const QString text = u"Alb%1 x;|"_s.arg(below(40)).left(4 + below(6));
        tell(box, text);
        QTest::keyClicks(&box, text);
    } else if (what > 1) {
        const QString text = oneIn(20) ? QString(longText, u'w') : anyOf(nasty.split(u'~'));
        QGuiApplication::clipboard()->setText(text);
        tell(box, u"paste "_s + text.left(20));
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    } else {
        keyOf({Qt::CTRL | Qt::Key_A, Qt::CTRL | Qt::Key_Z, Qt::CTRL | Qt::Key_X,
               Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Home,
               Qt::Key_Escape, Qt::Key_Return},
              box);
    }
}

void RandomUse::keyOf(const QList<QKeyCombination>& keys, QWidget& control)
{
    const QKeyCombination key = anyOf(keys);
    control.setFocus();
    tell(control, QKeySequence(key).toString(QKeySequence::PortableText));
    const QWidget& form = *control.window();
    QTest::keyClick(&control, key.key(), key.keyboardModifiers());
    usedKey(form);
}

void RandomUse::press(QAbstractButton& button)
{
    const auto* const tool = qobject_cast<QToolButton*>(&button);
    const QAction* const action = tool ? tool->defaultAction() : nullptr;
    const QString form = button.window()->objectName();
    const QString name = button.objectName();
    tell(button, action ? action->objectName() : u"click"_s);
    QTest::mouseClick(&button, Qt::LeftButton);
    pressed(form, action ? action->objectName() : name);
}

void RandomUse::useMap(QWidget& map)
{
    const Qt::MouseButton button = oneIn(5) ? Qt::RightButton : Qt::LeftButton;
    QList<QPoint> way{pointIn(map.rect())};
    while (oneIn(2))
        way.append(pointIn(map.rect().adjusted(-60, -60, 60, 60)));
    const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButton which,
                          Qt::MouseButtons held) {
        QMouseEvent event(type, at, map.mapToGlobal(at), which, held, {});
        QCoreApplication::sendEvent(&map, &event);
    };
    QEvent::Type begin = QEvent::MouseButtonPress;
    do {
        QString told = button == Qt::LeftButton ? u"left"_s : u"right"_s;
        for (const QPoint point : way)
            told += u" %1,%2"_s.arg(point.x()).arg(point.y());
        tell(map, told);
        send(QEvent::MouseMove, way.front(), Qt::NoButton, {});
        send(begin, way.front(), button, button);
        for (const QPoint point : way.sliced(1))
            send(QEvent::MouseMove, point, Qt::NoButton, button);
        send(QEvent::MouseButtonRelease, way.back(), button, {});
        usedMap(map, way, button);
        begin = QEvent::MouseButtonDblClick;
    } while (way.size() == 1 && oneIn(6));
}

void RandomUse::tell(const QWidget& control, const QString& what)
{
    log_.append(control.window()->objectName() + u' ' +
                (control.isWindow() ? QString() : control.objectName() + u' ') + what);
    if (tells_)
        std::cerr << log_.size() << ": " << log_.back().left(200).toStdString() << std::endl;
}
