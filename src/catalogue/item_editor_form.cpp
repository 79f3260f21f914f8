#include "catalogue/item_editor_form.h"

#include "app/procs_windows.h"
#include "catalogue/editor_boxes_form.h"
#include "catalogue/frmListaImagenes.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "platform/forms/twips.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QToolButton>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ListItem;

namespace {

// The controls that every editor has.
const QString& nameControl()
{
    static const QString name = u"txtNombre"_s;
    return name;
}

const QString& imageControl()
{
    static const QString name = u"txtImagen"_s;
    return name;
}

const QString& yes()
{
    static const QString text = u"Sí"_s;
    return text;
}

} // namespace

template <typename Control>
Control& ItemEditor::control(const QString& name) const
{
    auto* const found = window_->findChild<Control*>(name);
    Q_ASSERT(found); // the design and the kind's table name the same controls
    return *found;
}

void ItemEditor::attach(QWidget& window, platform::FormBase& form, const EditorKind& kind,
                        const QString& editedKey)
{
    window_ = &window;
    form_ = &form;
    kind_ = &kind;
    editedKey_ = &editedKey;

    auto& name = control<QLineEdit>(nameControl());
    platform::guardText(name, platform::fieldSeparators);
    QObject::connect(&name, &QLineEdit::textChanged, &window,
                     [this](const QString& text) { nameChanged(text); });
    selectOnFocus(name, kind.nameSelectsAll);
    for (const EditorField& field : kind.fields) {
        if (auto* const line = window.findChild<QLineEdit*>(field.control)) {
            platform::guardText(*line, platform::fieldSeparators);
            selectOnFocus(*line, field.selectsAll);
        } else if (auto* const text = window.findChild<QPlainTextEdit*>(field.control)) {
            platform::guardText(*text, platform::fieldSeparators);
            saveOnEnter(*text);
        }
    }
    QObject::connect(&control<QLineEdit>(imageControl()), &QLineEdit::textChanged, &window,
                     [this] { platform::runCommand([this] { showPicture(); }); });

    const auto onClick = [&](const QString& button, const QString& picture,
                             void (ItemEditor::*action)()) {
        auto& tool = control<QToolButton>(button);
        tool.setIcon(platform::pixelIcon({QImage(u":/pictures/%1.gif"_s.arg(picture))}));
        QObject::connect(&tool, &QToolButton::clicked, &window, [this, action] {
            platform::runCommand([this, action] { (this->*action)(); });
        });
    };
    onClick(u"cmdBuscarImagenes"_s, u"buscar_imagen"_s, &ItemEditor::cmdBuscarImagenes_Click);
    onClick(u"cmdSinImagen"_s, u"sin_imagen"_s, &ItemEditor::cmdSinImagen_Click);
    onClick(u"cmdGuardar"_s, u"guardar"_s, &ItemEditor::cmdGuardar_Click);
}

/// The name is the window's caption. One that begins with the mark of comments would be lost with
/// its whole record, so the mark isn't taken.
void ItemEditor::nameChanged(const QString& text)
{
    if (text.startsWith(commentMark)) {
        auto& name = control<QLineEdit>(nameControl());
        platform::showRefusal(name, QString(commentMark));
        name.setText(text.sliced(1));
        return;
    }
    window_->setWindowTitle(text);
}

void ItemEditor::fill(const ListItem& item)
{
    const auto show = [](QLineEdit& box, const QString& text) {
        box.setText(text);
        box.setCursorPosition(0); // a long text shows its start
    };
    show(control<QLineEdit>(nameControl()), item.text());
    window_->setWindowTitle(item.text());
    // The picture of the list is shown below, not that of the path, which may be another by now.
    const QSignalBlocker quiet(item.icon() > 0 ? &control<QLineEdit>(imageControl()) : nullptr);
    for (const EditorField& field : kind_->fields) {
        // A load that was stopped may have left fields out.
        const QString value = item.hasSubItem(field.key) ? item.subItem(field.key) : QString();
        if (auto* const box = window_->findChild<QCheckBox*>(field.control))
            box->setChecked(value == yes());
        else if (auto* const line = window_->findChild<QLineEdit*>(field.control))
            show(*line, value);
        else
            control<QPlainTextEdit>(field.control).setPlainText(value);
    }
    if (item.icon() > 0)
        showListPicture(item.icon());
}

/// Shows a picture of the catalogue's list: its file again or, where that is gone, the icon.
void ItemEditor::showListPicture(int position)
{
    const platform::ImageList& pictures = kind_->document().pictures();
    auto& preview = control<platform::PreviewBox>(kind_->pictureControl);
    try {
        preview.load(pictures.pathAt(position));
    } catch (const Error&) {
        preview.setPicture(pictures.at(position));
    }
}

QString ItemEditor::valueOf(const EditorField& field) const
{
    if (const auto* const box = window_->findChild<QCheckBox*>(field.control))
        return box->isChecked() ? yes() : u"No"_s;
    if (const auto* const line = window_->findChild<QLineEdit*>(field.control))
        return line->text();
    return platform::textOf(control<QPlainTextEdit>(field.control));
}

/// What the boxes say, in the order of the file.
QStringList ItemEditor::fields() const
{
    QStringList all{control<QLineEdit>(nameControl()).text()};
    for (const EditorField& field : kind_->fields)
        all.append(valueOf(field));
    return all;
}

void ItemEditor::cmdGuardar_Click()
{
    try {
        save();
    } catch (const Error& error) {
        Procs::reportError(error, u"cmdGuardar_Click"_s, kind_->owner);
    }
}

void ItemEditor::save()
{
    const auto refuse = [](const QString& text) {
        platform::MsgBox::show(text, u"Error"_s, platform::MsgBox::Icon::Information);
    };
    const QString name = control<QLineEdit>(nameControl()).text();
    if (name.isEmpty()) {
        refuse(u"Debe ingresar el nombre del %1."_s.arg(kind_->itemWord));
        return;
    }
    CatalogueDocument& document = kind_->document();
    if (!editedKey_->isEmpty()) {
        document.change(*editedKey_, fields());
    } else if (document.items().findText(name)) {
        refuse(u"Ya existe un %1 con ese nombre."_s.arg(kind_->itemWord));
        return;
    } else {
        document.add(fields());
    }
    form_->hide();
}

void ItemEditor::cmdBuscarImagenes_Click()
{
    const auto& button = control<QToolButton>(u"cmdBuscarImagenes"_s);
    constexpr int offset = platform::pixelsFromTwips(100);
    FrmListaImagenes& picker = frmListaImagenes();
    picker.camino = kind_->pictureFolder;
    picker.mascara = u"*.gif"_s;
    picker.moveTo(window_->pos() + button.mapTo(window_, QPoint(offset, offset)));
    picker.controlDestino = &control<QLineEdit>(imageControl());
    picker.listImages();
    picker.show();
}

void ItemEditor::cmdSinImagen_Click()
{
    control<QLineEdit>(imageControl()).clear();
    control<platform::PreviewBox>(kind_->pictureControl).setPicture({});
}

void ItemEditor::showPicture()
{
    try {
        const QString image = control<QLineEdit>(imageControl()).text();
        control<platform::PreviewBox>(kind_->pictureControl).load(platform::inAppFolder(image));
    } catch (const Error&) {
        // The picture that was there stays.
    }
}

bool editorKeyDown(const QKeyEvent& event, platform::FormBase& form, ItemEditor& editor)
{
    if (hasModifiers(event) || (event.key() != Qt::Key_Escape && !isEnter(event)))
        return false;
    if (isEnter(event))
        platform::runCommand([&] { editor.cmdGuardar_Click(); });
    else
        form.hide();
    return true;
}
