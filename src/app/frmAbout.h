#pragma once

#include "platform/forms/form.h"
#include "ui_frmAbout.h"

/// The About box: picture, title and version of the program, and a contact line.
class FrmAbout final : public platform::Dialog<Ui::FrmAbout>
{
protected:
    void Form_Load() override;
    void Form_Rejected() override { unload(); }
};

FrmAbout& frmAbout();
