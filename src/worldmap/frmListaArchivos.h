#pragma once

#include "app/file_look.h"
#include "platform/core/list_items.h"
#include "platform/forms/form.h"
#include "platform/gdi/image_list.h"
#include "ui_frmListaArchivos.h"

#include <QDateTime>

/// The file list dialog: shows the files of a folder and lets the user choose one. Callers set the
/// public variables, show it modally and read caminoArchivo. Only names are read of a folder; the
/// map that is selected is looked at in the background and shown beside the list.
class FrmListaArchivos final : public platform::Dialog<Ui::FrmListaArchivos>
{
public:
    QString camino;        ///< folder below AppFolder
    QString mascara;       ///< file pattern, such as "*.map"
    int icono = 0;         ///< position of every file's icon among imgArchivos
    QString caminoArchivo; ///< full path of the file chosen; empty when the user cancelled

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override { showPicture(); }
    void Form_Rejected() override { caminoArchivo.clear(); }

private:
    void listFiles();
    QString pathOf(const platform::ListItem& file) const;
    void showSelected();
    void showPicture();
    void look(const QString& path, const QDateTime& time);
    /// Takes the file selected, if there is one, and closes the dialog.
    void choose();

    platform::ListItems files_;
    platform::ImageList imgArchivos_;

    // What was looked at last, and when that file was written.
    QString lookedAt_;
    QDateTime lookedAtTime_;
    FileLook look_;
    bool isLooking_ = false;
};

FrmListaArchivos& frmListaArchivos();
