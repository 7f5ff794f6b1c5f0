#include "settings/mdlSettingsDialog.h"

#include "dialogs/clsFileDialog.h"
#include "forms/Forms.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "state/mdlTools.h"

namespace tarvik {

namespace {

/// The window before which the dialog stands: the one that imports, or the main window.
const Form& ownerOfDialog() {
    const Forms& f = forms();
    return f.frmHistory.visible() ? static_cast<const Form&>(f.frmHistory) : f.frmMain;
}

} // namespace

std::string ShowIniFileDialog() {
    return guarded("ShowIniFileDialog", std::string(), [](std::string& result) {
        clsFileDialog dialog;
        for (const DialogFlag flag :
             {DialogFlag::Flag_Explorer, DialogFlag::Flag_ReadOnly, DialogFlag::Flag_HideReadOnly,
              DialogFlag::Flag_FileMustExist, DialogFlag::Flag_NoChangeDir}) {
            dialog.SetFlag(flag, true);
        }
        dialog.Filter = "INI files *.ini|*.ini|All files *.*|*.*";
        dialog.DialogTitle = "Import history...";
        dialog.InitDir = platform().program.folder();
        dialog.Owner = &ownerOfDialog();
        dialog.ShowOpen();
        const std::uint32_t error = dialog.DialogError().Number();
        if (error == 0) {
            result = dialog.FileName;
        } else if (error != clsDialogError::cancelled) {
            MsgBox("Assertion failure in function \"ShowIniFileDialog\".", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
    });
}

} // namespace tarvik
