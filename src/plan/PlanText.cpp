#include "plan/PlanText.h"

#include "plan/DataSize.h"
#include "plan/Thresholds.h"
#include "types/Convert.h"
#include "types/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

constexpr std::uint64_t minuteLength = 60'000;
constexpr std::uint64_t hourLength = 3'600'000;

/// "3.1", "12", "575": one decimal of what is less than a hundred, without the rest.
std::string numberText(std::uint64_t amount, std::uint64_t unit, const LocaleData& locale) {
    constexpr std::uint64_t tenths = 10;
    constexpr std::uint64_t wholeFrom = 100;
    const std::uint64_t whole = amount / unit;
    const std::uint64_t tenth = amount % unit * tenths / unit;
    std::string text = wholeToText(static_cast<std::int64_t>(whole));
    if (whole < wholeFrom && tenth != 0) {
        text += locale.decimalSeparator + wholeToText(static_cast<std::int64_t>(tenth));
    }
    return text;
}

struct Unit {
    std::uint64_t size;
    std::string_view name;
};

Unit unitFor(std::uint64_t bytes, bool in1024) {
    constexpr std::array names{SizeUnit::TB, SizeUnit::GB, SizeUnit::MB};
    constexpr std::array names1024{SizeUnit::TiB, SizeUnit::GiB, SizeUnit::MiB};
    constexpr std::array<std::string_view, 3> texts{" TB", " GB", " MB"};
    constexpr std::array<std::string_view, 3> texts1024{" TiB", " GiB", " MiB"};
    std::size_t place = 0;
    const auto& sizes = in1024 ? names1024 : names;
    while (place + 1 < sizes.size() && bytes < bytesIn(sizes.at(place))) {
        ++place;
    }
    return {bytesIn(sizes.at(place)), in1024 ? texts1024.at(place) : texts.at(place)};
}

Unit unitFor(std::uint64_t milliseconds) {
    return milliseconds < hourLength ? Unit{minuteLength, " minutes"} : Unit{hourLength, " hours"};
}

Unit unitOf(const Plan& plan, std::uint64_t amount, Measure measure) {
    return measure == Measure::Bytes ? unitFor(amount, countsIn1024(plan)) : unitFor(amount);
}

std::string withUnit(std::uint64_t amount, const Unit& unit, const LocaleData& locale) {
    const std::string number = numberText(amount, unit.size, locale);
    const bool isOne = number == "1" && unit.name.ends_with('s');
    return number + std::string(isOne ? unit.name.substr(0, unit.name.size() - 1) : unit.name);
}

/// "3.1 of 10 GB", "575 MB of 10 GB"
std::string partText(const Plan& plan, const Quantity& part, const Quantity& whole, Measure measure,
                     const LocaleData& locale) {
    const Unit ofPart = unitOf(plan, part.of(measure), measure);
    const Unit ofWhole = unitOf(plan, whole.of(measure), measure);
    const std::string text = ofPart.size == ofWhole.size || part.of(measure) == 0
                                 ? numberText(part.of(measure), ofPart.size, locale)
                                 : withUnit(part.of(measure), ofPart, locale);
    return text + " of " + withUnit(whole.of(measure), ofWhole, locale);
}

class Line {
public:
    explicit Line(const LocaleData& locale) : between_(" " + locale.middleDot + " ") {}

    void add(const std::string& part) {
        text_ += part.empty() || text_.empty() ? part : between_ + part;
    }
    std::string text() && { return std::move(text_); }

private:
    std::string between_;
    std::string text_;
};

constexpr std::array bothMeasures{Measure::Bytes, Measure::Time};

/// "575 MB a day", or how much more than all is used.
std::string restText(const PlanInUse& one, const LocaleData& locale) {
    const Standing& standing = one.meter->standing;
    Line line(locale);
    for (const Measure measure : bothMeasures) {
        if (!isLimited(one.plan, measure)) {
            continue;
        }
        if (standing.over().of(measure) > 0) {
            line.add(amountText(one.plan, standing.over(), measure, locale) + " over");
        } else if (one.budget) {
            line.add(
                amountText(one.plan, lesser(one.budget->perDay, standing.left()), measure, locale) +
                " a day");
        }
    }
    return std::move(line).text();
}

std::string daysText(const PlanInUse& one) {
    if (!one.budget) {
        return {};
    }
    return wholeToText(one.budget->daysLeft) + (one.budget->daysLeft == 1 ? " day" : " days") +
           " left";
}

/// With the separator that a size has in the file. A point that is none on the user's machine stays
/// none: it may stand between thousands.
std::optional<std::string> withPoint(std::string text, const LocaleData& locale) {
    const std::string& separator = locale.decimalSeparator;
    if (separator != "." && text.find('.') != std::string::npos) {
        return std::nullopt;
    }
    const std::size_t place = separator.empty() ? std::string::npos : text.find(separator);
    if (place != std::string::npos) {
        text.replace(place, separator.size(), ".");
    }
    return text;
}

/// Milliseconds.
std::optional<std::uint64_t> readTime(const std::string& text, const LocaleData& locale) {
    constexpr std::uint64_t most = 99'999 * hourLength;
    const std::string_view all = trimSpaces(text);
    const std::size_t end = all.find_last_not_of("abcdefghijklmnopqrstuvwxyz") + 1;
    const std::string_view unit = all.substr(end);
    const bool isHours = unit == "h" || unit == "hour" || unit == "hours";
    const bool isMinutes = unit == "min" || unit == "minute" || unit == "minutes";
    // A size of as many megabytes has the same digits.
    const auto number = readSize(std::string(all.substr(0, end)) + "MB", locale);
    const std::uint64_t thousandths = number.value_or(DataSize()).thousandths;
    constexpr std::uint64_t thousandth = 1000;
    const std::uint64_t perThousandth = (isHours ? hourLength : minuteLength) / thousandth;
    const bool can = number && (isHours || isMinutes) && thousandths <= most / perThousandth;
    return can ? std::optional(thousandths * perThousandth) : std::nullopt;
}

/// "by the 14th"
std::string byText(const Period& period, const Zone& zone) {
    const Moment last = period.end - std::chrono::seconds(1);
    return " by the " + dayOfMonthText(dayOf(localOf(last, zone(last))));
}

/// Where the letters of a text begin, also where it is in UTF-8: no letter of that has more bytes.
std::vector<std::size_t> lettersOf(const std::string& text) {
    constexpr std::size_t mostBytes = 4;
    std::vector<std::size_t> begins;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool canGoOn = (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80;
        if (!canGoOn || begins.empty() || place - begins.back() == mostBytes) {
            begins.push_back(place);
        }
    }
    return begins;
}

} // namespace

bool countsIn1024(const Plan& plan) {
    return plan.allowance && plan.allowance->unit >= SizeUnit::MiB;
}

std::string sizeText(std::uint64_t bytes, bool in1024, const LocaleData& locale) {
    return withUnit(bytes, unitFor(bytes, in1024), locale);
}

std::string durationText(std::uint64_t milliseconds, const LocaleData& locale) {
    return withUnit(milliseconds, unitFor(milliseconds), locale);
}

std::string amountText(const Plan& plan, const Quantity& amount, Measure measure,
                       const LocaleData& locale) {
    return withUnit(amount.of(measure), unitOf(plan, amount.of(measure), measure), locale);
}

std::string sizeAsTyped(const DataSize& size, const LocaleData& locale) {
    std::string text = textOf(size);
    if (const std::size_t point = text.find('.'); point != std::string::npos) {
        text.replace(point, 1, locale.decimalSeparator);
    }
    return text;
}

std::optional<DataSize> readSize(std::string text, const LocaleData& locale) {
    const auto size = withPoint(std::move(text), locale);
    return size ? readDataSize(*size) : std::nullopt;
}

std::optional<MeasuredAmount> readAmount(const std::string& text, const LocaleData& locale) {
    if (const auto size = readSize(text, locale)) {
        return MeasuredAmount{.measure = Measure::Bytes, .amount = size->bytes()};
    }
    const auto time = readTime(text, locale);
    return time ? std::optional(MeasuredAmount{.measure = Measure::Time, .amount = *time})
                : std::nullopt;
}

std::string dayOfMonthText(LocalDay day) {
    const auto number = static_cast<unsigned>(std::chrono::year_month_day(day).day());
    constexpr unsigned ten = 10;
    const bool isTeen = number / ten == 1;
    constexpr std::array<const char*, 4> endings{"th", "st", "nd", "rd"};
    const unsigned last = number % ten;
    return wholeToText(number) + endings.at(isTeen || last >= endings.size() ? 0 : last);
}

std::string shownName(const Plan& plan) {
    constexpr std::size_t longest = 30;
    constexpr std::size_t atBegin = 14;
    constexpr std::size_t atEnd = 13; // and three dots
    const std::string whole = withControlsTold(plan.name);
    const std::vector<std::size_t> letters = lettersOf(whole);
    return letters.size() <= longest ? whole
                                     : whole.substr(0, letters[atBegin]) + "..." +
                                           whole.substr(letters[letters.size() - atEnd]);
}

Measure toldMeasure(const Plan& plan) {
    return plan.hours && !plan.allowance ? Measure::Time : Measure::Bytes;
}

std::string usedText(const Plan& plan, const Standing& standing, const LocaleData& locale) {
    if (!plan.allowance && !plan.hours) {
        return amountText(plan, standing.used, Measure::Bytes, locale);
    }
    Line line(locale);
    for (const Measure measure : bothMeasures) {
        if (isLimited(plan, measure)) {
            line.add(partText(plan, standing.used, standing.total(), measure, locale));
        }
    }
    return std::move(line).text();
}

std::string shortPlanLine(const PlanInUse& one, const LocaleData& locale) {
    if (!one.meter) {
        return {};
    }
    Line line(locale);
    line.add(usedText(one.plan, one.meter->standing, locale));
    line.add(daysText(one));
    line.add(restText(one, locale));
    return std::move(line).text();
}

std::string planLine(const PlanInUse& one, const LocaleData& locale, const Zone& zone) {
    Line line(locale);
    line.add(shortPlanLine(one, locale));
    if (one.meter && one.forecast) {
        const Quantity expected = greater(one.forecast->expected, one.meter->standing.used);
        line.add("at this pace " + amountText(one.plan, expected, toldMeasure(one.plan), locale) +
                 byText(one.meter->standing.period, zone));
    }
    return std::move(line).text();
}

std::string todayText(const PlanInUse& one, const LocaleData& locale) {
    std::string text;
    for (const Measure measure : bothMeasures) {
        if (one.meter && one.budget && isLimited(one.plan, measure)) {
            const Quantity today = lesser(one.budget->today, one.meter->standing.left());
            text += (text.empty() ? "" : " and ") + amountText(one.plan, today, measure, locale);
        }
    }
    return text;
}

std::string forecastText(const PlanInUse& one, const LocaleData& locale, const Zone& zone) {
    if (!one.meter || !one.forecast) {
        return {};
    }
    const Measure measure = toldMeasure(one.plan);
    const Quantity& used = one.meter->standing.used; // more than a minute ago, it may be
    return "between " + amountText(one.plan, greater(one.forecast->least, used), measure, locale) +
           " and " + amountText(one.plan, greater(one.forecast->most, used), measure, locale) +
           byText(one.meter->standing.period, zone);
}

int percentUsed(const Plan& plan, const Standing& standing) {
    constexpr int most = 999;
    int least = 0;
    for (int above = most + 1; above - least > 1;) {
        const int middle = least + (above - least) / 2;
        (isReached(plan, standing, middle) ? least : above) = middle;
    }
    return least;
}

int percentPassed(const Period& period, Moment now) {
    if (period.end == Period::endless || period.end <= period.begin) {
        return 0;
    }
    constexpr std::int64_t hundred = 100;
    const auto passed = std::clamp(now, period.begin, period.end) - period.begin;
    return static_cast<int>(passed.count() * hundred / (period.end - period.begin).count());
}

} // namespace tarvik
