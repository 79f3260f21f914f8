#include "catalogue/item_editor_form.h"

#include "app/procs_windows.h"
#include "catalogue/frmListaImagenes.h"
#include "platform/core/app_folder.h"
#include "platform/core/error.h"
#include "platform/forms/application.h"
#include "platform/forms/msg_box.h"
#include "platform/forms/picture_box.h"
#include "platform/forms/text_guard.h"
#include "platform/forms/twips.h"
#include "platform/gdi/picture.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

using platform::Error;
using platform::ErrorNumber;
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

bool isEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

Qt::KeyboardModifiers realModifiers(const QKeyEvent& event)
{
    return event.modifiers() & ~Qt::KeypadModifier;
}

/// Selects a box's whole text whenever it gets the focus.
class SelectAll final : public QObject
{
public:
    explicit SelectAll(QLineEdit& box) : QObject(&box), box_(&box) { box.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            selectFor(static_cast<QFocusEvent*>(event)->reason());
        return QObject::eventFilter(watched, event);
    }

private:
    void selectFor(Qt::FocusReason reason)
    {
        // Coming back from another window must not put what was typed at risk.
        const bool returned = reason == Qt::ActiveWindowFocusReason ||
                              reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
        if (returned && box_->isModified())
            return;
        box_->selectAll();
        if (reason == Qt::MouseFocusReason) // the click that follows would take the selection away
            QTimer::singleShot(0, box_, &QLineEdit::selectAll);
    }

    QLineEdit* box_;
};

/// Lets Enter in the notes go to the window, which saves; Ctrl+Enter begins a new line instead.
class NotesKeys final : public QObject
{
public:
    explicit NotesKeys(QPlainTextEdit& box) : QObject(&box), box_(&box)
    {
        box.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || !isEnter(*static_cast<QKeyEvent*>(event)))
            return QObject::eventFilter(watched, event);
        const Qt::KeyboardModifiers modifiers = realModifiers(*static_cast<QKeyEvent*>(event));
        if (modifiers == Qt::ControlModifier) {
            box_->insertPlainText(u"\n"_s);
            return true;
        }
        if (modifiers == Qt::NoModifier) {
            QCoreApplication::sendEvent(box_->window(), event);
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QPlainTextEdit* box_;
};

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
    if (kind.nameSelectsAll)
        new SelectAll(name);
    for (const EditorField& field : kind.fields) {
        if (auto* const line = window.findChild<QLineEdit*>(field.control)) {
            platform::guardText(*line, platform::fieldSeparators);
            if (field.selectsAll)
                new SelectAll(*line);
        } else if (auto* const text = window.findChild<QPlainTextEdit*>(field.control)) {
            platform::guardText(*text, platform::fieldSeparators);
            new NotesKeys(*text);
        }
    }
    QObject::connect(&control<QLineEdit>(imageControl()), &QLineEdit::textChanged, &window,
                     [this] { showPicture(); });

    auto& search = control<QToolButton>(u"cmdBuscarImagenes"_s);
    search.setIcon(platform::pixelIcon({QImage(u":/pictures/buscar_imagen.gif"_s)}));
    QObject::connect(&search, &QToolButton::clicked, &window,
                     [this] { platform::runCommand([this] { cmdBuscarImagenes_Click(); }); });
    auto& save = control<QToolButton>(u"cmdGuardar"_s);
    save.setIcon(platform::pixelIcon({QImage(u":/pictures/guardar.gif"_s)}));
    QObject::connect(&save, &QToolButton::clicked, &window, [this] { cmdGuardar_Click(); });
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

void ItemEditor::fill(const ListItem& item, const QImage& picture)
{
    control<QLineEdit>(nameControl()).setText(item.text());
    window_->setWindowTitle(item.text());
    for (const EditorField& field : kind_->fields) {
        // A load that was stopped may have left fields out.
        const QString value = item.hasSubItem(field.key) ? item.subItem(field.key) : QString();
        if (auto* const box = window_->findChild<QCheckBox*>(field.control))
            box->setChecked(value == yes());
        else if (auto* const line = window_->findChild<QLineEdit*>(field.control))
            line->setText(value);
        else
            control<QPlainTextEdit>(field.control).setPlainText(value);
    }
    if (!picture.isNull())
        control<platform::ImageBox>(kind_->pictureControl).setPicture(picture);
}

QString ItemEditor::valueOf(const EditorField& field) const
{
    if (const auto* const box = window_->findChild<QCheckBox*>(field.control))
        return box->isChecked() ? yes() : u"No"_s;
    if (const auto* const line = window_->findChild<QLineEdit*>(field.control))
        return line->text();
    return control<QPlainTextEdit>(field.control).toPlainText();
}

void ItemEditor::writeFields(ListItem& item) const
{
    for (const EditorField& field : kind_->fields)
        item.setSubItem(field.key, valueOf(field));
}

QString ItemEditor::itemKey() const
{
    return kind_->catalogue().kind.itemKey(control<QLineEdit>(nameControl()).text(),
                                           valueOf(kind_->fields.front()));
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
    if (!editedKey_->isEmpty()) {
        changeItem();
    } else if (kind_->catalogue().items.findText(name)) {
        refuse(u"Ya existe un %1 con ese nombre."_s.arg(kind_->itemWord));
        return;
    } else {
        addItem();
    }
    form_->hide();
}

void ItemEditor::addItem()
{
    Catalogue& catalogue = kind_->catalogue();
    checkRoom(catalogue);
    const QString key = itemKey();
    ListItem& item = catalogue.items.add(key, control<QLineEdit>(nameControl()).text());
    if (const QString image = control<QLineEdit>(imageControl()).text(); !image.isEmpty())
        // The picture of an item that was deleted may still have the key.
        item.setIcon(
            catalogue.pictures.append(key, platform::loadPicture(platform::inAppFolder(image))));
    writeFields(item);
    catalogue.items.sortAgain();
}

void ItemEditor::changeItem()
{
    ListItem* const item = kind_->catalogue().items.find(*editedKey_);
    if (!item)
        throw Error(ErrorNumber::NoSuchKey, u"«%1» ya no está en la lista"_s.arg(*editedKey_));
    item->setText(control<QLineEdit>(nameControl()).text());
    writeFields(*item);
    item->setKey(itemKey());
    kind_->catalogue().items.sortAgain();
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

void ItemEditor::showPicture()
{
    try {
        const QString image = control<QLineEdit>(imageControl()).text();
        control<platform::ImageBox>(kind_->pictureControl)
            .setPicture(platform::loadPicture(platform::inAppFolder(image)));
    } catch (const Error&) {
        // The picture that was there stays.
    }
}

bool editorKeyDown(const QKeyEvent& event, platform::FormBase& form, ItemEditor& editor)
{
    if (realModifiers(event) != Qt::NoModifier)
        return false;
    if (event.key() == Qt::Key_Escape) {
        form.hide();
        return true;
    }
    if (isEnter(event)) {
        editor.cmdGuardar_Click();
        return true;
    }
    return false;
}
