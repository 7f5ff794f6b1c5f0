#include "plan/Usage.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::uint64_t millisecondsInHour = 3'600'000;

bool isOfPlan(const Plan& plan, const LedgerEntry& entry) {
    return countsLine(plan, entry.line, entry.inside);
}

bool isOfPlan(const Plan& plan, const LedgerNote& note) {
    return note.plan == plan.number && note.at >= plan.made;
}

bool isTakenBack(const LedgerContents& contents, const LedgerNote& note) {
    const bool extension = std::holds_alternative<Extension>(note.what);
    return std::any_of(contents.notes.begin(), contents.notes.end(), [&](const LedgerNote& one) {
        const auto* const back = std::get_if<TakenBack>(&one.what);
        return back != nullptr && one.plan == note.plan && back->extension == extension &&
               back->at == note.at;
    });
}

/// What the provider said last of the period before that moment, if that holds.
std::optional<ProvidersFigure> lastFigure(const Plan& plan, const LedgerContents& contents,
                                          Measure measure, const Period& period, Moment before) {
    const LedgerNote* last = nullptr;
    for (const LedgerNote& one : contents.notes) {
        const auto* const figure = std::get_if<ProvidersFigure>(&one.what);
        if (figure != nullptr && figure->measure == measure && isOfPlan(plan, one) &&
            period.has(one.at) && one.at < before && (last == nullptr || one.at >= last->at) &&
            !isTakenBack(contents, one)) {
            last = &one;
        }
    }
    return last == nullptr ? std::nullopt : std::optional(std::get<ProvidersFigure>(last->what));
}

std::uint64_t correctedBy(const std::optional<ProvidersFigure>& figure, std::uint64_t counted) {
    if (!figure) {
        return counted;
    }
    return counted >= figure->counted ? sumUpTo(figure->told, counted - figure->counted)
                                      : lessDownTo(figure->told, figure->counted - counted);
}

/// One for today ends with the user's day.
Moment endOf(const Extension& extension, const LedgerNote& note, const Zone& zone) {
    const LocalDay day = dayOf(localOf(note.at, note.ahead));
    return extension.today ? momentOf(LocalMoment(day + std::chrono::days(1)), zone)
                           : Period::endless;
}

/// In what the plan limits.
Quantity limitedPart(const Plan& plan, const Quantity& quantity) {
    return {isLimited(plan, Measure::Bytes) ? quantity.bytes : 0,
            isLimited(plan, Measure::Time) ? quantity.milliseconds : 0};
}

/// What extensions add at a moment, and when the first of them ends.
struct Extended {
    Quantity sum;
    Quantity today; ///< of that, what ends with the day
    Moment until = Period::endless;
};

Extended extendedBy(const Plan& plan, const LedgerContents& contents, const Period& period,
                    Moment now, const Zone& zone) {
    Extended extended;
    for (const LedgerNote& one : contents.notes) {
        const auto* const extension = std::get_if<Extension>(&one.what);
        if (extension != nullptr && isOfPlan(plan, one) && period.has(one.at) &&
            now < endOf(*extension, one, zone) && !isTakenBack(contents, one)) {
            const Quantity more = limitedPart(plan, {extension->bytes, extension->milliseconds});
            extended.sum = extended.sum + more;
            extended.today = extension->today ? extended.today + more : extended.today;
            extended.until = std::min(extended.until, endOf(*extension, one, zone));
        }
    }
    return extended;
}

Quantity mostRolledOver(const Plan& plan) {
    return {plan.rollOverMost.bytes(),
            static_cast<std::uint64_t>(plan.rollOverHours) * millisecondsInHour};
}

/// What was used of the whole period: the ledger has all of it, or the provider has said it.
bool isKnown(const Plan& plan, const History& history, Measure measure, const Period& period) {
    return history.contents().head.begun <= period.begin ||
           lastFigure(plan, history.contents(), measure, period, period.end).has_value();
}

/// What a period uses of its own first is its own: what came from the one before is not left over.
Quantity rolledOverTo(const Plan& plan, const History& history, const Period& period,
                      const Zone& zone) {
    if (plan.rollOver == RollOver::None || plan.period.kind == PeriodKind::Pack) {
        return {};
    }
    const auto before = periodOf(plan.period, period.number - 1, zone);
    if (!before) {
        return {};
    }
    const Quantity left = allowanceOf(plan) - usedOf(plan, history, *before, before->end);
    const Quantity unused{isKnown(plan, history, Measure::Bytes, *before) ? left.bytes : 0,
                          isKnown(plan, history, Measure::Time, *before) ? left.milliseconds : 0};
    return plan.rollOver == RollOver::All ? unused : lesser(unused, mostRolledOver(plan));
}

void setUsed(Meter& meter, const Plan& plan) {
    const Quantity counted = countedOf(plan, meter.carried);
    meter.standing.used = {correctedBy(meter.bytes, counted.bytes),
                           correctedBy(meter.time, counted.milliseconds)};
}

} // namespace

Quantity lesser(const Quantity& a, const Quantity& b) {
    return {std::min(a.bytes, b.bytes), std::min(a.milliseconds, b.milliseconds)};
}

Quantity greater(const Quantity& a, const Quantity& b) {
    return {std::max(a.bytes, b.bytes), std::max(a.milliseconds, b.milliseconds)};
}

Traffic History::carried(const Plan& plan, Moment from, Moment to) const {
    Traffic sum;
    for (const LedgerEntry& one : entriesBetween(contents_, from, to)) {
        sum = isOfPlan(plan, one) ? sum + one.traffic : sum;
    }
    for (const LedgerEntry& one : unwritten_) {
        sum = from <= one.at && one.at < to && isOfPlan(plan, one) ? sum + one.traffic : sum;
    }
    return sum;
}

Quantity countedOf(const Plan& plan, const Traffic& traffic) {
    switch (plan.counted) {
    case Counted::Received:
        return {traffic.rcvd, traffic.milliseconds};
    case Counted::Sent:
        return {traffic.sent, traffic.milliseconds};
    case Counted::Larger:
        return {std::max(traffic.rcvd, traffic.sent), traffic.milliseconds};
    default:
        return {sumUpTo(traffic.rcvd, traffic.sent), traffic.milliseconds};
    }
}

Quantity allowanceOf(const Plan& plan) {
    return {plan.allowance ? plan.allowance->bytes() : 0,
            static_cast<std::uint64_t>(plan.hours.value_or(0)) * millisecondsInHour};
}

bool isLimited(const Plan& plan, Measure measure) {
    return measure == Measure::Bytes ? plan.allowance.has_value() : plan.hours.has_value();
}

Measure fullerMeasure(const Plan& plan, const Standing& standing) {
    const auto partUsed = [&](Measure measure) {
        const auto all = static_cast<double>(standing.total().of(measure));
        return isLimited(plan, measure) ? static_cast<double>(standing.used.of(measure)) / all : -1;
    };
    return partUsed(Measure::Time) > partUsed(Measure::Bytes) ? Measure::Time : Measure::Bytes;
}

Quantity usedOf(const Plan& plan, const History& history, const Period& period, Moment before) {
    const Quantity counted =
        countedOf(plan, history.carried(plan, period.begin, std::min(before, period.end)));
    const auto corrected = [&](Measure measure) {
        return correctedBy(lastFigure(plan, history.contents(), measure, period, before),
                           counted.of(measure));
    };
    return {corrected(Measure::Bytes), corrected(Measure::Time)};
}

bool countsLine(const Plan& plan, std::string_view line, bool inside) {
    return plan.lines.empty()
               ? !inside
               : std::find(plan.lines.begin(), plan.lines.end(), line) != plan.lines.end();
}

std::vector<LedgerNote> notesThatHold(const Plan& plan, const LedgerContents& contents,
                                      const Period& period) {
    std::vector<LedgerNote> notes;
    for (const LedgerNote& one : contents.notes) {
        if (!std::holds_alternative<TakenBack>(one.what) && isOfPlan(plan, one) &&
            period.has(one.at) && !isTakenBack(contents, one)) {
            notes.push_back(one);
        }
    }
    std::stable_sort(notes.begin(), notes.end(),
                     [](const LedgerNote& a, const LedgerNote& b) { return a.at < b.at; });
    return notes;
}

std::optional<Meter> meterOf(const Plan& plan, const History& history, Moment now,
                             const Zone& zone) {
    const auto period = periodAt(plan.period, now, zone);
    if (!period) {
        return std::nullopt;
    }
    const LedgerContents& contents = history.contents();
    const Extended extended = extendedBy(plan, contents, *period, now, zone);
    Meter meter{.standing = {.period = *period,
                             .used = {},
                             .allowance = allowanceOf(plan),
                             .rolledOver = rolledOverTo(plan, history, *period, zone),
                             .extended = extended.sum,
                             .extendedToday = extended.today},
                .carried = history.carried(plan, period->begin, period->end),
                .bytes = lastFigure(plan, contents, Measure::Bytes, *period, period->end),
                .time = lastFigure(plan, contents, Measure::Time, *period, period->end),
                .from = now,
                .until = std::min(period->end, extended.until)};
    setUsed(meter, plan);
    return meter;
}

void addTo(Meter& meter, const Plan& plan, const LedgerEntry& entry) {
    if (meter.standing.period.has(entry.at) && isOfPlan(plan, entry)) {
        meter.carried = meter.carried + entry.traffic;
        setUsed(meter, plan);
    }
}

std::optional<Standing> standingOf(const Plan& plan, const History& history, Moment now,
                                   const Zone& zone) {
    const auto meter = meterOf(plan, history, now, zone);
    return meter ? std::optional(meter->standing) : std::nullopt;
}

} // namespace tarvik
