#include "app/frmAbout.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QVersionNumber>

using namespace Qt::StringLiterals;

FrmAbout& frmAbout()
{
    return platform::FormRegistry::shared<FrmAbout>();
}

void FrmAbout::Form_Load()
{
    const QString title = QCoreApplication::applicationName();
    const auto version = QVersionNumber::fromString(QCoreApplication::applicationVersion());
    window().setWindowTitle(u"Acerca de "_s + title);
    window().setWindowFlags(Qt::Dialog);
    ui().lblVersion->setText(u"Versión %1.%2.%3"_s.arg(version.majorVersion())
                                 .arg(version.minorVersion())
                                 .arg(version.microVersion()));
    ui().lblTitle->setText(title);
    ui().picIcon->setPicture(QImage(u":/pictures/acerca.gif"_s));
    ui().cmdOK->setFocus();
    QObject::connect(ui().cmdOK, &QPushButton::clicked, &window(), [this] { cmdOK_Click(); });
}

bool FrmAbout::Form_KeyDown(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter &&
        event.key() != Qt::Key_Escape)
        return false;
    cmdOK_Click();
    return true;
}

void FrmAbout::cmdOK_Click()
{
    unload();
}
