#include "wiring/World.h"

#include "ports/Desktop.h"
#include "wiring/frmHistoryEvents.h"
#include "wiring/frmMainEvents.h"
#include "wiring/frmOptionsEvents.h"
#include "wiring/frmPlanEvents.h"
#include "wiring/frmPlanWarningEvents.h"
#include "wiring/frmStatisticsEvents.h"
#include "wiring/frmSysTrayEvents.h"
#include "wiring/frmWarningEvents.h"

namespace tarvik {

World::World(Platform& platform)
    : forms(platform.desktop), platformScope_(platform), stateScope_(state), formsScope_(forms),
      journalScope_(journal), ledgerScope_(ledger), plansScope_(plans) {
    connectMainEvents();
    connectHistoryEvents();
    connectOptionsEvents();
    connectPlanEvents();
    connectPlanWarningEvents();
    connectStatisticsEvents();
    connectSysTrayEvents();
    connectWarningEvents();
}

World::~World() {
    // A world that is thrown away before its program ended leaves no window behind.
    for (Form* form : forms.all()) {
        if (form->loaded()) {
            platform().desktop.withdraw(*form);
        }
    }
}

} // namespace tarvik
