#include "plan/PlanSettings.h"

#include "plan/PlanWords.h"
#include "ports/PrivateProfile.h"
#include "types/Escape.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

constexpr int mostHours = 99'999;
constexpr std::string_view isThere = "Period"; ///< a section without this key has no plan

template <std::size_t count>
using Words = std::array<std::string_view, count>;

// In the order of the values.
constexpr Words<6> kinds{"Month", "Days", "Weeks", "Weekday", "Day", "Pack"};
constexpr Words<4> countings{"Both", "Received", "Sent", "Larger"};
constexpr Words<3> rollOvers{"None", "All", "UpTo"};
constexpr Words<2> dealings{"Evenly", "CarryOn"};
constexpr Words<2> flags{"0", "1"};

template <std::size_t count, class Value>
std::string wordOf(const Words<count>& words, Value value) {
    return std::string(words[static_cast<std::size_t>(value)]);
}

template <std::size_t count, class Value>
bool readWord(const Words<count>& words, std::string_view text, Value& place) {
    const auto found = std::find(words.begin(), words.end(), text);
    if (found == words.end()) {
        return false;
    }
    place = static_cast<Value>(found - words.begin());
    return true;
}

/// Takes over what was read, if anything was.
template <class Place, class Value>
bool take(Place& place, const std::optional<Value>& value) {
    if (value) {
        place = *value;
    }
    return value.has_value();
}

/// The same for what need not be given.
template <class Value, class Read>
bool takeIfGiven(std::optional<Value>& place, std::string_view text, Read&& read) {
    if (text.empty()) {
        place = std::nullopt;
        return true;
    }
    return take(place, read(text));
}

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

template <class Value>
std::string textIfGiven(const std::optional<Value>& value) {
    if constexpr (std::is_same_v<Value, int>) {
        return value ? std::to_string(*value) : std::string();
    } else {
        return value ? textOf(*value) : std::string();
    }
}

template <auto member>
std::string numberText(const Plan& plan) {
    return std::to_string(plan.*member);
}

template <auto member>
std::string numberInPeriod(const Plan& plan) {
    return std::to_string(plan.period.*member);
}

template <auto member, int least, int most>
bool readNumberOf(Plan& plan, std::string_view text) {
    return take(plan.*member, readNumber(text, least, most));
}

template <auto member, int least, int most>
bool readInPeriod(Plan& plan, std::string_view text) {
    return take(plan.period.*member, readNumber(text, least, most));
}

template <std::size_t place>
std::string thresholdText(const Plan& plan) {
    return place < plan.thresholds.size() ? textOf(plan.thresholds[place]) : std::string();
}

bool readOneThreshold(Plan& plan, std::string_view text) {
    const auto threshold = readThreshold(text);
    if (threshold && plan.thresholds.size() < mostThresholds) {
        plan.thresholds.push_back(*threshold);
    }
    return threshold || text.empty();
}

bool readName(Plan& plan, std::string_view text) {
    const auto name = unescaped(text);
    return name && name->size() <= longestPlanName && take(plan.name, name);
}

bool readSizeAbove0(Plan& plan, std::string_view text) {
    return takeIfGiven(plan.allowance, text, [](std::string_view given) {
        const auto size = readDataSize(given);
        return size && size->bytes() > 0 ? size : std::nullopt;
    });
}

constexpr std::array<PlanSetting, 25> table{{
    {"Name", [](const Plan& p) { return quoted(escaped(p.name)); },
     [](Plan& p, std::string_view text) { return readName(p, text); }},
    {"Made", [](const Plan& p) { return textOf(p.made); },
     [](Plan& p, std::string_view text) { return take(p.made, readMoment(text)); }},
    {"Lines", [](const Plan& p) { return quoted(textOf(p.lines)); },
     [](Plan& p, std::string_view text) { return take(p.lines, readNames(text)); }},
    {"Counts", [](const Plan& p) { return wordOf(countings, p.counted); },
     [](Plan& p, std::string_view text) { return readWord(countings, text, p.counted); }},
    {"Allowance", [](const Plan& p) { return textIfGiven(p.allowance); }, readSizeAbove0},
    {"Hours", [](const Plan& p) { return textIfGiven(p.hours); },
     [](Plan& p, std::string_view text) {
         return takeIfGiven(p.hours, text,
                            [](std::string_view one) { return readNumber(one, 1, mostHours); });
     }},
    {isThere, [](const Plan& p) { return wordOf(kinds, p.period.kind); },
     [](Plan& p, std::string_view text) { return readWord(kinds, text, p.period.kind); }},
    {"Hour", numberInPeriod<&PeriodRule::hour>, readInPeriod<&PeriodRule::hour, 0, 23>},
    {"Day", numberInPeriod<&PeriodRule::day>, readInPeriod<&PeriodRule::day, 1, 31>},
    {"Every", numberInPeriod<&PeriodRule::every>, readInPeriod<&PeriodRule::every, 1, 366>},
    {"Weekday", numberInPeriod<&PeriodRule::weekday>, readInPeriod<&PeriodRule::weekday, 1, 7>},
    {"From", [](const Plan& p) { return textOf(p.period.from); },
     [](Plan& p, std::string_view text) { return take(p.period.from, readDay(text)); }},
    {"Until", [](const Plan& p) { return textIfGiven(p.period.until); },
     [](Plan& p, std::string_view text) { return takeIfGiven(p.period.until, text, readDay); }},
    {"RollOver", [](const Plan& p) { return wordOf(rollOvers, p.rollOver); },
     [](Plan& p, std::string_view text) { return readWord(rollOvers, text, p.rollOver); }},
    {"RollOverMost", [](const Plan& p) { return textOf(p.rollOverMost); },
     [](Plan& p, std::string_view text) { return take(p.rollOverMost, readDataSize(text)); }},
    {"RollOverHours", numberText<&Plan::rollOverHours>,
     readNumberOf<&Plan::rollOverHours, 0, mostHours>},
    {"Reserve", numberText<&Plan::reservePercent>, readNumberOf<&Plan::reservePercent, 0, 99>},
    {"Budget", [](const Plan& p) { return wordOf(dealings, p.dealOut); },
     [](Plan& p, std::string_view text) { return readWord(dealings, text, p.dealOut); }},
    {"Threshold1", thresholdText<0>, readOneThreshold},
    {"Threshold2", thresholdText<1>, readOneThreshold},
    {"Threshold3", thresholdText<2>, readOneThreshold},
    {"Threshold4", thresholdText<3>, readOneThreshold},
    {"Threshold5", thresholdText<4>, readOneThreshold},
    {"BlockAfterLast", [](const Plan& p) { return wordOf(flags, p.blockAfterLast); },
     [](Plan& p, std::string_view text) { return readWord(flags, text, p.blockAfterLast); }},
    {"Said", [](const Plan& p) { return textOf(p.said); },
     [](Plan& p, std::string_view text) { return take(p.said, readSaid(text)); }},
}};

std::string valueOf(PrivateProfile& profile, const std::string& file, const std::string& section,
                    std::string_view key) {
    constexpr std::size_t longestValue = 32'768;
    std::string buffer(longestValue, '\0');
    const std::uint32_t size = profile.GetPrivateProfileStringA(
        section, key, "", buffer.data(), static_cast<std::uint32_t>(buffer.size()), file);
    buffer.resize(size);
    return buffer;
}

} // namespace

std::span<const PlanSetting> planSettings() {
    return table;
}

std::string planSection(int number) {
    return "Plan " + std::to_string(number);
}

bool hasPlan(PrivateProfile& profile, const std::string& file, int number) {
    return !valueOf(profile, file, planSection(number), isThere).empty();
}

std::optional<Plan> readPlan(PrivateProfile& profile, const std::string& file, int number) {
    const std::string section = planSection(number);
    if (!hasPlan(profile, file, number)) {
        return std::nullopt;
    }
    Plan plan{.number = number};
    for (const PlanSetting& one : table) {
        one.read(plan, valueOf(profile, file, section, one.key));
    }
    return plan;
}

bool writePlan(PrivateProfile& profile, const std::string& file, const Plan& plan) {
    const std::string section = planSection(plan.number);
    return std::all_of(table.begin(), table.end(), [&](const PlanSetting& one) {
        return profile.WritePrivateProfileStringA(section, one.key, one.text(plan), file);
    });
}

bool erasePlan(PrivateProfile& profile, const std::string& file, int number) {
    const std::string section = planSection(number);
    return !hasPlan(profile, file, number) ||
           profile.WritePrivateProfileSectionA(section, std::string_view("\0", 1), file);
}

} // namespace tarvik
