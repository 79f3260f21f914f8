#pragma once

#include <QFrame>
#include <QString>
#include <deque>
#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;

namespace platform {

/// A bar above a window's content that says what the user should know without asking for anything:
/// a text, up to two buttons, and one that takes the notice away. Several notices wait in line. The
/// bar is hidden while there is none.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    struct Button {
        QString name; ///< its object name
        QString text;
        std::function<void()> action; ///< run as a command of the user; the notice then goes
    };
    struct Notice {
        QString text;
        std::vector<Button> buttons{};
        QString about{}; ///< what it is about, if that isn't its text
        bool isSame(const Notice& other) const
        {
            return about == other.about && (!about.isEmpty() || text == other.text);
        }
    };

    explicit NoticeBar(QWidget* parent = nullptr);
    /// Shows a notice before those that are shown or wait; one that is the same gives way to it.
    void tell(const Notice& notice);
    /// The same for several, the first one in front.
    void tell(const QStringList& texts);
    /// The text shown; empty while the bar is hidden.
    QString text() const { return notices_.empty() ? QString() : notices_.front().text; }
    /// The bar's height when it is that wide, in pixels; 0 while it is hidden.
    int heightFor(int width) const;

signals:
    /// The bar came, went, or needs another height.
    void changed();

private:
    void show(const Notice& notice);
    void dismiss(const Notice& notice);

    QLabel* text_;
    QHBoxLayout* layout_;
    std::vector<QWidget*> buttons_;
    std::deque<Notice> notices_; ///< the first one is shown
};

} // namespace platform
