#include "plan/Plans.h"

#include <algorithm>

namespace tarvik {

namespace {
constexpr std::chrono::minutes betweenOutlooks{1};
} // namespace

PlanInUse* Plans::withNumber(int number) {
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const PlanInUse& one) { return one.plan.number == number; });
    return found == all.end() ? nullptr : &*found;
}

PlanInUse* Plans::find(const PlanKey& key) {
    PlanInUse* const found = withNumber(key.number);
    return found != nullptr && found->plan.key() == key ? found : nullptr;
}

PlanInUse* Plans::shown() {
    const Plan* const plan = draft.shown();
    return plan == nullptr ? nullptr : find(plan->key());
}

void Plans::look(const History& history, Moment now, const Zone& zone) {
    for (PlanInUse& one : all) {
        if (!one.meter || !one.meter->holdsAt(now)) {
            one.meter = meterOf(one.plan, history, now, zone);
            one.outlookUntil = now;
        }
    }
}

void Plans::lookAhead(const History& history, Moment now, const Zone& zone,
                      const Capacity& capacity) {
    for (PlanInUse& one : all) {
        // A clock that is set back does not keep an old one.
        if (now < one.outlookUntil && one.outlookUntil <= now + betweenOutlooks) {
            continue;
        }
        one.outlookUntil = now + betweenOutlooks;
        one.budget.reset();
        one.forecast.reset();
        if (one.meter) {
            const Standing& standing = one.meter->standing;
            one.budget = budgetOf(one.plan, history, standing, now, zone);
            one.forecast = forecastOf(one.plan, history, standing, now, zone, capacity);
        }
    }
}

void Plans::take(const LedgerEntry& entry) {
    for (PlanInUse& one : all) {
        if (one.meter) {
            addTo(*one.meter, one.plan, entry);
        }
    }
}

void Plans::forget() {
    for (PlanInUse& one : all) {
        one.meter.reset();
        one.outlookUntil = {};
    }
}

Plans& plans() {
    return PlansScope::get("no plans are in place");
}

} // namespace tarvik
