// A plan in the INI file: any text. Whatever is read can be written and read again, and what
// follows from it at any moment, with any ledger, keeps to the rules of plans.
//
// Input: eight bytes for the moment; for each of sixteen entries eight bytes of its time, received
// and sent, then the INI file.

#include "Fuzz.h"
#include "ledger/LedgerEntry.h"
#include "plan/Forecast.h"
#include "plan/PlanSettings.h"
#include "plan/Thresholds.h"
#include "scripted/ScriptedPlatform.h"

#include <algorithm>

namespace tarvik::fuzz {
namespace {

constexpr const char* ini = "C:\\Prog\\Tarvik.ini";

/// Summer time by the year's half, as some zones have it.
std::chrono::minutes ahead(Moment moment) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const auto month = unsigned{std::chrono::year_month_day(day).month()};
    return std::chrono::minutes(month >= 4 && month <= 9 ? 150 : 90);
}

Moment momentFrom(Input& input) {
    constexpr std::uint64_t range = 253'402'300'800; // up to the year 9999
    const Moment moment(
        std::chrono::seconds(static_cast<std::int64_t>(input.wideNumber() % range)));
    return std::clamp(moment, firstMoment, lastMoment);
}

LedgerContents contentsFrom(Input& input, Moment now) {
    constexpr int entries = 16;
    LedgerContents contents;
    contents.head = {.version = 1, .begun = momentFrom(input)};
    for (int i = 0; i < entries; ++i) {
        const std::chrono::seconds before(input.number() % 8'000'000);
        const Traffic traffic{input.wideNumber(), input.wideNumber(), input.number()};
        enter(contents, {{.inside = input.flag(),
                          .at = quarterOf(std::max(now - before, firstMoment)),
                          .line = i % 2 == 0 ? "Line" : "Other",
                          .traffic = traffic}});
    }
    return contents;
}

bool isWithin(const Quantity& part, const Quantity& whole) {
    return part.bytes <= whole.bytes && part.milliseconds <= whole.milliseconds;
}

void requirePeriods(const Plan& plan, const Period& period, Moment now) {
    require(period.has(now), "a moment lies in its period");
    const auto next = periodOf(plan.period, period.number + 1, ahead);
    require(!next || next->begin == period.end, "periods touch");
    const auto before = periodOf(plan.period, period.number - 1, ahead);
    require(!before || before->end == period.begin, "periods touch before, too");
}

void requireSense(const Plan& plan, const History& history, Moment now) {
    const auto standing = standingOf(plan, history, now, ahead);
    if (!standing) {
        return;
    }
    requirePeriods(plan, standing->period, now);
    require(standing->left().bytes == 0 || standing->over().bytes == 0,
            "nothing is left of what is over");
    if (const auto budget = budgetOf(plan, history, *standing, now, ahead)) {
        require(budget->daysLeft >= 1, "a day is left as long as the period lasts");
        require(isWithin(budget->perDay, standing->left()), "no budget is above what is left");
        require(isWithin(budget->today, standing->left()), "nor is today's");
    }
    if (const auto forecast = forecastOf(plan, history, *standing, now, ahead, {})) {
        require(isWithin(forecast->least, forecast->expected) &&
                    isWithin(forecast->expected, forecast->most),
                "what is expected lies between least and most");
    }
    Plan told = plan;
    told.said = dueThresholds(plan, *standing).said;
    const DueThresholds again = dueThresholds(told, *standing);
    require(again.toSay.empty() && again.toHangUp.empty(), "nothing is said twice");
}

void play(Input input) {
    const Moment now = momentFrom(input);
    const LedgerContents contents = contentsFrom(input, now);
    ScriptedPlatform machine;
    PrivateProfile& profile = machine.platform.profile;
    machine.files.setFile(ini, input.everything());
    for (int number = 1; number <= mostPlans; ++number) {
        const auto plan = readPlan(profile, ini, number);
        if (!plan) {
            continue;
        }
        require(writePlan(profile, ini, *plan), "a plan is written");
        require(readPlan(profile, ini, number) == plan, "and read as it was");
        requireSense(*plan, History(contents), now);
        require(erasePlan(profile, ini, number) && !readPlan(profile, ini, number),
                "an erased plan is gone");
    }
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
