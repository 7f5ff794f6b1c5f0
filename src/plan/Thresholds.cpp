#include "plan/Thresholds.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

constexpr std::size_t periodsKept = 3;
constexpr std::uint64_t millisecondsInMinute = 60'000;

/// The least that is so many per cent of the whole.
std::uint64_t levelOf(std::uint64_t whole, int percent) {
    constexpr std::uint32_t hundred = 100;
    const auto part = static_cast<std::uint32_t>(percent);
    const bool isExact = whole % hundred * part % hundred == 0;
    return sumUpTo(portion(whole, part, hundred), isExact ? 0 : 1);
}

bool isReachedWith(const Plan& plan, const Standing& standing, int percent, const Quantity& more) {
    constexpr std::array measures{Measure::Bytes, Measure::Time};
    return std::any_of(measures.begin(), measures.end(), [&](Measure measure) {
        const std::uint64_t level = levelOf(standing.total().of(measure), percent);
        return isLimited(plan, measure) &&
               standing.used.of(measure) >= sumUpTo(level, more.of(measure));
    });
}

bool mustHangUp(const Plan& plan, const Standing& standing, const Threshold& threshold) {
    const Quantity grace{threshold.grace.bytes(),
                         static_cast<std::uint64_t>(threshold.graceMinutes) * millisecondsInMinute};
    return threshold.hangUp != HangUpRule::No &&
           isReachedWith(plan, standing, threshold.percent,
                         threshold.hangUp == HangUpRule::AtOnce ? Quantity() : grace);
}

/// The one of that period, the newest now. A clock that is set back and forth says nothing twice:
/// that of some other periods is kept.
SaidInPeriod& saidIn(std::vector<SaidInPeriod>& said, LocalMoment period) {
    const auto found = std::find_if(said.begin(), said.end(),
                                    [&](const SaidInPeriod& one) { return one.period == period; });
    if (found == said.end()) {
        said.push_back({.period = period});
    } else {
        std::rotate(found, found + 1, said.end());
    }
    if (said.size() > periodsKept) {
        said.erase(said.begin(), said.end() - periodsKept);
    }
    return said.back();
}

bool has(const std::vector<int>& percents, int percent) {
    return std::find(percents.begin(), percents.end(), percent) != percents.end();
}

/// Each percent once, in order.
void note(std::vector<int>& percents, const Plan& plan, const std::vector<std::size_t>& places) {
    for (const std::size_t place : places) {
        percents.push_back(plan.thresholds[place].percent);
    }
    std::sort(percents.begin(), percents.end());
    percents.erase(std::unique(percents.begin(), percents.end()), percents.end());
}

} // namespace

bool isReached(const Plan& plan, const Standing& standing, int percent) {
    return isReachedWith(plan, standing, percent, {});
}

DueThresholds dueThresholds(const Plan& plan, const Standing& standing) {
    DueThresholds due;
    for (std::size_t i = 0; i < plan.thresholds.size(); ++i) {
        due.toSay.push_back(i);
    }
    std::stable_sort(due.toSay.begin(), due.toSay.end(), [&](std::size_t a, std::size_t b) {
        return plan.thresholds[a].percent < plan.thresholds[b].percent;
    });
    due.toHangUp = due.toSay;
    due.said = plan.said;
    SaidInPeriod& said = saidIn(due.said, standing.period.local);
    std::erase_if(due.toSay, [&](std::size_t place) {
        const int percent = plan.thresholds[place].percent;
        return has(said.said, percent) || !isReached(plan, standing, percent);
    });
    std::erase_if(due.toHangUp, [&](std::size_t place) {
        const Threshold& one = plan.thresholds[place];
        return has(said.hungUp, one.percent) || !mustHangUp(plan, standing, one);
    });
    note(said.said, plan, due.toSay);
    note(said.hungUp, plan, due.toHangUp);
    return due;
}

bool isBlocked(const Plan& plan, const Standing& standing) {
    const auto last = std::max_element(
        plan.thresholds.begin(), plan.thresholds.end(),
        [](const Threshold& a, const Threshold& b) { return a.percent < b.percent; });
    return plan.blockAfterLast && last != plan.thresholds.end() &&
           isReached(plan, standing, last->percent);
}

} // namespace tarvik
