#pragma once

#include <QLineEdit>

class QLabel;

namespace platform {

class ListView;

/// The box above a list that leaves only those rows in sight that hold every word typed into it,
/// and says how many. Esc empties it; Enter and the down arrow go to the rows.
class FilterBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit FilterBox(QWidget* parent = nullptr);
    /// Filters a list, which lives as long as the box. The label of the count is then named as the
    /// box is, with "lbl" in the place of "txt".
    void filter(ListView& list);
    /// Takes the focus; what is typed next replaces what it holds.
    void beginSearch();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showCount();
    void placeCount();

    ListView* list_ = nullptr;
    QLabel* count_;
};

} // namespace platform
