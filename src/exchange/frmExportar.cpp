#include "exchange/frmExportar.h"

#include "app/workspace.h"
#include "exchange/export_target.h"
#include "platform/core/app_folder.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "worldmap/map_file.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

using platform::MsgBox::Answer;

namespace {

constexpr int restMilliseconds = 150; // of the hand, before a preview
constexpr int feltMilliseconds = 500; // from which on progress is shown
constexpr int progressMilliseconds = 50;

/// The folder that exports go to unless another is chosen.
QString usualFolder()
{
    return platform::inAppFolder(u"exportado"_s);
}

/// A path that the user wrote: it may be relative to AppFolder.
QString wholePath(const QString& text)
{
    return QDir::cleanPath(
        QDir(platform::appFolder()).absoluteFilePath(QDir::fromNativeSeparators(text)));
}

} // namespace

FrmExportar& frmExportar()
{
    return platform::FormRegistry::shared<FrmExportar>();
}

void FrmExportar::Form_Load()
{
    Ui::FrmExportar& controls = ui();
    for (const MapFormat& format : mapFormats())
        controls.cmbFormato->addItem(u"%1 (.%2)"_s.arg(format.name, format.suffix), format.suffix);
    for (const auto& [text, paper] :
         {std::pair(u"A4"_s, Paper::A4), std::pair(u"A3"_s, Paper::A3),
          std::pair(u"Carta"_s, Paper::Letter), std::pair(u"Una sola página"_s, Paper::One)})
        controls.cmbPapel->addItem(text, static_cast<int>(paper));
    controls.txtEscala->setMaximum(maxScale);
    controls.txtMm->setLocale(QLocale(QLocale::Spanish));
    controls.txtMm->setRange(leastRowMillimetres, mostRowMillimetres);
    controls.txtMm->setValue(ExportOptions().rowMillimetres);
    controls.chkLeyenda->setChecked(true);

    rest_ = std::make_unique<QTimer>();
    rest_->setSingleShot(true);
    rest_->setInterval(restMilliseconds);
    progress_ = std::make_unique<QTimer>();
    progress_->setInterval(progressMilliseconds);
    QObject::connect(rest_.get(), &QTimer::timeout, &window(), [this] { showPreview(); });
    QObject::connect(progress_.get(), &QTimer::timeout, &window(), [this] {
        constexpr double thousand = 1000;
        if (export_)
            ui().pbProgreso->setValue(static_cast<int>(export_->share() * thousand));
    });

    QObject::connect(controls.cmbFormato, &QComboBox::currentIndexChanged, &window(),
                     [this] { showFormat(); });
    for (QComboBox* const box : {controls.cmbZona, controls.cmbPapel})
        QObject::connect(box, &QComboBox::currentIndexChanged, &window(),
                         [this] { showPreviewSoon(); });
    for (const Choice& choice : choices()) {
        for (QWidget* const control : choice.controls) {
            if (auto* const box = qobject_cast<QCheckBox*>(control))
                QObject::connect(box, &QCheckBox::toggled, &window(),
                                 [this] { showPreviewSoon(); });
        }
    }
    QObject::connect(controls.txtEscala, &QSpinBox::valueChanged, &window(),
                     [this] { showPreviewSoon(); });
    QObject::connect(controls.txtMm, &QDoubleSpinBox::valueChanged, &window(),
                     [this] { showPreviewSoon(); });
    const auto onClick = [this](const QPushButton* button, auto handler) {
        QObject::connect(button, &QPushButton::clicked, &window(),
                         [this, handler] { platform::runCommand([&] { (this->*handler)(); }); });
    };
    onClick(controls.cmdExaminar, &FrmExportar::chooseFile);
    onClick(controls.cmdExportar, &FrmExportar::cmdExportar_Click);
    onClick(controls.cmdCancelar, &FrmExportar::cmdCancelar_Click);
}

std::vector<FrmExportar::Choice> FrmExportar::choices()
{
    Ui::FrmExportar& controls = ui();
    return {{u"escala"_s, {controls.lblEscala, controls.txtEscala}},
            {u"zona"_s, {controls.lblZona, controls.cmbZona}},
            {u"papel"_s, {controls.lblPapel, controls.cmbPapel}},
            {u"mm"_s, {controls.lblMm, controls.txtMm}},
            {u"apaisado"_s, {controls.chkApaisado}},
            {u"rejilla"_s, {controls.chkRejilla}},
            {u"coordenadas"_s, {controls.chkCoordenadas}},
            {u"nombres"_s, {controls.chkNombres}},
            {u"clima"_s, {controls.chkClima}},
            {u"habitantes"_s, {controls.chkHabitantes}},
            {u"barra-escala"_s, {controls.chkBarraEscala}},
            {u"leyenda"_s, {controls.chkLeyenda}},
            {u"jugadores"_s, {controls.chkJugadores}},
            {u"carpeta"_s, {controls.chkCarpeta}}};
}

QStringList FrmExportar::offer(const ExportSource& source)
{
    Ui::FrmExportar& controls = ui();
    told_.clear();
    map_ = nullptr; // nothing to show while the controls are filled
    mapFile_ = source.file;
    offerZones(source);
    controls.chkRejilla->setChecked(source.layers.hasGrid);
    controls.chkCoordenadas->setChecked(source.layers.hasNumbers);
    controls.chkNombres->setChecked(source.layers.hasNames);
    controls.chkClima->setChecked(source.layers.hasClimate);
    controls.chkHabitantes->setChecked(source.layers.hasInhabitants);
    controls.chkBarraEscala->setChecked(source.layers.hasScaleBar);
    map_ = &source.map;
    suffix_ = format().suffix;
    controls.txtArchivo->setText(platform::displayPath(
        usualFolder() + u'/' + asMapName(source.map.nombre) + u'.' + suffix_));
    setWorking(false);
    showFormat();
    controls.cmbFormato->setFocus();
    showModal();
    forget();
    return told_;
}

void FrmExportar::offerZones(const ExportSource& source)
{
    QComboBox& box = *ui().cmbZona;
    box.clear();
    box.addItem(u"Todo el mapa"_s);
    if (source.selection)
        box.addItem(u"Lo seleccionado"_s, *source.selection);
    box.addItem(u"Lo que se ve"_s, source.seen);
    if (source.selection)
        box.setCurrentIndex(1);
}

const MapFormat& FrmExportar::format()
{
    return *mapFormat(ui().cmbFormato->currentData().toString());
}

ExportOptions FrmExportar::options()
{
    Ui::FrmExportar& controls = ui();
    const auto isOn = [](const QCheckBox* box) { return box->isChecked() && box->isEnabled(); };
    ExportOptions options;
    options.scale = controls.txtEscala->value();
    if (const QVariant zone = controls.cmbZona->currentData();
        zone.isValid() && controls.cmbZona->isEnabled())
        options.zone = zone.toRect();
    options.hasGrid = isOn(controls.chkRejilla);
    options.hasNumbers = isOn(controls.chkCoordenadas);
    options.hasNames = isOn(controls.chkNombres);
    options.hasClimate = isOn(controls.chkClima);
    options.hasInhabitants = isOn(controls.chkHabitantes);
    options.hasScaleBar = isOn(controls.chkBarraEscala);
    options.hasKey = isOn(controls.chkLeyenda);
    options.paper = static_cast<Paper>(controls.cmbPapel->currentData().toInt());
    options.isLandscape = isOn(controls.chkApaisado);
    options.rowMillimetres = controls.txtMm->value();
    options.isForPlayers = isOn(controls.chkJugadores);
    options.isFolder = isOn(controls.chkCarpeta);
    return options;
}

/// The options follow the format, and so does the end of the file's name.
void FrmExportar::showFormat()
{
    for (const Choice& choice : choices()) {
        for (QWidget* const control : choice.controls)
            control->setEnabled(format().heeds(choice.option));
    }
    QString file = ui().txtArchivo->text();
    if (const QString end = u'.' + suffix_; file.endsWith(end, Qt::CaseInsensitive))
        file.chop(end.size());
    suffix_ = format().suffix;
    ui().txtArchivo->setText(file + u'.' + suffix_);
    showPreviewSoon();
}

void FrmExportar::chooseFile()
{
    QDir().mkpath(usualFolder());
    QFileDialog chooser(&dialog(), u"Exportar"_s, wholePath(ui().txtArchivo->text()),
                        u"%1 (*.%2)"_s.arg(format().name, format().suffix));
    chooser.setObjectName(u"dlgArchivo"_s);
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    chooser.setOption(QFileDialog::DontConfirmOverwrite); // asked when it is exported
    chooser.setDefaultSuffix(format().suffix);
    chooser.selectFile(QFileInfo(wholePath(ui().txtArchivo->text())).fileName());
    if (chooser.exec() == QDialog::Accepted && !chooser.selectedFiles().isEmpty())
        ui().txtArchivo->setText(platform::displayPath(chooser.selectedFiles().constFirst()));
}

/// The file to be written. Throws Error.
QString FrmExportar::target()
{
    const auto fail = [](const QString& reason) {
        return platform::Error(platform::ErrorNumber::BadName, reason);
    };
    const QString text = ui().txtArchivo->text().trimmed();
    if (text.isEmpty())
        throw fail(u"Escriba el nombre del archivo."_s);
    QString path = wholePath(text);
    const QString suffix = QFileInfo(path).suffix();
    if (mapFormat(suffix) && mapFormat(suffix) != &format())
        throw fail(
            u"«%1» acaba en «.%2», pero el formato es «.%3»."_s.arg(text, suffix, format().suffix));
    if (suffix.compare(format().suffix, Qt::CaseInsensitive) != 0)
        path += u'.' + format().suffix;
    return path;
}

ExportedMap& FrmExportar::map(bool isForPlayers)
{
    std::unique_ptr<ExportedMap>& made = maps_.at(isForPlayers ? 1 : 0);
    if (!made)
        made = std::make_unique<ExportedMap>(*map_, workspace().tiles, workspace().pins,
                                             workspace().pictures, isForPlayers);
    return *made;
}

void FrmExportar::Form_Resize()
{
    showPreviewSoon();
}

void FrmExportar::showPreviewSoon()
{
    if (map_ && !export_)
        rest_->start();
}

void FrmExportar::showPreview()
{
    if (!map_ || export_)
        return;
    preview_.reset(); // what was being drawn isn't wanted any more
    const ExportOptions chosen = options();
    const auto drawn = std::make_shared<ExportPreview>();
    preview_ = std::make_unique<ExportTask>([&exported = map(chosen.isForPlayers),
                                             &format = format(), chosen, drawn,
                                             room = ui().imgVista->room()](const Advance& advance) {
        *drawn = exportPreview(format, exported, chosen, room, advance);
    });
    QObject::connect(preview_.get(), &ExportTask::done, &window(), [this, drawn] {
        ui().imgVista->setPicture(drawn->picture);
        ui().lblResultado->setText(preview_->isComplete() ? drawn->text : preview_->problem());
    });
}

void FrmExportar::cmdExportar_Click()
{
    if (export_)
        return;
    ui().txtMm->interpretText(); // they may be half typed
    ui().txtEscala->interpretText();
    const QString path = target();
    if (QFileInfo(path).dir() == QDir(usualFolder()))
        QDir().mkpath(usualFolder());
    checkExportTarget(path, mapFile_);
    if (QFileInfo::exists(path) &&
        platform::MsgBox::show(
            u"Ya existe «%1». ¿Quiere reemplazarlo?"_s.arg(platform::displayPath(path)),
            u"Pregunta"_s, platform::MsgBox::Icon::Question,
            platform::MsgBox::Buttons::YesNo) != Answer::Yes)
        return;
    rest_->stop();
    preview_.reset(); // which has the map's picture in hand
    const ExportOptions chosen = options();
    const auto notices = std::make_shared<QStringList>();
    export_ =
        std::make_unique<ExportTask>([&exported = map(chosen.isForPlayers), &format = format(),
                                      chosen, path, notices](const Advance& advance) {
            ExportFiles files(path);
            format.write(files, exported, chosen, advance);
            advance(1);
            *notices = files.finish();
        });
    setWorking(true);
    QObject::connect(export_.get(), &ExportTask::done, &window(), [this, path, notices] {
        ExportTask* const task = export_.release();
        task->deleteLater(); // it is just speaking
        setWorking(false);
        if (!task->problem().isEmpty()) {
            platform::MsgBox::show(task->problem(), u"Error"_s, platform::MsgBox::Icon::Critical);
        } else if (task->isComplete()) {
            told_ =
                QStringList(u"Se ha exportado «%1»."_s.arg(platform::displayPath(path))) + *notices;
            dialog().accept();
            return;
        }
        showPreviewSoon();
    });
}

/// Gives up the export or, when there is none, the dialog.
void FrmExportar::cmdCancelar_Click()
{
    if (export_)
        export_->cancel();
    else
        dialog().reject();
}

void FrmExportar::setWorking(bool isWorking)
{
    Ui::FrmExportar& controls = ui();
    controls.panOpciones->setEnabled(!isWorking);
    controls.cmdExportar->setEnabled(!isWorking);
    controls.pbProgreso->setValue(0);
    controls.pbProgreso->setVisible(false);
    if (!isWorking) {
        progress_->stop();
        return;
    }
    progress_->start();
    QTimer::singleShot(feltMilliseconds, &dialog(),
                       [this] { ui().pbProgreso->setVisible(export_ != nullptr); });
}

void FrmExportar::forget()
{
    map_ = nullptr;
    if (rest_)
        rest_->stop();
    export_.reset();
    preview_.reset();
    maps_ = {};
}
