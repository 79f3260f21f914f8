#pragma once

#include "platform/forms/form.h"
#include "ui_frmAbout.h"

/// The About box: picture, title and version of the program, and a contact line.
class FrmAbout final : public platform::Form<Ui::FrmAbout>
{
protected:
    void Form_Load() override;
    bool Form_KeyDown(const QKeyEvent& event) override;

private:
    void cmdOK_Click();
};

FrmAbout& frmAbout();
