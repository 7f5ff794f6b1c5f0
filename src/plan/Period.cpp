#include "plan/Period.h"

#include "ports/Clock.h"

#include <algorithm>

namespace tarvik {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::weeks;

constexpr std::int64_t monthsInYear = 12;
/// A Monday, from which weeks are counted whose beginning nobody has given.
constexpr LocalDay someMonday{std::chrono::local_days(std::chrono::year{1970} / 1 / 5)};

/// The moment of the change, later than one that is `ahead` and at `after` at the latest.
Moment changeBetween(Moment before, Moment after, const Zone& zone) {
    const minutes ahead = zone(before);
    while (after - before > std::chrono::seconds(1)) {
        const Moment middle = before + (after - before) / 2;
        (zone(middle) == ahead ? before : after) = middle;
    }
    return after;
}

days lengthOf(const PeriodRule& rule) {
    switch (rule.kind) {
    case PeriodKind::Days:
        return days(rule.every);
    case PeriodKind::Weeks:
        return weeks(rule.every);
    case PeriodKind::Daily:
        return days(1);
    default:
        return weeks(1);
    }
}

/// The day on which the period number 0 begins, where all are of the same length.
LocalDay anchorOf(const PeriodRule& rule) {
    switch (rule.kind) {
    case PeriodKind::Weekday:
        return someMonday + days(rule.weekday - 1);
    case PeriodKind::Daily:
        return someMonday;
    default:
        return rule.from;
    }
}

/// The user has given the date of the first one.
bool hasFirst(const PeriodRule& rule) {
    return rule.kind == PeriodKind::Days || rule.kind == PeriodKind::Weeks ||
           rule.kind == PeriodKind::Pack;
}

LocalDay dayInMonth(std::int64_t month, int day) {
    const auto first = std::chrono::year(static_cast<int>(month / monthsInYear)) /
                       std::chrono::month(static_cast<unsigned>(month % monthsInYear + 1));
    const std::chrono::day last = std::chrono::year_month_day(first / std::chrono::last).day();
    return LocalDay(first / std::min(std::chrono::day(static_cast<unsigned>(day)), last));
}

/// When the period of that number begins.
LocalMoment beginOf(const PeriodRule& rule, std::int64_t number) {
    const LocalDay day = rule.kind == PeriodKind::Month ? dayInMonth(number, rule.day)
                                                        : anchorOf(rule) + lengthOf(rule) * number;
    return day + hours(rule.hour);
}

/// The number of a period near that time.
std::int64_t numberNear(const PeriodRule& rule, LocalMoment local) {
    const LocalDay day = dayOf(local);
    if (rule.kind == PeriodKind::Month) {
        const std::chrono::year_month_day date(day);
        return static_cast<int>(date.year()) * monthsInYear + static_cast<unsigned>(date.month()) -
               1;
    }
    const auto distance = (day - anchorOf(rule)).count();
    const auto length = lengthOf(rule).count();
    return distance / length - (distance % length < 0 ? 1 : 0);
}

std::optional<Period> packOf(const PeriodRule& rule, const Zone& zone) {
    const LocalMoment local = rule.from + hours(rule.hour);
    const Period pack{.number = 0,
                      .local = local,
                      .begin = momentOf(local, zone),
                      .end = rule.until ? momentOf(*rule.until + hours(rule.hour), zone)
                                        : Period::endless};
    return pack.begin < pack.end ? std::optional(pack) : std::nullopt;
}

} // namespace

Zone zoneOf(Clock& clock) {
    return [&clock](Moment moment) {
        constexpr std::int64_t millisecondsInSecond = 1000;
        return minutes(
            clock.minutesAhead(moment.time_since_epoch().count() * millisecondsInSecond));
    };
}

Moment momentOf(LocalMoment local, const Zone& zone) {
    constexpr hours farthest{25};
    const Moment before = momentOf(local, farthest);
    const minutes ahead = zone(before);
    const Moment without = momentOf(local, ahead);
    const minutes aheadThen = zone(without);
    if (aheadThen == ahead) {
        return without;
    }
    return std::max(momentOf(local, aheadThen), changeBetween(before, without, zone));
}

std::optional<Period> periodOf(const PeriodRule& rule, std::int64_t number, const Zone& zone) {
    if (hasFirst(rule) && (number < 0 || (rule.kind == PeriodKind::Pack && number > 0))) {
        return std::nullopt;
    }
    if (rule.kind == PeriodKind::Pack) {
        return packOf(rule, zone);
    }
    const LocalMoment local = beginOf(rule, number);
    return Period{.number = number,
                  .local = local,
                  .begin = momentOf(local, zone),
                  .end = momentOf(beginOf(rule, number + 1), zone)};
}

std::optional<Period> periodAt(const PeriodRule& rule, Moment moment, const Zone& zone) {
    moment = std::clamp(moment, firstMoment, lastMoment);
    const std::int64_t near =
        rule.kind == PeriodKind::Pack ? 0 : numberNear(rule, localOf(moment, zone(moment)));
    std::optional<Period> period = periodOf(rule, near, zone);
    while (period && moment < period->begin) {
        period = periodOf(rule, period->number - 1, zone);
    }
    while (period && moment >= period->end) {
        period = periodOf(rule, period->number + 1, zone);
    }
    return period && period->has(moment) ? period : std::nullopt;
}

} // namespace tarvik
