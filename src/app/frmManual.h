#pragma once

#include "platform/forms/form.h"
#include "ui_frmManual.h"

/// The manual that ships with the program: its pages, a list of them, the way back, and a box that
/// finds words in the page.
class FrmManual final : public platform::Form<Ui::FrmManual>
{
public:
    /// A page: the name of its file without ".md", and its title.
    struct Page {
        QString name;
        QString title;
    };
    /// All pages, as they are listed.
    static const std::vector<Page>& pages();

    /// Shows the page that tells of a window, by its object name. Over a dialog the manual can be
    /// read too.
    void showFor(const QString& window);

protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    void belongTo(const QWidget* dialog);
    void pageShown();
    void find(bool backwards);
};

FrmManual& frmManual();
