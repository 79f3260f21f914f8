#pragma once

#include "platform/forms/form.h"
#include "ui_frmProgreso.h"

/// The small window with a progress bar that is up while a catalogue is written.
class FrmProgreso final : public platform::Form<Ui::FrmProgreso>
{
public:
    /// Shows the window with an empty bar of that many steps while it lives.
    class Run
    {
    public:
        explicit Run(int steps);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
    };

    /// Moves the bar one step on.
    void advance();

protected:
    void closeBox() override {} // it goes when the work is done
};

FrmProgreso& frmProgreso();
