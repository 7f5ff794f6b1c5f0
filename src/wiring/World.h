#pragma once

#include "forms/Forms.h"
#include "journal/Journal.h"
#include "ledger/Ledger.h"
#include "plan/Plans.h"
#include "ports/Platform.h"
#include "state/mdlVar.h"

namespace tarvik {

/// One program's whole world on a platform: state and windows, in place for as long as it lives. A
/// program has one; a test builds a fresh one and throws it away.
class World {
public:
    /// The platform must outlive the world.
    explicit World(Platform& platform);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    State state;
    Forms forms;
    Journal journal;
    Ledger ledger;
    Plans plans;

private:
    PlatformScope platformScope_;
    StateScope stateScope_;
    FormsScope formsScope_;
    JournalScope journalScope_;
    LedgerScope ledgerScope_;
    PlansScope plansScope_;
};

} // namespace tarvik
