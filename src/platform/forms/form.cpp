#include "platform/forms/form.h"

#include "platform/forms/placement.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
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

bool FormWindow::event(QEvent* event)
{
    const bool used = QWidget::event(event);
    // Qt gives the window system the application's name for an empty title.
    if ((event->type() == QEvent::WindowTitleChange || event->type() == QEvent::Show) &&
        windowTitle().isEmpty() && windowHandle())
        windowHandle()->setTitle(u" "_s);
    if (event->type() == QEvent::WindowActivate && form_)
        form_->Form_Activate();
    return used;
}

void FormWindow::closeEvent(QCloseEvent* event)
{
    // What closing means is the form's to say; Qt itself must not hide the window behind its back.
    event->ignore();
    if (form_)
        form_->closeBox();
}

void FormWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (form_ && form_->isLoaded())
        form_->Form_Resize();
}

void FormWindow::keyPressEvent(QKeyEvent* event)
{
    // A key held down acts once: it may be the one that opened the window.
    if (event->isAutoRepeat() || !form_ || !form_->Form_KeyDown(*event))
        QWidget::keyPressEvent(event);
}

void FormWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (form_ && !event->spontaneous())
        form_->Form_Activate();
}

void FormWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (form_ && !event->spontaneous())
        form_->endModal();
}

FormBase::~FormBase()
{
    discardWindow();
}

void FormBase::discardWindow()
{
    if (window_)
        window_->detach();
    window_.reset();
    placed_ = false;
}

FormWindow& FormBase::window()
{
    if (!window_) {
        window_ = buildWindow();
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
    window().setWindowModality(Qt::NonModal);
    window().setWindowState(window().windowState() & ~Qt::WindowMinimized);
    window().show();
    window().raise();
    window().activateWindow();
}

void FormBase::showModal()
{
    window().setWindowModality(Qt::ApplicationModal);
    window().setWindowFlag(Qt::WindowStaysOnTopHint); // no topmost palette may cover it
    QEventLoop loop;
    modalLoop_ = &loop;
    window().show();
    window().raise();
    window().activateWindow();
    if (modalLoop_) // the window may have hidden itself while it was shown
        loop.exec();
    modalLoop_ = nullptr;
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
    FormWindow* const window = window_.release();
    placed_ = false;
    window->detach();
    window->hide();
    window->deleteLater();
    endModal();
}

void FormBase::endModal()
{
    if (modalLoop_)
        modalLoop_->exit();
    modalLoop_ = nullptr;
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
