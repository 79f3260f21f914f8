// The map window's ways out: the dialog that exports, the clipboard's picture.
#include "exchange/frmExportar.h"
#include "map_test.h"

#include <QClipboard>
#include <QDir>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace {

class ExportWindowTest : public MapTest
{
protected:
    static QAction& command(const QString& key)
    {
        return *frmMapa().window().findChild<QAction*>(key);
    }
    static Ui::FrmExportar& dialog() { return frmExportar().ui(); }
    static void choose(const QString& suffix)
    {
        dialog().cmbFormato->setCurrentIndex(dialog().cmbFormato->findData(suffix));
    }
    static void during(const std::function<void()>& action)
    {
        duringModal([] { command(u"exportar"_s).trigger(); }, action);
    }
    static void cancel() { QTest::mouseClick(dialog().cmdCancelar, Qt::LeftButton); }
};

} // namespace

TEST_F(ExportWindowTest, ExportsWhatIsChosenBesideTheProgram)
{
    setNombre(u"Año 1"_s);
    command(u"rejilla"_s).trigger();
    during([this] {
        EXPECT_EQ(dialog().txtArchivo->text(), QDir::toNativeSeparators(u"exportado/Año 1.png"_s));
        EXPECT_TRUE(dialog().chkRejilla->isChecked());
        EXPECT_FALSE(dialog().chkNombres->isChecked());
        EXPECT_TRUE(QTest::qWaitFor([] { return !dialog().imgVista->picture().isNull(); }));
        EXPECT_EQ(dialog().lblResultado->text(), u"554 × 707 píxeles"_s);
        dialog().chkRejilla->setChecked(false);
        dialog().txtEscala->setValue(2);
        EXPECT_TRUE(QTest::qWaitFor([] {
            return dialog().lblResultado->text() == u"1108 × 1414 píxeles"_s;
        })) << dialog().lblResultado->text().toStdString();
        QTest::mouseClick(dialog().cmdExportar, Qt::LeftButton);
    });
    const QImage whole = frmMapa().hdcBuffer.image();
    EXPECT_EQ(QImage(app.path(u"exportado/Año 1.png"_s)).convertToFormat(QImage::Format_RGB32),
              whole.scaled(whole.size() * 2));
    EXPECT_TRUE(frmMapa().ui().avisos->text().contains(u"Año 1.png"_s));
}

TEST_F(ExportWindowTest, AsksAndTellsBeforeItOverwrites)
{
    setNombre(u"M"_s);
    app.write(u"exportado/M.png"_s, "antes");
    during([this] {
        boxes.expect(platform::MsgBox::Answer::No);
        QTest::mouseClick(dialog().cmdExportar, Qt::LeftButton);
        EXPECT_TRUE(boxes.asked().back().text.contains(u"reemplazarlo"_s));
        const auto refused = [&](const QString& file, const QString& reason) {
            dialog().txtArchivo->setText(file);
            boxes.expect();
            QTest::mouseClick(dialog().cmdExportar, Qt::LeftButton);
            EXPECT_TRUE(boxes.asked().back().text.contains(reason))
                << boxes.asked().back().text.toStdString();
        };
        refused(u" "_s, u"nombre"_s);
        refused(u"no/hay/M.png"_s, u"falta la carpeta"_s);
        cancel();
    });
    EXPECT_EQ(app.read(u"exportado/M.png"_s), "antes");
}

TEST_F(ExportWindowTest, GivesUpALongExportAndLeavesNoFile)
{
    frmMapa().newMapa({}, {1000, 1000});
    during([] {
        dialog().txtEscala->setValue(4);
        dialog().cmbZona->setCurrentIndex(0);
        QTest::mouseClick(dialog().cmdExportar, Qt::LeftButton);
        EXPECT_FALSE(dialog().panOpciones->isEnabled());
        EXPECT_TRUE(QTest::qWaitFor([] { return dialog().pbProgreso->isVisible(); }));
        cancel(); // the export, then the dialog
        EXPECT_TRUE(QTest::qWaitFor([] { return dialog().panOpciones->isEnabled(); }));
        EXPECT_TRUE(frmExportar().isVisible());
        cancel();
    });
    EXPECT_TRUE(QDir(app.path(u"exportado"_s)).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

TEST_F(ExportWindowTest, CopiesThePictureOfTheViewOrOfTheSelection)
{
    const auto copied = [] {
        command(u"copiarImagen"_s).trigger();
        return QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
    };
    const QImage whole = frmMapa().hdcBuffer.image();
    EXPECT_EQ(copied(), whole.copy(frmMapa().ui().imgMapa->seen() & whole.rect()));
    command(u"seleccionar"_s).trigger();
    drag(inView(2, 3), inView(4, 6));
    command(u"acercar"_s).trigger();
    const QImage part = whole.copy(22, 42, 37, 63);
    EXPECT_EQ(copied(), part.scaled(part.size() * 2));
}

TEST_F(ExportWindowTest, ImportsPlacesAsOneStepThatCanBeUndone)
{
    frmMapa().documento.setPlace({9, 9}, {u"Aldea"_s, u"Robledal"_s, {}});
    const WorldMap before = frmMapa().mapa();
    const auto import = [this](const QByteArray& table) {
        app.write(u"exportado/l.csv"_s, "nombre,pin,columna,fila\n" + table);
        duringModal([] { command(u"importar"_s).trigger(); },
                    [this] {
                        auto* const chooser =
                            qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                        ASSERT_TRUE(chooser && chooser->objectName() == u"dlgImportar"_s);
                        chooser->selectFile(app.path(u"exportado/l.csv"_s));
                        static_cast<QDialog*>(chooser)->done(QDialog::Accepted);
                    });
    };
    boxes.expect();
    import("Soto,Aldea,99,0\n");
    EXPECT_TRUE(boxes.asked().back().text.contains(u"Línea 2"_s));
    EXPECT_TRUE(frmMapa().mapa() == before);
    import("Soto,Aldea,4,3\nVado,Aldea,6,3\n");
    EXPECT_EQ(frmMapa().lugares.count(), 2);
    EXPECT_EQ(placeText(3, 4), u"Aldea;Soto;"_s);
    EXPECT_EQ(frmMapa().documento.undoText(), u"importar"_s);
    command(u"deshacer"_s).trigger();
    EXPECT_TRUE(frmMapa().mapa() == before);
}
