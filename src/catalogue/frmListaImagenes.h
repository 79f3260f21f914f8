#pragma once

#include "platform/core/list_items.h"
#include "platform/forms/form.h"
#include "platform/gdi/image_list.h"
#include "ui_frmListaImagenes.h"

#include <QLineEdit>
#include <QPointer>

/// Lets the user choose a picture of a folder by a double click or Enter, which writes its path
/// into a text box. Callers set the variables, call listImages and show the window.
class FrmListaImagenes final : public platform::Form<Ui::FrmListaImagenes>
{
public:
    QString camino;                     ///< the folder, relative to AppFolder: "ini\pics\armas"
    QString mascara;                    ///< the pattern of the files: "*.gif"
    QPointer<QLineEdit> controlDestino; ///< receives the path

    /// Lists the folder's pictures and selects the one that the text box names. Files that can't be
    /// read are left out and named in the window's status line.
    void listImages();

protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    void lvListaImagenes_DblClick();
    void tellSkipped(const QStringList& names);
    void selectCurrent();
    QString pathOf(const platform::ListItem& picture) const;

    platform::ListItems images_;
    platform::ImageList imgImagenes_;
};

FrmListaImagenes& frmListaImagenes();
