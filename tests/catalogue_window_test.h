#pragma once

#include "catalogue/frmPrinc.h"
#include "window_test.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QToolButton>

/// The catalogue window over the shipped catalogues.
class CatalogueWindowTest : public WindowTest
{
protected:
    CatalogueWindowTest()
    {
        for (CatalogueDocument* const catalogue : workspace.catalogues())
            catalogue->load();
        princ.show();
    }

    /// Puts other records in the place of a catalogue's own.
    void replace(CatalogueDocument& catalogue, const QByteArray& records) const
    {
        app.write(QStringLiteral("ini/") + catalogue.kind().file, records);
        catalogue.load();
    }

    void choosePage(int tab) { ui().TabStrip->setCurrentIndex(tab); }
    Ui::FrmPrinc& ui() { return princ.ui(); }

    QAction& action(const QString& key) { return *princ.window().findChild<QAction*>(key); }

    /// Keys go to the catalogue window again, after another one was up.
    void activate()
    {
        princ.window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&princ.window()));
    }

    static void click(QAbstractButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    /// Double-clicks the item's row and returns the editor that opens.
    static QWidget* open(platform::ListView* list, const QString& text)
    {
        const QModelIndex row =
            list->model()
                ->match(list->model()->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly)
                .value(0);
        list->scrollTo(row);
        const QPoint place = list->visualRect(row).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        return opened([&] { QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place); });
    }

    /// The editor that an action opens, or null.
    static QWidget* opened(const std::function<void()>& action)
    {
        const QWidgetList before = editors();
        action();
        for (QWidget* const editor : editors()) {
            if (!before.contains(editor))
                return editor;
        }
        return nullptr;
    }

    /// A key that goes down, or is held down.
    static void press(QWidget* box, Qt::Key key, bool isRepeat)
    {
        QTest::simulateEvent(box, true, key, Qt::NoModifier, {}, isRepeat);
    }

    static QWidgetList editors()
    {
        QWidgetList found;
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->findChild<QLineEdit*>(QStringLiteral("txtImagen")))
                found.append(window);
        }
        return found;
    }

    template <typename Control = QLineEdit>
    static Control* in(QWidget* window, const QString& name)
    {
        auto* const control = window->findChild<Control*>(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control;
    }

    static void save(QWidget* editor)
    {
        click(in<QToolButton>(editor, QStringLiteral("cmdGuardar")));
    }

    void expectReport(const QString& tail)
    {
        EXPECT_TRUE(boxes.asked().back().text.startsWith(QStringLiteral("Error ")));
        EXPECT_TRUE(boxes.asked().back().text.endsWith(
            QStringLiteral(") in procedure cmdGuardar_Click of Formulario ") + tail))
            << boxes.asked().back().text.toStdString();
        EXPECT_EQ(boxes.asked().back().title, QStringLiteral("Kestrune"));
    }

    FrmPrinc& princ = frmPrinc();
};
