#include "catalogue/frmProgreso.h"

#include "catalogue/frmPrinc.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QWindow>

namespace {

constexpr int longestWait = 300; // milliseconds

} // namespace

FrmProgreso& frmProgreso()
{
    return platform::FormRegistry::shared<FrmProgreso>();
}

FrmProgreso::Run::Run(int steps)
{
    frmProgreso().ui().pbProgreso->setRange(0, steps);
    frmProgreso().ui().pbProgreso->setValue(0);
    QWidget& owner = frmPrinc().window();
    frmProgreso().moveTo(owner.geometry().center() - frmProgreso().window().rect().center());
    frmProgreso().show();
    // Until it is painted: the window system takes a moment to bring it up. The user's input waits,
    // so that nothing changes the list meanwhile.
    QElapsedTimer waiting;
    waiting.start();
    const QWindow* const handle = frmProgreso().window().windowHandle();
    do
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    while (!handle->isExposed() && waiting.elapsed() < longestWait);
    frmProgreso().window().repaint();
}

FrmProgreso::Run::~Run()
{
    frmProgreso().hide();
}

void FrmProgreso::advance()
{
    ui().pbProgreso->setValue(ui().pbProgreso->value() + 1);
}
