#pragma once

#include "exchange/export_preview.h"
#include "exchange/export_task.h"
#include "platform/forms/form.h"
#include "ui_frmExportar.h"

#include <QTimer>
#include <array>

/// What a map window has to export.
struct ExportSource {
    const WorldMap& map;
    QString file;                   ///< the map's own; empty if it has none
    std::optional<QRect> selection; ///< cells
    QRect seen;                     ///< the cells in the view
    ExportOptions layers;           ///< what lies over the view
};

/// The dialog that exports a map: in which format, to which file, with which options. It shows the
/// first sheet or picture, and how far the work has come.
class FrmExportar final : public platform::Dialog<Ui::FrmExportar>
{
public:
    /// Offers a map. Returns what the user is to be told of what was exported; nothing if it
    /// wasn't.
    QStringList offer(const ExportSource& source);

    /// The options that are chosen, as the dialog's controls have them.
    ExportOptions options();

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Rejected() override { forget(); }
    void closeBox() override { dialog().reject(); }

private:
    /// An option of the command line, and the controls it is chosen by.
    struct Choice {
        QString option;
        std::vector<QWidget*> controls;
    };
    std::vector<Choice> choices();
    const MapFormat& format();
    void offerZones(const ExportSource& source);
    void showFormat();
    void chooseFile();
    QString target();
    ExportedMap& map(bool isForPlayers);

    void showPreviewSoon();
    void showPreview();
    void cmdExportar_Click();
    void cmdCancelar_Click();
    void setWorking(bool isWorking);
    void forget();

    const WorldMap* map_ = nullptr; ///< while it is offered
    QString mapFile_;
    QString suffix_; ///< of the format shown
    /// As it is for the game master and for players, once they are wanted.
    std::array<std::unique_ptr<ExportedMap>, 2> maps_;
    std::unique_ptr<ExportTask> preview_;
    std::unique_ptr<ExportTask> export_;
    std::unique_ptr<QTimer> rest_;     ///< before a preview is drawn
    std::unique_ptr<QTimer> progress_; ///< while something is exported
    QStringList told_;
};

FrmExportar& frmExportar();
