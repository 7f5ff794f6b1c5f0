#pragma once

#include "ledger/LedgerContents.h"
#include "plan/Period.h"
#include "plan/Plan.h"
#include "types/Traffic.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tarvik {

/// An amount in both of what a plan counts in.
struct Quantity {
    std::uint64_t bytes = 0;
    std::uint64_t milliseconds = 0;

    std::uint64_t of(Measure measure) const {
        return measure == Measure::Bytes ? bytes : milliseconds;
    }

    friend bool operator==(const Quantity&, const Quantity&) = default;
    friend constexpr Quantity operator+(const Quantity& a, const Quantity& b) {
        return {sumUpTo(a.bytes, b.bytes), sumUpTo(a.milliseconds, b.milliseconds)};
    }
    /// Nothing where it is below zero.
    friend constexpr Quantity operator-(const Quantity& a, const Quantity& b) {
        return {lessDownTo(a.bytes, b.bytes), lessDownTo(a.milliseconds, b.milliseconds)};
    }
};

/// The lesser, or greater, of each.
Quantity lesser(const Quantity& a, const Quantity& b);
Quantity greater(const Quantity& a, const Quantity& b);

/// What the lines have carried: what a ledger says, and what is not in it yet. Both outlive it.
class History {
public:
    explicit History(const LedgerContents& contents, std::span<const LedgerEntry> unwritten = {})
        : contents_(contents), unwritten_(unwritten) {}

    const LedgerContents& contents() const { return contents_; }
    /// What the plan's lines have carried from the one moment up to, but not at, the other.
    Traffic carried(const Plan& plan, Moment from, Moment to) const;

private:
    const LedgerContents& contents_;
    std::span<const LedgerEntry> unwritten_;
};

/// What of that the plan counts.
Quantity countedOf(const Plan& plan, const Traffic& traffic);

/// What the plan allows in a period of its own; nothing in what it does not limit.
Quantity allowanceOf(const Plan& plan);
bool isLimited(const Plan& plan, Measure measure);

/// What was used of a period before a moment in it, or in all: what the provider said last, and
/// what was counted since.
Quantity usedOf(const Plan& plan, const History& history, const Period& period, Moment before);

/// What was said of the plan in the period and was not taken back: the provider's figures and the
/// extensions, those that are over too, the earlier first.
std::vector<LedgerNote> notesThatHold(const Plan& plan, const LedgerContents& contents,
                                      const Period& period);

/// How a plan stands.
struct Standing {
    Period period;
    Quantity used;
    Quantity allowance;
    Quantity rolledOver; ///< what the period before has left
    Quantity extended;
    Quantity extendedToday; ///< of that, what ends with the day

    /// All that may be used. used + left = total + over.
    Quantity total() const { return allowance + rolledOver + extended; }
    Quantity left() const { return total() - used; }
    Quantity over() const { return used - total(); }

    friend bool operator==(const Standing&, const Standing&) = default;
};

/// Of what the plan limits, that of which the larger part is used; bytes where both are the same.
Measure fullerMeasure(const Plan& plan, const Standing& standing);

/// How a plan stands, kept up as its lines carry more: what is added to it need not be looked for
/// in the history again.
struct Meter {
    Standing standing;
    Traffic carried; ///< by the plan's lines in the period
    /// What the provider said last in the period.
    std::optional<ProvidersFigure> bytes = {};
    std::optional<ProvidersFigure> time = {};
    Moment from{}; ///< when it was reckoned
    Moment until{};

    /// From there on nothing but what is carried, written or set has changed it.
    bool holdsAt(Moment moment) const { return from <= moment && moment < until; }
};

/// Whether the plan is reckoned from such a line.
bool countsLine(const Plan& plan, std::string_view line, bool inside);

/// Nothing where no period is.
std::optional<Meter> meterOf(const Plan& plan, const History& history, Moment now,
                             const Zone& zone);

/// A line has carried more.
void addTo(Meter& meter, const Plan& plan, const LedgerEntry& entry);

/// Nothing where no period is.
std::optional<Standing> standingOf(const Plan& plan, const History& history, Moment now,
                                   const Zone& zone);

} // namespace tarvik
