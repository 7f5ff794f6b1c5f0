#include "forms/Forms.h"

namespace tarvik {

Forms::Forms(Desktop& desktop) {
    for (Form* form : all()) {
        form->setDesktop(desktop);
    }
}

Forms& forms() {
    return FormsScope::get("no windows are in place");
}

} // namespace tarvik
