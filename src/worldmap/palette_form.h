#pragma once

#include "app/procs_windows.h"
#include "app/workspace.h"
#include "platform/core/error.h"
#include "platform/forms/form.h"
#include "platform/forms/list_view.h"
#include "worldmap/definitions.h"

#include <QShortcut>

/// What the three palette windows have in common: a report list of definitions. Closing one by its
/// box only hides it, because its list is also where definitions are looked up.
template <typename Design, auto ListControl>
class PaletteForm : public platform::Form<Design>
{
public:
    Palette& palette;
    /// Called after the user closed the palette by its box.
    std::function<void()> closed;
    /// What becomes of a key that no control of the palette used; returns whether it was used.
    std::function<bool(const QKeyEvent& key)> keyUnused;

    void createColumns()
    {
        this->window();
        palette.items.setColumns(palette.kind.columns);
    }

    /// After the palette was loaded: there is always one to paint with.
    void selectFirst() { list().selectFirst(); }

    /// Shows the palette beside a map, so far down its side, and above all other windows, or hides
    /// it.
    void showAbove(bool visible, const QWidget& map, double height = 0)
    {
        if (!visible) {
            this->hide();
            return;
        }
        this->showBeside(map, height);
        Procs::setTopmost(this->window().windowHandle(), true);
    }

    /// The name of the definition selected; empty if there is none.
    QString chosen()
    {
        const platform::ListItem* const selected = list().selectedItem();
        return selected ? selected->key() : QString();
    }

    /// The same. Throws Error (NoSuchKey) when there is none.
    QString selectedName()
    {
        QString name = chosen();
        if (name.isEmpty())
            throw platform::Error(
                platform::ErrorNumber::NoSuchKey,
                QStringLiteral("No hay ningún elemento seleccionado en la ventana "
                               "«%1».")
                    .arg(this->window().windowTitle()));
        return name;
    }

    /// Selects the definition of a name, if there is one.
    void choose(const QString& name)
    {
        if (const platform::ListItem* const item = palette.items.find(name))
            list().select(*item);
    }

protected:
    explicit PaletteForm(Palette& palette) : palette(palette) {}

    void Form_Load() override
    {
        this->window().setWindowFlags(Qt::Tool);
        list().setItems(palette.items, palette.images);
        list().setFocus(); // not the filter's box: keys are the tools' first
        platform::FilterBox& box = *this->ui().txtFiltro;
        box.filter(list());
        auto* const search = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), &this->window());
        QObject::connect(search, &QShortcut::activated, &box, &platform::FilterBox::beginSearch);
    }

    void closeBox() override
    {
        this->hide();
        if (closed)
            closed();
    }

    bool Form_KeyDown(const QKeyEvent& event) override { return keyUnused && keyUnused(event); }

private:
    platform::ListView& list() { return *(this->ui().*ListControl); }
};
