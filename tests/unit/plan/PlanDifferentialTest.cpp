#include "plan/Forecast.h"
#include "plan/PlanTest.h"
#include "plan/ReferencePlan.h"
#include "plan/Thresholds.h"
#include "soak/Chance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace tarvik::planned {
namespace {

using reference::Account;
using reference::Changes;
using reference::Pair;
using reference::Spans;
using soak::Chance;

constexpr int cases = 200'000;

/// A plan, a moment, a zone and what was carried, all by chance.
class ChanceCase {
public:
    explicit ChanceCase(Chance& chance) : chance_(chance) {
        moment = Moment(std::chrono::seconds(chance.between(63'072'000, 4'000'000'000)));
        if (chance.onceIn(4)) {
            moment = quarterOf(moment);
        }
        drawZone();
        drawPlan();
        drawPeriod();
        drawHistory();
        drawNotes();
    }

    Moment moment;
    Changes changes;
    Plan plan;
    LedgerContents contents;
    std::vector<LedgerEntry> unwritten;
    Capacity capacity;

    Zone zone() const {
        return [this](Moment at) {
            return std::chrono::minutes(reference::aheadAt(changes, at.time_since_epoch().count()) /
                                        60);
        };
    }

private:
    /// So far from the moment, either way.
    Moment near(int days) {
        const auto range = static_cast<std::uint64_t>(days) * 86'400;
        return moment + std::chrono::seconds(static_cast<std::int64_t>(chance_.below(2 * range)) -
                                             static_cast<std::int64_t>(range));
    }
    LocalDay dayNear(int days) { return dayOf(localOf(near(days), 0min)); }

    /// Up to three changes by an hour or a half, days apart.
    void drawZone() {
        std::int64_t ahead = static_cast<std::int64_t>(chance_.between(0, 100)) * 900 - 45'000;
        changes = {{INT64_MIN, ahead}};
        std::int64_t at = near(150).time_since_epoch().count();
        for (std::uint64_t left = chance_.below(4); left > 0; --left) {
            static constexpr std::array<std::int64_t, 4> steps{3600, -3600, 1800, 7200};
            ahead += steps[chance_.index(steps.size())];
            changes.emplace_back(at - at % 1800, ahead);
            at += static_cast<std::int64_t>(chance_.between(3, 200)) * 86'400;
        }
    }

    void drawPlan() {
        plan.number = 4;
        plan.made = near(200);
        plan.lines = chance_.onceIn(3) ? std::vector<std::string>{"Office", "Ridge"}
                                       : std::vector<std::string>{};
        plan.counted = static_cast<Counted>(chance_.below(4));
        if (!chance_.onceIn(5)) {
            plan.allowance = DataSize{.thousandths = chance_.between(1, 20'000),
                                      .unit = static_cast<SizeUnit>(chance_.below(2) * 3)};
        }
        if (chance_.onceIn(3)) {
            plan.hours = static_cast<int>(chance_.between(1, 40));
        }
        plan.rollOver = static_cast<RollOver>(chance_.below(3));
        plan.rollOverMost = {.thousandths = chance_.below(5'000), .unit = SizeUnit::MB};
        plan.rollOverHours = static_cast<int>(chance_.below(10));
        plan.reservePercent = static_cast<int>(chance_.onceIn(2) ? 0 : chance_.below(100));
        plan.dealOut = static_cast<DealOut>(chance_.below(2));
        capacity.lines = static_cast<std::uint32_t>(chance_.between(1, 3));
        if (chance_.onceIn(2)) {
            capacity.bytesPerSecond = chance_.below(2'000);
        }
    }

    void drawPeriod() {
        PeriodRule& rule = plan.period;
        rule.kind = static_cast<PeriodKind>(chance_.below(6));
        rule.hour = static_cast<int>(chance_.onceIn(3) ? 0 : chance_.below(24));
        rule.day =
            static_cast<int>(chance_.onceIn(2) ? chance_.between(28, 31) : chance_.between(1, 31));
        rule.every = static_cast<int>(rule.kind == PeriodKind::Weeks ? chance_.between(1, 9)
                                                                     : chance_.between(1, 70));
        rule.weekday = static_cast<int>(chance_.between(1, 7));
        rule.from = dayNear(100);
        if (chance_.onceIn(2)) {
            rule.until = dayNear(100);
        }
    }

    LedgerEntry drawEntry() {
        static const std::array<std::string, 3> names{"Ridge", "Harbour", "Office"};
        LedgerEntry entry = carriedAt(quarterOf(near(60)), chance_.below(1U << 20U),
                                      chance_.below(1U << 20U), names[chance_.index(names.size())]);
        entry.inside = chance_.onceIn(4);
        if (chance_.onceIn(3)) { // at a boundary, or beside it
            const auto period = periodAt(plan.period, moment, zone());
            entry.at = period ? quarterOf(chance_.onceIn(2) ? period->begin : period->end) -
                                    std::chrono::minutes(15 * chance_.below(2))
                              : entry.at;
        }
        return entry;
    }

    void drawHistory() {
        contents.head.begun = near(chance_.onceIn(2) ? 60 : 20);
        std::vector<LedgerEntry> entries;
        for (std::uint64_t left = chance_.between(0, 14); left > 0; --left) {
            entries.push_back(drawEntry());
        }
        enter(contents, entries);
        for (std::uint64_t left = chance_.below(3); left > 0; --left) {
            unwritten.push_back(drawEntry());
        }
    }

    void drawNotes() {
        for (std::uint64_t left = chance_.below(5); left > 0; --left) {
            LedgerNote note{.at = near(20),
                            .ahead = std::chrono::minutes(chance_.below(300)),
                            .plan = static_cast<int>(chance_.between(3, 4))};
            if (chance_.onceIn(2)) {
                note.what = ProvidersFigure{static_cast<Measure>(chance_.below(2)),
                                            chance_.below(1U << 22U), chance_.below(1U << 22U)};
            } else {
                note.what = Extension{chance_.below(1U << 22U), chance_.below(1U << 22U),
                                      chance_.onceIn(2)};
            }
            contents.notes.push_back(note);
            if (chance_.onceIn(4)) {
                note.what = TakenBack{chance_.onceIn(2), note.at};
                contents.notes.push_back(note);
            }
        }
    }

    Chance& chance_;
};

Pair pairOf(const Quantity& quantity) {
    return {quantity.bytes, quantity.milliseconds};
}

std::optional<Pair> pairOf(const std::optional<Forecast>& forecast, Quantity Forecast::*member) {
    return forecast ? std::optional(pairOf((*forecast).*member)) : std::nullopt;
}

std::int64_t secondsOf(Moment moment) {
    return moment.time_since_epoch().count();
}

/// The whole ledger as the reference reads it.
LedgerContents allOf(const ChanceCase& drawn) {
    LedgerContents contents = drawn.contents;
    contents.entries.insert(contents.entries.end(), drawn.unwritten.begin(), drawn.unwritten.end());
    return contents;
}

void expectPeriods(const ChanceCase& drawn, const Standing& standing, const Spans& spans) {
    const Period& period = standing.period;
    ASSERT_EQ(secondsOf(period.begin), spans.now.begin);
    ASSERT_EQ(secondsOf(period.end), spans.now.end);
    const auto before = periodOf(drawn.plan.period, period.number - 1, drawn.zone());
    ASSERT_EQ(before.has_value(), spans.before.has_value());
    if (before) {
        ASSERT_EQ(secondsOf(before->begin), spans.before->begin);
        ASSERT_EQ(before->end, period.begin);
    }
    if (const auto next = periodOf(drawn.plan.period, period.number + 1, drawn.zone())) {
        ASSERT_EQ(next->begin, period.end);
        ASSERT_GT(next->end, next->begin);
    }
}

void expectInvariants(const Standing& standing, const std::optional<Budget>& budget,
                      const std::optional<Forecast>& forecast) {
    ASSERT_EQ(standing.used + standing.left(), standing.total() + standing.over());
    if (budget) {
        ASSERT_GE(budget->daysLeft, 1);
        ASSERT_EQ(lesser(budget->perDay, standing.left()), budget->perDay);
        ASSERT_EQ(lesser(budget->today, standing.left()), budget->today);
    }
    if (forecast) {
        ASSERT_EQ(lesser(forecast->least, forecast->expected), forecast->least);
        ASSERT_EQ(lesser(forecast->expected, forecast->most), forecast->expected);
        ASSERT_EQ(lesser(standing.used, forecast->least), standing.used);
    }
}

void expectSame(const ChanceCase& drawn, const Standing& standing, const Spans& spans) {
    const History history(drawn.contents, drawn.unwritten);
    const Zone zone = drawn.zone();
    const auto budget = budgetOf(drawn.plan, history, standing, drawn.moment, zone);
    const auto forecast =
        forecastOf(drawn.plan, history, standing, drawn.moment, zone, drawn.capacity);
    const Account account =
        accountOf(drawn.plan, allOf(drawn), spans, secondsOf(drawn.moment), drawn.changes,
                  drawn.capacity.bytesPerSecond, drawn.capacity.lines);
    ASSERT_EQ(pairOf(standing.used), account.used);
    ASSERT_EQ(pairOf(standing.rolledOver), account.rolledOver);
    ASSERT_EQ(pairOf(standing.extended), account.extended);
    ASSERT_EQ(pairOf(standing.extendedToday), account.extendedToday);
    ASSERT_EQ(pairOf(standing.total()), account.total);
    ASSERT_EQ(budget.has_value(), account.daysLeft.has_value());
    if (budget) {
        ASSERT_EQ(budget->daysLeft, *account.daysLeft);
        ASSERT_EQ(pairOf(budget->perDay), account.perDay);
        ASSERT_EQ(pairOf(budget->today), account.today);
    }
    ASSERT_EQ(pairOf(forecast, &Forecast::expected), account.expected);
    ASSERT_EQ(pairOf(forecast, &Forecast::least), account.least);
    ASSERT_EQ(pairOf(forecast, &Forecast::most), account.most);
    expectInvariants(standing, budget, forecast);
}

TEST(PlanDifferentialTest, TwoStatementsOfAPlanTellTheSame) {
    Chance chance(20'261'123);
    int withPeriod = 0;
    for (int i = 0; i < cases && !testing::Test::HasFatalFailure(); ++i) {
        SCOPED_TRACE(i);
        const ChanceCase drawn(chance);
        const auto standing = standingOf(drawn.plan, History(drawn.contents, drawn.unwritten),
                                         drawn.moment, drawn.zone());
        const auto spans =
            reference::spansAt(drawn.plan.period, secondsOf(drawn.moment), drawn.changes);
        ASSERT_EQ(standing.has_value(), spans.has_value());
        if (standing) {
            ++withPeriod;
            expectPeriods(drawn, *standing, *spans);
            expectSame(drawn, *standing, *spans);
        }
    }
    EXPECT_GT(withPeriod, cases / 2);
}

} // namespace
} // namespace tarvik::planned
