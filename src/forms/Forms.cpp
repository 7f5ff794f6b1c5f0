#include "forms/Forms.h"

namespace tarvik {

Forms::Forms(Desktop& desktop) {
    for (Form* form : all()) {
        form->setDesktop(desktop);
    }
}

std::array<Form*, 6> Forms::all() {
    return {&frmMain, &frmHistory, &frmOptions, &frmStatistics, &frmSysTray, &frmWarning};
}

Forms& forms() {
    return FormsScope::get("no windows are in place");
}

} // namespace tarvik
