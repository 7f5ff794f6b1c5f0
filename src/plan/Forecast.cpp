#include "plan/Forecast.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tarvik {

namespace {

using std::chrono::days;

constexpr std::uint32_t weeksKnown = 4;
constexpr std::int64_t daysInWeek = 7;

LocalDay dayAt(Moment moment, const Zone& zone) {
    return dayOf(localOf(moment, zone(moment)));
}

/// A period's last day ends with it, or before.
LocalDay lastDayOf(const Period& period, const Zone& zone) {
    return dayAt(period.end - std::chrono::seconds(1), zone);
}

/// Whole seconds from one moment to another, as far as they can be counted.
std::uint32_t secondsFrom(Moment from, Moment to) {
    constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>((to - from).count(), 0, most));
}

Quantity partOf(const Quantity& whole, std::uint32_t part, std::uint32_t all) {
    return {portion(whole.bytes, part, all), portion(whole.milliseconds, part, all)};
}

Traffic partOf(const Traffic& whole, std::uint32_t part, std::uint32_t all) {
    return {portion(whole.rcvd, part, all), portion(whole.sent, part, all),
            portion(whole.milliseconds, part, all)};
}

std::uint32_t small(std::int64_t number) {
    constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(number, 1, most));
}

Quantity onlyLimited(const Plan& plan, const Quantity& quantity) {
    return {isLimited(plan, Measure::Bytes) ? quantity.bytes : 0,
            isLimited(plan, Measure::Time) ? quantity.milliseconds : 0};
}

/// What follows from the days that are still to come.
class Outlook {
public:
    Outlook(const Plan& plan, const History& history, const Period& period, Moment now,
            const Zone& zone)
        : plan_(plan), history_(history), period_(period), now_(now), zone_(zone),
          today_(dayAt(now, zone)), last_(lastDayOf(period, zone)) {}

    /// The ledger has the last four weeks.
    bool knowsWeeks() const {
        return history_.contents().head.begun <= beginOf(today_ - days(daysInWeek * weeksKnown));
    }

    /// What the rest of the period carries if its days are as those of that week, the last one
    /// being 0.
    Traffic restAsInWeek(std::uint32_t week) const {
        if (today_ == last_) {
            return shareOf(today_, now_, period_.end, week);
        }
        Traffic sum = shareOf(today_, now_, beginOf(today_ + days(1)), week) +
                      shareOf(last_, beginOf(last_), period_.end, week);
        const std::int64_t whole = (last_ - today_).count() - 1;
        for (std::int64_t i = 0; i < daysInWeek; ++i) {
            const std::int64_t times = whole / daysInWeek + (i < whole % daysInWeek ? 1 : 0);
            if (times > 0) {
                sum = sum + partOf(likeDay(today_ + days(1 + i), week), small(times), 1);
            }
        }
        return sum;
    }

private:
    Moment beginOf(LocalDay day) const { return momentOf(LocalMoment(day), zone_); }

    /// What the same day of the week has carried then.
    Traffic likeDay(LocalDay day, std::uint32_t week) const {
        const std::int64_t ahead = (day - today_).count() % daysInWeek;
        const LocalDay then = today_ + days(ahead - daysInWeek * (week + 1));
        return history_.carried(plan_, beginOf(then), beginOf(then + days(1)));
    }

    /// The part of it that belongs to a part of the day.
    Traffic shareOf(LocalDay day, Moment from, Moment to, std::uint32_t week) const {
        const std::uint32_t whole = secondsFrom(beginOf(day), beginOf(day + days(1)));
        const std::uint32_t part = std::min(secondsFrom(from, to), whole);
        return whole == 0 ? Traffic() : partOf(likeDay(day, week), part, whole);
    }

    const Plan& plan_;
    const History& history_;
    const Period& period_;
    Moment now_;
    const Zone& zone_;
    LocalDay today_;
    LocalDay last_;
};

/// What the rest of the period adds.
struct Rest {
    Quantity least;
    Quantity expected;
    Quantity most;
};
/// Exact, but for the fraction.
Quantity meanOf(const std::array<Quantity, weeksKnown>& weeks) {
    Quantity whole;
    Quantity rest;
    for (const Quantity& one : weeks) {
        const Quantity quarter = partOf(one, 1, weeksKnown);
        whole = whole + quarter;
        rest = rest + (one - partOf(quarter, weeksKnown, 1));
    }
    return whole + partOf(rest, 1, weeksKnown);
}

Rest restFrom(const std::array<Quantity, weeksKnown>& weeks) {
    Rest rest{.least = weeks[0], .expected = meanOf(weeks), .most = weeks[0]};
    for (const Quantity& one : weeks) {
        rest.least = lesser(rest.least, one);
        rest.most = greater(rest.most, one);
    }
    return rest;
}

Rest restAround(const Quantity& expected, std::uint32_t secondsKnown) {
    constexpr std::uint32_t secondsInDay = 86'400;
    const Quantity doubt = partOf(expected, 1, 1 + secondsKnown / secondsInDay);
    return {.least = expected - doubt, .expected = expected, .most = expected + doubt};
}

/// A line carries as much in either direction at a time.
Quantity mostIn(std::uint32_t seconds, const Plan& plan, const Capacity& capacity) {
    const std::uint32_t directions = plan.counted == Counted::Both ? 2 : 1;
    constexpr std::uint64_t millisecondsInSecond = 1000;
    return {capacity.bytesPerSecond
                ? portion(portion(*capacity.bytesPerSecond, seconds, 1), directions, 1)
                : std::numeric_limits<std::uint64_t>::max(),
            portion(seconds * millisecondsInSecond, capacity.lines, 1)};
}

} // namespace

std::optional<Budget> budgetOf(const Plan& plan, const History& history, const Standing& standing,
                               Moment now, const Zone& zone) {
    const Period& period = standing.period;
    if (period.end == Period::endless || !(plan.allowance || plan.hours)) {
        return std::nullopt;
    }
    constexpr std::uint32_t hundred = 100;
    const LocalDay today = dayAt(now, zone);
    const LocalDay first = dayAt(period.begin, zone);
    const LocalDay last = lastDayOf(period, zone);
    const Moment midnight = momentOf(LocalMoment(today), zone);
    const Quantity total =
        standing.total() -
        partOf(standing.total(), static_cast<std::uint32_t>(plan.reservePercent), hundred);
    const Quantity left = total - standing.used;
    const Quantity lasting = total - standing.extendedToday;
    const Quantity before = usedOf(plan, history, period, midnight);
    const std::uint32_t daysLeft = small((last - today).count() + 1);
    const Quantity ofToday = plan.dealOut == DealOut::Evenly
                                 ? partOf(lasting - before, 1, daysLeft)
                                 : partOf(lasting, small((today - first).count() + 1),
                                          small((last - first).count() + 1)) -
                                       before;
    return Budget{
        .daysLeft = daysLeft,
        .perDay = onlyLimited(plan, partOf(lasting - standing.used, 1, daysLeft)),
        .today = onlyLimited(
            plan, lesser(ofToday + standing.extendedToday - (standing.used - before), left))};
}

std::optional<Forecast> forecastOf(const Plan& plan, const History& history,
                                   const Standing& standing, Moment now, const Zone& zone,
                                   const Capacity& capacity) {
    constexpr std::uint32_t leastKnown = 6 * 3600;
    const Period& period = standing.period;
    const Moment since = std::max(period.begin, history.contents().head.begun);
    const std::uint32_t elapsed = secondsFrom(since, now);
    if (elapsed < leastKnown || period.end == Period::endless) {
        return std::nullopt;
    }
    const Traffic soFar = history.carried(plan, period.begin, period.end);
    const std::uint32_t left = secondsFrom(now, period.end);
    const auto added = [&](const Traffic& rest) {
        return countedOf(plan, soFar + rest) - countedOf(plan, soFar);
    };
    const Outlook outlook(plan, history, period, now, zone);
    Rest rest;
    if (outlook.knowsWeeks()) {
        std::array<Quantity, weeksKnown> weeks;
        for (std::uint32_t week = 0; week < weeksKnown; ++week) {
            weeks[week] = added(outlook.restAsInWeek(week));
        }
        rest = restFrom(weeks);
    } else {
        rest = restAround(added(partOf(soFar, left, elapsed)), elapsed);
    }
    const Quantity most = mostIn(left, plan, capacity);
    return Forecast{.least = standing.used + lesser(rest.least, most),
                    .expected = standing.used + lesser(rest.expected, most),
                    .most = standing.used + lesser(rest.most, most)};
}

} // namespace tarvik
