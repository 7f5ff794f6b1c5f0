#include "monitor/mdlPlans.h"

#include "forms/Forms.h"
#include "ledger/Ledger.h"
#include "monitor/mdlCodeDial.h"
#include "monitor/mdlPlanFigures.h"
#include "monitor/mdlPlanNotes.h"
#include "monitor/mdlSessions.h"
#include "plan/Plans.h"
#include "plan/Thresholds.h"
#include "ports/ConnectionProvider.h"
#include "ports/Platform.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

bool isLineOf(const Plan& plan, const RASCONNA& connection) {
    const bool inside = platform().connections.carrierOf(connection.hrasconn) != 0;
    return countsLine(plan, StripNull({connection.szEntryName, sizeof connection.szEntryName}),
                      inside);
}

/// Handles of the plan's lines that are up.
std::vector<std::uint32_t> linesUp(const Plan& plan) {
    std::vector<std::uint32_t> handles;
    for (const LineSession& one : state().LineSessions) {
        if (!one.hungUp && !HungUpInTick(one.connection.hrasconn) &&
            isLineOf(plan, one.connection)) {
            handles.push_back(one.connection.hrasconn);
        }
    }
    return handles;
}

/// Until the program ends at a box, as one may come of each.
void hangUp(const std::vector<std::uint32_t>& handles) {
    for (const std::uint32_t handle : handles) {
        if (forms().frmMain.loaded()) {
            HangUpLine(handle);
        }
    }
}

/// What is due is kept before it is done: a kill in between says nothing rather than twice.
DueThresholds takeDue(PlanInUse& one) {
    DueThresholds due = dueThresholds(one.plan, one.meter->standing);
    if (!due.toSay.empty() || !due.toHangUp.empty()) {
        one.plan.said = due.said;
        SavePlans();
    }
    return due;
}

void checkThresholds(int number) {
    PlanInUse* const one = plans().withNumber(number);
    if (one == nullptr || !one->meter) {
        return;
    }
    const DueThresholds due = takeDue(*one);
    const Plan plan = one->plan; // a box may come, and the user may change the plan behind it
    std::vector<Threshold> said;
    for (const std::size_t place : due.toSay) {
        said.push_back(plan.thresholds[place]);
    }
    SayThresholds(number, said);
    if (!due.toHangUp.empty()) {
        hangUp(linesUp(plan));
    }
}

/// Lines that were up when the last threshold was reached go on, and so do those that are up at the
/// first look at a plan, of a start or after a change; what comes later is hung up.
void checkBlock(PlanInUse& one) {
    const bool blocked = one.meter && isBlocked(one.plan, one.meter->standing);
    const bool wasBlocked = one.wasBlocked;
    one.wasBlocked = blocked;
    if (!blocked) {
        one.mayGoOn.clear();
        return;
    }
    std::vector<std::uint32_t> up = linesUp(one.plan);
    if (!wasBlocked) {
        one.mayGoOn.insert(up.begin(), up.end());
    }
    std::erase_if(one.mayGoOn, [&](std::uint32_t handle) {
        return std::find(up.begin(), up.end(), handle) == up.end();
    });
    std::erase_if(up, [&](std::uint32_t handle) { return one.mayGoOn.count(handle) != 0; });
    if (!up.empty()) {
        const int number = one.plan.number;
        hangUp(up);
        if (forms().frmMain.loaded()) {
            SayBlocked(number);
        }
    }
}

} // namespace

void CheckPlans() {
    guarded("CheckPlans", [] {
        if (!plans().areThere()) {
            return;
        }
        ShowPlans();
        if (!ledger().inUse()) {
            return;
        }
        std::vector<int> numbers;
        for (const PlanInUse& one : plans().all) {
            numbers.push_back(one.plan.number);
        }
        for (const int number : numbers) {
            if (!forms().frmMain.loaded()) {
                return; // what the program has saved stays as it is
            }
            checkThresholds(number);
            PlanInUse* const one = plans().withNumber(number);
            if (one != nullptr && forms().frmMain.loaded()) {
                checkBlock(*one);
            }
        }
    });
}

} // namespace tarvik
