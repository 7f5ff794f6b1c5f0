#include "wiring/CloseBox.h"

#include "state/mdlTools.h"

namespace tarvik {

void connectCloseBox(Form& form, void (*handler)()) {
    form.QueryUnload.connect([handler](bool& cancel, UnloadMode mode) {
        guarded("Form_QueryUnload", [&] {
            if (mode == UnloadMode::FormControlMenu) {
                handler();
                cancel = true;
            }
        });
    });
}

} // namespace tarvik
