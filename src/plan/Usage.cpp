#include "plan/Usage.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::uint64_t millisecondsInHour = 3'600'000;

bool isOfPlan(const Plan& plan, const LedgerEntry& entry) {
    return plan.lines.empty()
               ? !entry.inside
               : std::find(plan.lines.begin(), plan.lines.end(), entry.line) != plan.lines.end();
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
const ProvidersFigure* lastFigure(const Plan& plan, const LedgerContents& contents, Measure measure,
                                  const Period& period, Moment before) {
    const LedgerNote* last = nullptr;
    for (const LedgerNote& one : contents.notes) {
        const auto* const figure = std::get_if<ProvidersFigure>(&one.what);
        if (figure != nullptr && figure->measure == measure && isOfPlan(plan, one) &&
            period.has(one.at) && one.at < before && (last == nullptr || one.at >= last->at) &&
            !isTakenBack(contents, one)) {
            last = &one;
        }
    }
    return last == nullptr ? nullptr : std::get_if<ProvidersFigure>(&last->what);
}

std::uint64_t correctedBy(const ProvidersFigure* figure, std::uint64_t counted) {
    if (figure == nullptr) {
        return counted;
    }
    return counted >= figure->counted ? sumUpTo(figure->told, counted - figure->counted)
                                      : lessDownTo(figure->told, figure->counted - counted);
}

/// One for today ends with the user's day.
bool isOver(const Extension& extension, const LedgerNote& note, Moment now) {
    const LocalDay day = dayOf(localOf(note.at, note.ahead));
    return extension.today && now >= momentOf(day + std::chrono::days(1), note.ahead);
}

Quantity extendedBy(const Plan& plan, const LedgerContents& contents, const Period& period,
                    Moment now) {
    Quantity sum;
    for (const LedgerNote& one : contents.notes) {
        const auto* const extension = std::get_if<Extension>(&one.what);
        if (extension != nullptr && isOfPlan(plan, one) && period.has(one.at) &&
            !isOver(*extension, one, now) && !isTakenBack(contents, one)) {
            sum = sum + Quantity{extension->bytes, extension->milliseconds};
        }
    }
    return {isLimited(plan, Measure::Bytes) ? sum.bytes : 0,
            isLimited(plan, Measure::Time) ? sum.milliseconds : 0};
}

Quantity mostRolledOver(const Plan& plan) {
    return {plan.rollOverMost.bytes(),
            static_cast<std::uint64_t>(plan.rollOverHours) * millisecondsInHour};
}

/// What a period uses of its own first is its own: what came from the one before is not left over.
Quantity rolledOverTo(const Plan& plan, const History& history, const Period& period,
                      const Zone& zone) {
    if (plan.rollOver == RollOver::None || plan.period.kind == PeriodKind::Pack) {
        return {};
    }
    const auto before = periodOf(plan.period, period.number - 1, zone);
    // Of what nobody has counted, nobody knows what was left.
    if (!before || history.contents().head.begun >= before->end) {
        return {};
    }
    const Quantity unused = allowanceOf(plan) - usedOf(plan, history, *before, before->end);
    return plan.rollOver == RollOver::All ? unused : lesser(unused, mostRolledOver(plan));
}

} // namespace

Quantity lesser(const Quantity& a, const Quantity& b) {
    return {std::min(a.bytes, b.bytes), std::min(a.milliseconds, b.milliseconds)};
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

Quantity usedOf(const Plan& plan, const History& history, const Period& period, Moment before) {
    const Quantity counted =
        countedOf(plan, history.carried(plan, period.begin, std::min(before, period.end)));
    const auto corrected = [&](Measure measure) {
        return correctedBy(lastFigure(plan, history.contents(), measure, period, before),
                           counted.of(measure));
    };
    return {corrected(Measure::Bytes), corrected(Measure::Time)};
}

std::optional<Standing> standingOf(const Plan& plan, const History& history, Moment now,
                                   const Zone& zone) {
    const auto period = periodAt(plan.period, now, zone);
    if (!period) {
        return std::nullopt;
    }
    return Standing{.period = *period,
                    .used = usedOf(plan, history, *period, period->end),
                    .allowance = allowanceOf(plan),
                    .rolledOver = rolledOverTo(plan, history, *period, zone),
                    .extended = extendedBy(plan, history.contents(), *period, now)};
}

} // namespace tarvik
