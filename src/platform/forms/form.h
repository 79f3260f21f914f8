#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class QKeyEvent;

namespace platform {

class FormBase;
class FormEvents;

/// A window of the program as other code addresses it. The object lives for the whole run; its
/// controls come and go: they are built, unshown, the first time something touches them ("loading")
/// and destroyed when the window is unloaded, while the object's own variables stay.
class FormBase
{
public:
    FormBase() = default;
    virtual ~FormBase();
    FormBase(const FormBase&) = delete;
    FormBase& operator=(const FormBase&) = delete;

    bool isLoaded() const { return window_ != nullptr; }
    bool isVisible() const { return window_ && window_->isVisible(); }

    /// The window, loaded if it wasn't.
    QWidget& window();
    /// Shows the window and returns at once.
    void show();
    /// Puts the window's top left corner at a position of the screen, or as near to it as the whole
    /// window can be seen.
    void moveTo(QPoint position);
    /// Shows the window beside a map, as besideMap says; a window that was placed so before stays
    /// where the user put it.
    void showBeside(const QWidget& map, double height);
    /// Takes the window off the screen; its controls keep their contents.
    void hide();
    /// Destroys the controls. Safe inside the window's own handlers: the controls are cut off at
    /// once and destroyed when control is back in the event loop.
    void unload();

protected:
    virtual std::unique_ptr<QWidget> buildWindow() = 0;
    /// Runs once after the controls are built, before anything else sees them.
    virtual void Form_Load() {}
    /// Runs each time the window is shown or becomes the active one.
    virtual void Form_Activate() {}
    virtual void Form_Resize() {}
    virtual void Form_Unload() {}
    /// The user closed the window by its box (or the window manager did).
    virtual void closeBox() { unload(); }
    /// A key, not one held down, that no control used, or one that the window wants; returns
    /// whether it was used.
    virtual bool Form_KeyDown(const QKeyEvent& /*event*/) { return false; }

private:
    friend class FormEvents;
    friend class FormRegistry;
    void detachWindow();
    void discardWindow();

    std::unique_ptr<QWidget> window_;
    FormEvents* events_ = nullptr; ///< a child of the window
    bool placed_ = false;          ///< by showBeside
};

/// A form that is shown modally, as a dialog of the toolkit.
class DialogBase : public FormBase
{
public:
    /// Shows the dialog above all windows, which take no input meanwhile, and returns when it is
    /// hidden or unloaded.
    void showModal();

protected:
    QDialog& dialog() { return static_cast<QDialog&>(window()); }
    /// The dialog was rejected, by Escape or a button, and is hidden.
    virtual void Form_Rejected() {}
};

/// A form whose controls come from a Designer file: Design is the class that uic makes of it, for
/// the toolkit's class Window.
template <typename Design, typename Window = QWidget, typename Base = FormBase>
class Form : public Base
{
public:
    /// The controls; touching them loads the window.
    Design& ui() { return static_cast<DesignedWindow&>(this->window()).design; }

protected:
    std::unique_ptr<QWidget> buildWindow() override { return std::make_unique<DesignedWindow>(); }

private:
    struct DesignedWindow final : Window {
        DesignedWindow() { design.setupUi(this); }
        Design design;
    };
};

template <typename Design>
using Dialog = Form<Design, QDialog, DialogBase>;

/// Owns every form of the run. One is made in main after the application object; each test makes
/// its own, and so gets fresh windows.
class FormRegistry
{
public:
    FormRegistry();
    ~FormRegistry();
    FormRegistry(const FormRegistry&) = delete;
    FormRegistry& operator=(const FormRegistry&) = delete;

    /// What F1 does in a window of that object name.
    std::function<void(const QString& window)> onHelp;

    /// The one shared instance of a form class, made on first touch.
    template <typename F>
    static F& shared()
    {
        static const char identity = 0; // its address tells the form classes apart
        return static_cast<F&>(
            current().sharedForm(&identity, [] { return std::make_unique<F>(); }));
    }

    /// A further instance of a form class, beside the shared one. It lives until its window is no
    /// longer on the screen and another one is made.
    template <typename F>
    static F& another()
    {
        auto form = std::make_unique<F>();
        F& made = *form;
        current().keep(std::move(form));
        return made;
    }

private:
    friend class FormEvents;
    using MakeForm = std::function<std::unique_ptr<FormBase>()>;
    struct Entry {
        const void* identity;
        std::unique_ptr<FormBase> form;
    };

    static FormRegistry& current();
    FormBase& sharedForm(const void* identity, const MakeForm& make);

    void keep(std::unique_ptr<FormBase> form);

    std::vector<Entry> forms_;
    std::vector<std::unique_ptr<FormBase>> others_;
};

/// Ends the program: every event loop returns, nothing is saved.
void endProgram();

} // namespace platform
