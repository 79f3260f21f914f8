#pragma once

#include "window_test.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <random>

/// A test that uses windows at random: clicks, drags, keys and pasted texts on every control that
/// can be seen. What must come of it is for the derived test to say. One seed gives one walk.
class RandomUse : public WindowTest
{
protected:
    /// A button was pressed; one of a toolbar is named by its key.
    virtual void pressed(const QString& form, const QString& button) = 0;
    /// A mouse button was pressed at the first of these points of a map and released at the last.
    virtual void usedMap(QWidget& map, const QList<QPoint>& way, Qt::MouseButton button) = 0;
    /// A key was pressed in a window, or a context menu used.
    virtual void usedKey(const QWidget& form) = 0;

    /// Does something with a window, or with one of its controls.
    void use(QWidget& form);

    // The choices of the walk.
    int below(int bound) { return static_cast<int>(engine_() % static_cast<unsigned>(bound)); }
    bool oneIn(int many) { return below(many) == 0; }
    template <typename Item>
    Item anyOf(const QList<Item>& list)
    {
        return list[below(static_cast<int>(list.size()))];
    }
    QPoint pointIn(QRect area)
    {
        const int x = below(area.width());
        return area.topLeft() + QPoint(x, below(area.height()));
    }

    // Windows and controls, by their names.
    static QWidget* window(const QString& form);
    static bool isShown(const QString& form) { return window(form) && window(form)->isVisible(); }
    template <typename Control = QWidget>
    static Control* in(const QString& form, const QString& name)
    {
        QWidget* const found = window(form);
        return found ? found->findChild<Control*>(name) : nullptr;
    }
    static bool isOn(const QString& form, const QString& button);

    std::mt19937 engine_;
    QStringList log_;    ///< window, control, and what was done there
    bool tells_ = false; ///< each step, before it is done

private:
    void useForm(QWidget& form);
    void useList(QAbstractItemView& list);
    void useMap(QWidget& map);
    void type(QWidget& box);
    void press(QAbstractButton& button);
    void keyOf(const QList<QKeyCombination>& keys, QWidget& control);
    void tell(const QWidget& control, const QString& what);
};
