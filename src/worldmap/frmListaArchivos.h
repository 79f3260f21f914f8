#pragma once

#include "platform/forms/form.h"
#include "platform/forms/list_view.h"
#include "ui_frmListaArchivos.h"

/// The file list dialog: shows the files of a folder and lets the user choose one. Callers set the
/// public variables, show it modally and read caminoArchivo.
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
    void Form_Rejected() override { caminoArchivo.clear(); }

private:
    void listFiles();
    /// Takes the file selected, if there is one, and closes the dialog.
    void choose();

    platform::ListItems files_;
    platform::ImageList imgArchivos_;
};

FrmListaArchivos& frmListaArchivos();
