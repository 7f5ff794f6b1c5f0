#pragma once

#include "plan/Forecast.h"
#include "plan/Plan.h"
#include "plan/Usage.h"
#include "types/Current.h"

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace tarvik {

/// A plan that the user has made, and what is known of it.
struct PlanInUse {
    Plan plan;
    /// As it stands in the file of settings; nothing where it does not.
    std::optional<Plan> inFile = {};
    /// Nothing where no period is, or no ledger.
    std::optional<Meter> meter = {};
    /// As of a minute ago at most; nothing where there is none.
    std::optional<Budget> budget = {};
    std::optional<Forecast> forecast = {};
    Moment outlookUntil{}; ///< when budget and forecast are reckoned anew
    /// Lines that were up when no more were to come; they may go on.
    std::set<std::uint32_t> mayGoOn = {};
    bool wasBlocked = false; ///< at the last look
};

/// What the user is making of the plans; none of it holds yet.
struct PlanDraft {
    std::vector<Plan> plans;   ///< by their numbers
    std::size_t selected = 0;  ///< its place; any other shows none
    std::size_t threshold = 0; ///< the place of the one that is shown

    /// Null where none is shown.
    Plan* shown() { return selected < plans.size() ? &plans[selected] : nullptr; }
};

/// The user's plans.
struct Plans {
    std::vector<PlanInUse> all; ///< by their numbers
    /// Numbers under which the file of settings has plans that are no more.
    std::set<int> toErase;
    PlanDraft draft; ///< as long as its window is open
    /// What the lines have told that they can carry together at most; 0 where one has not.
    std::uint64_t bytesPerSecond = 0;
    std::uint32_t mostLines = 0;  ///< that were up at a time
    std::chrono::minutes ahead{}; ///< of the user's clock at the last look

    bool areThere() const { return !all.empty(); }
    /// Null where there is none of that number.
    PlanInUse* withNumber(int number);
    /// Null where there is none any more.
    PlanInUse* find(const PlanKey& key);
    /// The plan in use that the draft shows; null where that is a new one, or none.
    PlanInUse* shown();

    /// Brings meters up to that moment that do not hold any more.
    void look(const History& history, Moment now, const Zone& zone);
    /// The same for budgets and forecasts, once in a minute.
    void lookAhead(const History& history, Moment now, const Zone& zone, const Capacity& capacity);
    /// A line has carried more.
    void take(const LedgerEntry& entry);
    /// What was written or set has changed: all is reckoned anew.
    void forget();
};

/// The plans in use. One must be in place (see `Current`).
Plans& plans();

using PlansScope = Current<Plans>;

} // namespace tarvik
