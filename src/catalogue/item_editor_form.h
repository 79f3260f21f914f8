#pragma once

#include "catalogue/catalogue_document.h"
#include "platform/forms/form.h"

#include <QPointer>
#include <functional>
#include <vector>

class QLineEdit;

/// One field of a record as its editor shows it. The control is a line of text, a text of several
/// lines, or a check box, which stands for "Sí" and "No".
struct EditorField {
    QString key;     ///< of the sub-item
    QString control; ///< its object name in the design
    bool selectsAll; ///< its whole text is selected when it gets the focus
};

/// What tells the four editors apart, beside their designs.
struct EditorKind {
    CatalogueDocument& (*document)(); ///< the catalogue that the editor writes into
    QString itemWord;                 ///< in messages: "arma"
    QString owner;                    ///< in error reports: "Formulario frmArmas"
    QString pictureFolder;            ///< below AppFolder, as paths of pictures begin
    QString pictureControl;           ///< shows the item's picture
    bool nameSelectsAll;
    std::vector<EditorField> fields; ///< all but the name, in file order
};

/// The code of all four editors: it shows one record of a catalogue as a form and writes it back.
/// The controls are found by the names that the kind's table gives.
class ItemEditor
{
public:
    /// Wires the controls of a window just loaded. `editedKey` is the window's hand-over variable:
    /// the item key of the item being edited, or empty for a new one.
    void attach(QWidget& window, platform::FormBase& form, const EditorKind& kind,
                const QString& editedKey);
    /// Copies an item into the fields.
    void fill(const platform::ListItem& item);
    void cmdGuardar_Click();

private:
    void save();
    QStringList fields() const;
    QString valueOf(const EditorField& field) const;
    void cmdBuscarImagenes_Click();
    void cmdSinImagen_Click();
    void showPicture();
    void showListPicture(int position);
    void nameChanged(const QString& text);

    template <typename Control>
    Control& control(const QString& name) const;

    QPointer<QWidget> window_;
    platform::FormBase* form_ = nullptr;
    const EditorKind* kind_ = nullptr;
    const QString* editedKey_ = nullptr;
};

/// An editor window: the design of its kind with the code of all.
template <typename Design>
class ItemEditorForm : public platform::Form<Design>
{
public:
    ItemEditorForm(const EditorKind& kind, QString& editedKey) : kind_(kind), editedKey_(editedKey)
    {
    }

    /// Shows the editor for a new item, with the fields as they were left.
    void createItem()
    {
        editedKey_.clear();
        this->show();
    }

    /// Shows the editor with an item of the catalogue.
    void editItem(const platform::ListItem& item)
    {
        editedKey_ = item.key();
        this->window(); // loads it
        editor_.fill(item);
        this->show();
    }

protected:
    void Form_Load() override { editor_.attach(this->window(), *this, kind_, editedKey_); }

    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    const EditorKind& kind_;
    QString& editedKey_;
    ItemEditor editor_;
};

/// What the keys do in every editor: Escape hides it, Enter saves. Returns whether the key was one
/// of them.
bool editorKeyDown(const QKeyEvent& event, platform::FormBase& form, ItemEditor& editor);

template <typename Design>
bool ItemEditorForm<Design>::Form_KeyDown(const QKeyEvent& event)
{
    return editorKeyDown(event, *this, editor_);
}
