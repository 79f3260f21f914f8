#include "app/frmAbout.h"

#include <QCoreApplication>
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
    ui().lblVersion->setText(u"Versión %1.%2.%3"_s.arg(version.majorVersion())
                                 .arg(version.minorVersion())
                                 .arg(version.microVersion()));
    ui().lblTitle->setText(title);
    ui().picIcon->setPicture(QImage(u":/pictures/acerca.gif"_s));
    QObject::connect(ui().cmdOK, &QPushButton::clicked, &window(), [this] { unload(); });
}
