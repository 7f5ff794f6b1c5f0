#pragma once

#include "plan/Forecast.h"
#include "plan/Plan.h"
#include "plan/Plans.h"
#include "plan/Usage.h"
#include "types/LocaleData.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

// How a plan stands, in words for the user. No figure is rounded up: what is left is there.

/// Which units a plan is told in: those of its allowance, of 1000 where it has none.
bool countsIn1024(const Plan& plan);

/// "3.1 GB", "575 MB", "0 MB"
std::string sizeText(std::uint64_t bytes, bool in1024, const LocaleData& locale);
/// "12.5 hours", "1 hour", "35 minutes"
std::string durationText(std::uint64_t milliseconds, const LocaleData& locale);
std::string amountText(const Plan& plan, const Quantity& amount, Measure measure,
                       const LocaleData& locale);

/// A size as the user writes it, with his decimal separator: "2,5 GB".
std::string sizeAsTyped(const DataSize& size, const LocaleData& locale);
/// Reads that; nothing for what is none.
std::optional<DataSize> readSize(std::string text, const LocaleData& locale);

/// An amount of what a plan counts in: bytes or milliseconds.
struct MeasuredAmount {
    Measure measure = Measure::Bytes;
    std::uint64_t amount = 0;
};
/// A size, or a time: "12 hours", "1.5 h", "90 minutes", "90 min", up to 99,999 hours. Nothing for
/// what is neither.
std::optional<MeasuredAmount> readAmount(const std::string& text, const LocaleData& locale);

/// "14th"
std::string dayOfMonthText(LocalDay day);

/// What a plan is called where its name stands among other words: one line, and of a long name the
/// beginning and the end, with three dots between. It may be from somebody else's file.
std::string shownName(const Plan& plan);

/// What is told of a plan: bytes unless it limits time alone.
Measure toldMeasure(const Plan& plan);

/// "3.1 of 10 GB"; without a limit "3.1 GB". Of both that the plan limits.
std::string usedText(const Plan& plan, const Standing& standing, const LocaleData& locale);

/// Of today's part, what may still be used: "575 MB", "575 MB and 2 hours"; empty where there is no
/// budget.
std::string todayText(const PlanInUse& one, const LocaleData& locale);

/// "3.1 of 10 GB · 12 days left · 575 MB a day · at this pace 9.4 GB by the 14th", as much of it as
/// is known. Empty where no period is.
std::string planLine(const PlanInUse& one, const LocaleData& locale, const Zone& zone);
/// The same without the forecast.
std::string shortPlanLine(const PlanInUse& one, const LocaleData& locale);
/// "between 9.1 GB and 9.8 GB by the 14th"; empty where there is none.
std::string forecastText(const PlanInUse& one, const LocaleData& locale, const Zone& zone);

/// How much of all that may be used is used, of what is used most of: per cent, without the rest,
/// at most 999. 0 where nothing is limited.
int percentUsed(const Plan& plan, const Standing& standing);
/// How much of the period has passed; 0 of one without an end.
int percentPassed(const Period& period, Moment now);

} // namespace tarvik
