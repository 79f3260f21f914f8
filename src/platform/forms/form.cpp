#include "platform/forms/form.h"

#include "platform/forms/placement.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// Room for what a window manager puts around a window, in pixels.
constexpr QSize windowFrame(16, 48);

FormRegistry* currentRegistry = nullptr;

} // namespace

/// Hands the events of a form's window on to the form.
class FormEvents final : public QObject
{
public:
    FormEvents(FormBase& form, QWidget& window) : QObject(&window), form_(&form), window_(&window)
    {
        window.installEventFilter(this);
    }
    /// Cuts the window off from its form: nothing is reported any more.
    void detach() { form_ = nullptr; }

    bool eventFilter(QObject* /*window*/, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Close:
            // What closing means is the form's to say; Qt itself must not hide the window.
            event->ignore();
            if (form_)
                form_->closeBox();
            return true;
        case QEvent::KeyPress:
            return takesKey(*static_cast<QKeyEvent*>(event));
        case QEvent::Resize:
            if (form_ && form_->isLoaded())
                form_->Form_Resize();
            return false;
        case QEvent::Show:
            fillTitle();
            if (form_ && !event->spontaneous())
                form_->Form_Activate();
            return false;
        case QEvent::WindowActivate:
            if (form_)
                form_->Form_Activate();
            return false;
        case QEvent::WindowTitleChange:
            fillTitle();
            return false;
        default:
            return false;
        }
    }

private:
    /// A key held down acts once: it may be the one that opened the window.
    bool takesKey(const QKeyEvent& key)
    {
        if (key.isAutoRepeat() || (form_ && form_->Form_KeyDown(key)))
            return true;
        const auto& onHelp = FormRegistry::current().onHelp;
        if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier || !onHelp)
            return false;
        onHelp(window_->objectName());
        return true;
    }

    /// Qt gives the window system the application's name for an empty title.
    void fillTitle()
    {
        if (window_->windowTitle().isEmpty() && window_->windowHandle())
            window_->windowHandle()->setTitle(u" "_s);
    }

    FormBase* form_;
    QWidget* window_;
};

FormBase::~FormBase()
{
    discardWindow();
}

void FormBase::detachWindow()
{
    if (events_)
        events_->detach();
    events_ = nullptr;
    placed_ = false;
}

void FormBase::discardWindow()
{
    detachWindow();
    window_.reset();
}

QWidget& FormBase::window()
{
    if (!window_) {
        window_ = buildWindow();
        events_ = new FormEvents(*this, *window_);
        try {
            Form_Load();
        } catch (...) {
            discardWindow();
            throw;
        }
        // A design may be larger than a small or much scaled screen.
        const QSize room = window_->screen()->availableSize() - windowFrame;
        window_->resize(window_->size().boundedTo(room));
    }
    return *window_;
}

void FormBase::show()
{
    window().setWindowState(window().windowState() & ~Qt::WindowMinimized);
    window().show();
    window().raise();
    window().activateWindow();
}

void FormBase::moveTo(QPoint position)
{
    const QScreen* const screen = QGuiApplication::screenAt(position);
    const QRect room = (screen ? screen : window().screen())->availableGeometry();
    const QSize size = window().size() + windowFrame;
    const int lastX = std::max(room.left(), room.right() - size.width());
    const int lastY = std::max(room.top(), room.bottom() - size.height());
    window().move(std::clamp(position.x(), room.left(), lastX),
                  std::clamp(position.y(), room.top(), lastY));
}

void FormBase::showBeside(const QWidget& map, double height)
{
    if (!placed_) {
        const QRect mapArea(map.mapToGlobal(QPoint()), map.size());
        const QRect place =
            besideMap(window().size() + windowFrame, mapArea, map.window()->frameGeometry(),
                      map.screen()->availableGeometry(), height);
        window().move(place.topLeft());
        window().resize(place.size() - windowFrame);
        placed_ = true;
    }
    show();
}

void FormBase::hide()
{
    if (window_)
        window_->hide();
}

void FormBase::unload()
{
    if (!window_)
        return;
    Form_Unload();
    if (!window_) // the handler unloaded it already
        return;
    detachWindow();
    QWidget* const window = window_.release();
    window->hide();
    window->deleteLater();
}

void DialogBase::showModal()
{
    // Connected anew each time, as the window may be another one by now.
    const auto rejected =
        QObject::connect(&dialog(), &QDialog::rejected, &dialog(), [this] { Form_Rejected(); });
    putAboveActiveWindow(dialog());
    dialog().exec();
    QObject::disconnect(rejected);
}

FormRegistry::FormRegistry()
{
    Q_ASSERT(!currentRegistry);
    currentRegistry = this;
}

FormRegistry::~FormRegistry()
{
    others_.clear();
    // The youngest first: forms may refer to those that were there before them.
    while (!forms_.empty()) {
        // The controls first: they show lists that are members of the form.
        forms_.back().form->discardWindow();
        forms_.pop_back();
    }
    currentRegistry = nullptr;
}

FormRegistry& FormRegistry::current()
{
    Q_ASSERT(currentRegistry);
    return *currentRegistry;
}

FormBase& FormRegistry::sharedForm(const void* identity, const MakeForm& make)
{
    const auto known = std::find_if(forms_.begin(), forms_.end(),
                                    [&](const Entry& entry) { return entry.identity == identity; });
    if (known != forms_.end())
        return *known->form;
    forms_.push_back({identity, make()});
    return *forms_.back().form;
}

void FormRegistry::keep(std::unique_ptr<FormBase> form)
{
    others_.erase(std::remove_if(others_.begin(), others_.end(),
                                 [](const auto& other) { return !other->isVisible(); }),
                  others_.end());
    others_.push_back(std::move(form));
}

void endProgram()
{
    QCoreApplication::exit(0);
}

} // namespace platform
