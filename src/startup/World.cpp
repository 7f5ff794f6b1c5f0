#include "startup/World.h"

#include "ports/Desktop.h"
#include "ui/frmMainEvents.h"

namespace tarvik {

World::World(Platform& platform)
    : platformScope_(platform), stateScope_(state), formsScope_(forms) {
    connectEvents();
}

World::~World() {
    // A world that is thrown away before its program ended leaves no window behind.
    for (Form* form :
         std::initializer_list<Form*>{&forms.frmMain, &forms.frmHistory, &forms.frmOptions,
                                      &forms.frmStatistics, &forms.frmSysTray, &forms.frmWarning}) {
        if (form->loaded()) {
            platform().desktop.withdraw(*form);
        }
    }
}

} // namespace tarvik
