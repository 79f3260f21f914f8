#pragma once

#include <QFrame>
#include <QString>
#include <vector>

class QAction;
class QBoxLayout;
class QLabel;

namespace platform {

/// A panel in the middle of a view that is still empty: a line, and buttons for what can be done.
class StartPanel : public QFrame
{
public:
    struct Button {
        QString name; ///< its object name
        QString text;
        QAction* command; ///< what it runs
    };

    explicit StartPanel(QWidget* parent = nullptr);
    /// The buttons come behind a control in the order of the Tab key.
    void offer(const QString& line, const std::vector<Button>& buttons, QWidget& before);
    /// Goes to the middle of an area of its parent, with the buttons side by side if there is room
    /// for that, and without the line if there is none for it.
    void standIn(const QRect& area);

    /// Enter and the space bar are a button's own while it has the focus, whatever they are to the
    /// window.
    bool eventFilter(QObject* button, QEvent* event) override;

private:
    QLabel* line_;
    QBoxLayout* buttons_;
};

} // namespace platform
