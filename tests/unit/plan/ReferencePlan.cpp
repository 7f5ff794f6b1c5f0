#include "plan/ReferencePlan.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace tarvik::reference {

namespace {

constexpr std::int64_t secondsInDay = 86'400;
constexpr std::int64_t endOfTime = 253'402'128'000; // 30 December 9999

bool isLeap(std::int64_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int lengthOfMonth(std::int64_t year, int month) {
    static constexpr std::array lengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[static_cast<std::size_t>(month) - 1] + (month == 2 && isLeap(year) ? 1 : 0);
}

/// A day of the calendar that is walked from.
struct Walker {
    std::int64_t number = 0; ///< days since 1 January 1970
    std::int64_t year = 1970;
    int month = 1;
    int day = 1;

    explicit Walker(std::int64_t wanted) {
        while (number + 366 < wanted) {
            number += isLeap(year) ? 366 : 365;
            ++year;
        }
        while (number < wanted) {
            forward();
        }
        while (number > wanted) {
            back();
        }
    }
    void forward() {
        ++number;
        if (++day > lengthOfMonth(year, month)) {
            day = 1;
            month = month == 12 ? 1 : month + 1;
            year += month == 1 ? 1 : 0;
        }
    }
    void back() {
        --number;
        if (--day == 0) {
            month = month == 1 ? 12 : month - 1;
            year -= month == 12 ? 1 : 0;
            day = lengthOfMonth(year, month);
        }
    }
};

std::int64_t dayNumber(std::int64_t local) {
    std::int64_t day = local / secondsInDay;
    return local % secondsInDay < 0 ? day - 1 : day;
}

/// The first moment whose clock shows that or more: the earliest of each stretch of the zone.
std::int64_t firstAt(const Changes& zone, std::int64_t local) {
    for (std::size_t i = 0; i < zone.size(); ++i) {
        const std::int64_t inStretch = std::max(zone[i].first, local - zone[i].second);
        if (i + 1 == zone.size() || inStretch < zone[i + 1].first) {
            return inStretch;
        }
    }
    return local;
}

std::int64_t serial(LocalDay day) {
    return day.time_since_epoch().count();
}

std::int64_t seconds(Moment moment) {
    return moment.time_since_epoch().count();
}

/// Whether a period begins on that day.
bool beginsOn(const PeriodRule& rule, const Walker& day) {
    const std::int64_t since = day.number - serial(rule.from);
    switch (rule.kind) {
    case PeriodKind::Month:
        return day.day == std::min(rule.day, lengthOfMonth(day.year, day.month));
    case PeriodKind::Days:
        return since >= 0 && since % rule.every == 0;
    case PeriodKind::Weeks:
        return since >= 0 && since % (7 * std::int64_t{rule.every}) == 0;
    case PeriodKind::Weekday: // 5 January 1970 was a Monday
        return ((day.number - 4) % 7 + 7) % 7 == rule.weekday - 1;
    case PeriodKind::Daily:
        return true;
    default:
        return since == 0;
    }
}

std::optional<Spans> packAt(const PeriodRule& rule, std::int64_t moment, const Changes& zone) {
    const auto at = [&](LocalDay day) {
        return firstAt(zone, serial(day) * secondsInDay + rule.hour * 3600);
    };
    const Span pack{at(rule.from), rule.until ? at(*rule.until) : endOfTime};
    return pack.begin <= moment && moment < pack.end
               ? std::optional(Spans{.before = std::nullopt, .now = pack})
               : std::nullopt;
}

bool counts(const Plan& plan, const LedgerEntry& entry) {
    if (plan.lines.empty()) {
        return !entry.inside;
    }
    return std::any_of(plan.lines.begin(), plan.lines.end(),
                       [&](const std::string& name) { return name == entry.line; });
}

struct Sum {
    std::uint64_t rcvd = 0;
    std::uint64_t sent = 0;
    std::uint64_t time = 0;

    void add(const Sum& other) {
        rcvd += other.rcvd;
        sent += other.sent;
        time += other.time;
    }
    Sum part(std::uint64_t part, std::uint64_t whole) const {
        return whole == 0 ? Sum()
                          : Sum{rcvd * part / whole, sent * part / whole, time * part / whole};
    }
};

Sum sumBetween(const Plan& plan, const LedgerContents& contents, std::int64_t from,
               std::int64_t to) {
    Sum sum;
    for (const LedgerEntry& one : contents.entries) {
        if (seconds(one.at) >= from && seconds(one.at) < to && counts(plan, one)) {
            sum.add({one.traffic.rcvd, one.traffic.sent, one.traffic.milliseconds});
        }
    }
    return sum;
}

Pair pairOf(const Plan& plan, const Sum& sum) {
    const std::uint64_t larger = sum.rcvd < sum.sent ? sum.sent : sum.rcvd;
    const std::array<std::uint64_t, 4> bytes{sum.rcvd + sum.sent, sum.rcvd, sum.sent, larger};
    return {bytes[static_cast<std::size_t>(plan.counted)], sum.time};
}

std::uint64_t orNothing(std::uint64_t a, std::uint64_t b) {
    return a < b ? 0 : a - b;
}

bool isBack(const LedgerContents& contents, const LedgerNote& note, bool extension) {
    for (const LedgerNote& one : contents.notes) {
        const auto* const back = std::get_if<TakenBack>(&one.what);
        if (back != nullptr && one.plan == note.plan && back->at == note.at &&
            back->extension == extension) {
            return true;
        }
    }
    return false;
}

bool isHeard(const Plan& plan, const LedgerNote& note, Span span) {
    return note.plan == plan.number && note.at >= plan.made && seconds(note.at) >= span.begin &&
           seconds(note.at) < span.end;
}

std::uint64_t corrected(const Plan& plan, const LedgerContents& contents, Span span,
                        std::int64_t before, Measure measure, std::uint64_t counted) {
    std::int64_t last = INT64_MIN;
    std::uint64_t result = counted;
    for (const LedgerNote& one : contents.notes) {
        const auto* const figure = std::get_if<ProvidersFigure>(&one.what);
        if (figure != nullptr && figure->measure == measure && isHeard(plan, one, span) &&
            seconds(one.at) < before && seconds(one.at) >= last && !isBack(contents, one, false)) {
            last = seconds(one.at);
            const std::uint64_t sum = figure->told + counted;
            result = sum < figure->counted ? 0 : sum - figure->counted;
        }
    }
    return result;
}

/// The provider has said what was used of it.
bool isTold(const Plan& plan, const LedgerContents& contents, Span span, Measure measure) {
    return std::any_of(contents.notes.begin(), contents.notes.end(), [&](const LedgerNote& one) {
        const auto* const figure = std::get_if<ProvidersFigure>(&one.what);
        return figure != nullptr && figure->measure == measure && isHeard(plan, one, span) &&
               !isBack(contents, one, false);
    });
}

Pair usedBefore(const Plan& plan, const LedgerContents& contents, Span span, std::int64_t before) {
    const Pair counted =
        pairOf(plan, sumBetween(plan, contents, span.begin, std::min(before, span.end)));
    return {corrected(plan, contents, span, before, Measure::Bytes, counted.bytes),
            corrected(plan, contents, span, before, Measure::Time, counted.time)};
}

Pair allowed(const Plan& plan) {
    return {plan.allowance ? plan.allowance->bytes() : 0,
            plan.hours ? static_cast<std::uint64_t>(*plan.hours) * 3'600'000 : 0};
}

Pair rolledOver(const Plan& plan, const LedgerContents& contents, const Spans& spans) {
    if (plan.rollOver == RollOver::None || !spans.before) {
        return {};
    }
    const Pair used = usedBefore(plan, contents, *spans.before, spans.before->end);
    Pair unused{orNothing(allowed(plan).bytes, used.bytes),
                orNothing(allowed(plan).time, used.time)};
    const bool isWhole = seconds(contents.head.begun) <= spans.before->begin;
    unused.bytes =
        isWhole || isTold(plan, contents, *spans.before, Measure::Bytes) ? unused.bytes : 0;
    unused.time = isWhole || isTold(plan, contents, *spans.before, Measure::Time) ? unused.time : 0;
    if (plan.rollOver == RollOver::UpTo) {
        const std::uint64_t mostTime = static_cast<std::uint64_t>(plan.rollOverHours) * 3'600'000;
        unused.bytes = std::min(unused.bytes, plan.rollOverMost.bytes());
        unused.time = std::min(unused.time, mostTime);
    }
    return unused;
}

/// By extensions to the period's end, and by those for today.
std::pair<Pair, Pair> extended(const Plan& plan, const LedgerContents& contents, Span span,
                               std::int64_t moment, const Changes& zone) {
    Pair lasting;
    Pair today;
    for (const LedgerNote& one : contents.notes) {
        const auto* const extension = std::get_if<Extension>(&one.what);
        if (extension == nullptr || !isHeard(plan, one, span) || isBack(contents, one, true)) {
            continue;
        }
        const std::int64_t day = dayNumber(seconds(one.at) + one.ahead.count() * 60);
        if (!extension->today || moment < firstAt(zone, (day + 1) * secondsInDay)) {
            Pair& sum = extension->today ? today : lasting;
            sum.bytes += plan.allowance ? extension->bytes : 0;
            sum.time += plan.hours ? extension->milliseconds : 0;
        }
    }
    return {lasting, today};
}

/// What a day carries: its moments and what it carried.
struct Days {
    const Plan& plan;
    const LedgerContents& contents;
    const Changes& zone;
    std::int64_t today;

    std::int64_t begin(std::int64_t day) const { return firstAt(zone, day * secondsInDay); }
    Sum carried(std::int64_t day) const {
        return sumBetween(plan, contents, begin(day), begin(day + 1));
    }
    /// As the rest of the period from that moment would be in one of the weeks before.
    Sum rest(std::int64_t moment, std::int64_t end, std::int64_t week) const {
        std::array<Sum, 7> known;
        for (std::int64_t i = 0; i < 7; ++i) {
            known[static_cast<std::size_t>(i)] = carried(today - 7 * (week + 1) + i);
        }
        Sum sum;
        for (std::int64_t day = today; begin(day) < end; ++day) {
            const std::int64_t from = std::max(begin(day), moment);
            const std::int64_t to = std::min(begin(day + 1), end);
            const Sum& like = known[static_cast<std::size_t>((day - today) % 7)];
            sum.add(like.part(static_cast<std::uint64_t>(to - from),
                              static_cast<std::uint64_t>(begin(day + 1) - begin(day))));
        }
        return sum;
    }
};

void tellBudget(const Plan& plan, const LedgerContents& contents, Span span, std::int64_t moment,
                const Changes& zone, Account& account) {
    if (span.end == endOfTime || (!plan.allowance && !plan.hours)) {
        return;
    }
    const auto dayOfMoment = [&](std::int64_t at) { return dayNumber(at + aheadAt(zone, at)); };
    const std::int64_t today = dayOfMoment(moment);
    const std::int64_t first = dayOfMoment(span.begin);
    const std::int64_t last = dayOfMoment(span.end - 1);
    account.daysLeft = last - today + 1;
    const std::int64_t midnight = std::max(firstAt(zone, today * secondsInDay), span.begin);
    const Pair before = usedBefore(plan, contents, span, midnight);
    const auto left = static_cast<std::uint64_t>(last - today + 1);
    const auto passed = static_cast<std::uint64_t>(today - first + 1);
    const auto all = static_cast<std::uint64_t>(last - first + 1);
    const auto deal = [&](std::uint64_t whole, std::uint64_t used, std::uint64_t usedThen,
                          std::uint64_t more) {
        const std::uint64_t total =
            whole - whole * static_cast<std::uint64_t>(plan.reservePercent) / 100;
        const std::uint64_t rest = orNothing(total, used);
        const std::uint64_t lasting = orNothing(total, more);
        const std::uint64_t part = plan.dealOut == DealOut::Evenly
                                       ? orNothing(lasting, usedThen) / left
                                       : orNothing(lasting * passed / all, usedThen);
        const std::uint64_t ofToday = orNothing(part + more, orNothing(used, usedThen));
        return std::pair(orNothing(lasting, used) / left, std::min(ofToday, rest));
    };
    if (plan.allowance) {
        std::tie(account.perDay.bytes, account.today.bytes) = deal(
            account.total.bytes, account.used.bytes, before.bytes, account.extendedToday.bytes);
    }
    if (plan.hours) {
        std::tie(account.perDay.time, account.today.time) =
            deal(account.total.time, account.used.time, before.time, account.extendedToday.time);
    }
}

/// Least, expected and most of one measure from four weeks.
std::array<std::uint64_t, 3> spread(const std::array<std::uint64_t, 4>& weeks) {
    std::uint64_t sum = 0;
    for (const std::uint64_t one : weeks) {
        sum += one;
    }
    return {*std::min_element(weeks.begin(), weeks.end()), sum / 4,
            *std::max_element(weeks.begin(), weeks.end())};
}

std::array<std::uint64_t, 3> around(std::uint64_t expected, std::uint64_t elapsed) {
    const std::uint64_t doubt = expected / (1 + elapsed / secondsInDay);
    return {expected - doubt, expected, expected + doubt};
}

void tellForecast(const Plan& plan, const LedgerContents& contents, Span span, std::int64_t moment,
                  const Changes& zone, std::optional<std::uint64_t> bytesPerSecond,
                  std::uint64_t lines, Account& account) {
    const std::int64_t begun = seconds(contents.head.begun);
    const std::int64_t elapsed = moment - std::max(span.begin, begun);
    if (elapsed < 21'600 || span.end == endOfTime) {
        return;
    }
    const Days days{plan, contents, zone, dayNumber(moment + aheadAt(zone, moment))};
    const Sum soFar = sumBetween(plan, contents, span.begin, span.end);
    const auto left = static_cast<std::uint64_t>(span.end - moment);
    const auto more = [&](const Sum& rest) {
        Sum all = soFar;
        all.add(rest);
        return Pair{pairOf(plan, all).bytes - pairOf(plan, soFar).bytes,
                    pairOf(plan, all).time - pairOf(plan, soFar).time};
    };
    std::array<std::uint64_t, 3> bytes{};
    std::array<std::uint64_t, 3> time{};
    if (begun <= days.begin(days.today - 28)) {
        std::array<std::uint64_t, 4> byBytes{};
        std::array<std::uint64_t, 4> byTime{};
        for (std::size_t week = 0; week < 4; ++week) {
            const Pair one = more(days.rest(moment, span.end, static_cast<std::int64_t>(week)));
            byBytes[week] = one.bytes;
            byTime[week] = one.time;
        }
        bytes = spread(byBytes);
        time = spread(byTime);
    } else {
        const auto passed = static_cast<std::uint64_t>(elapsed);
        const Pair rest = more(soFar.part(left, passed));
        bytes = around(rest.bytes, passed);
        time = around(rest.time, passed);
    }
    const std::uint64_t directions = plan.counted == Counted::Both ? 2 : 1;
    const auto pairAt = [&](std::size_t i) {
        const std::uint64_t most =
            bytesPerSecond ? *bytesPerSecond * left * directions : UINT64_MAX;
        return Pair{account.used.bytes + std::min(bytes[i], most),
                    account.used.time + std::min(time[i], left * 1000 * lines)};
    };
    account.least = pairAt(0);
    account.expected = pairAt(1);
    account.most = pairAt(2);
}

} // namespace

std::int64_t aheadAt(const Changes& zone, std::int64_t moment) {
    std::int64_t ahead = zone.front().second;
    for (const auto& [from, then] : zone) {
        ahead = from <= moment ? then : ahead;
    }
    return ahead;
}

std::optional<Spans> spansAt(const PeriodRule& rule, std::int64_t moment, const Changes& zone) {
    if (rule.kind == PeriodKind::Pack) {
        return packAt(rule, moment, zone);
    }
    const std::int64_t today = dayNumber(moment + aheadAt(zone, moment));
    std::vector<std::int64_t> begins; // the later first
    Walker day(today + 2);
    const auto beginOf = [&] {
        return firstAt(zone, day.number * secondsInDay + rule.hour * 3600);
    };
    const bool hasFirst = rule.kind == PeriodKind::Days || rule.kind == PeriodKind::Weeks;
    const std::int64_t earliest = hasFirst ? serial(rule.from) : today - 800;
    int passed = 0;
    for (; passed < 2 && day.number >= earliest; day.back()) {
        if (beginsOn(rule, day)) {
            begins.push_back(beginOf());
            passed += begins.back() <= moment ? 1 : 0;
        }
    }
    if (passed == 0) {
        return std::nullopt;
    }
    const std::size_t current = begins.size() - static_cast<std::size_t>(passed);
    Spans spans{.before = std::nullopt, .now = {begins[current], 0}};
    if (passed == 2) {
        spans.before = Span{begins.back(), begins[current]};
    }
    if (current > 0) {
        spans.now.end = begins[current - 1];
        return spans;
    }
    day = Walker(today + 3);
    while (!beginsOn(rule, day)) {
        day.forward();
    }
    spans.now.end = beginOf();
    return spans;
}

Account accountOf(const Plan& plan, const LedgerContents& contents, const Spans& spans,
                  std::int64_t moment, const Changes& zone,
                  std::optional<std::uint64_t> bytesPerSecond, std::uint64_t lines) {
    Account account;
    account.used = usedBefore(plan, contents, spans.now, spans.now.end);
    account.rolledOver = rolledOver(plan, contents, spans);
    const auto [lasting, today] = extended(plan, contents, spans.now, moment, zone);
    account.extendedToday = today;
    account.extended = {lasting.bytes + today.bytes, lasting.time + today.time};
    account.total = {allowed(plan).bytes + account.rolledOver.bytes + account.extended.bytes,
                     allowed(plan).time + account.rolledOver.time + account.extended.time};
    tellBudget(plan, contents, spans.now, moment, zone, account);
    tellForecast(plan, contents, spans.now, moment, zone, bytesPerSecond, lines, account);
    return account;
}

} // namespace tarvik::reference
