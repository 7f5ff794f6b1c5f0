#include "ui/mdlGUIWindows.h"

#include "forms/Forms.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "ui/mdlSysTray.h"

#include <string>
#include <utility>

namespace tarvik {

namespace {

/// Once in a run: whoever hides the window looks for it in the notification area.
void tellOfMinimising() {
    if (std::exchange(forms().frmSysTray.minimisingTold, true)) {
        return;
    }
    const std::string text = std::string("This desktop has no notification area.") + CR +
                             "The main window is minimised instead of being hidden.";
    if (!Tell(text)) {
        MsgBox(text, MsgBoxButtons::OkOnly, MsgBoxIcon::Information);
    }
}

} // namespace

void ToggleFormVisibility(Form& Window, bool Visible) {
    guarded("ToggleFormVisibility", [&] {
        if (!Visible && &Window == &forms().frmMain && !IsInSysTray()) {
            Window.setMinimised(true);
            tellOfMinimising();
            return;
        }
        Window.setVisible(Visible);
        if (Window.visible()) {
            Window.bringToFront();
        }
    });
}

} // namespace tarvik
