#include "wiring/PlanFields.h"

#include "forms/Forms.h"
#include "plan/DataSize.h"
#include "plan/PlanText.h"
#include "plan/PlanWords.h"
#include "plan/Plans.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "types/RunTimeError.h"
#include "types/Text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

namespace {

constexpr int mostHours = 99'999;
constexpr std::size_t longestPath = 1024;

struct PlanField {
    TextBox FrmPlan::*box;
    Label FrmPlan::*reason;
    FrmPlan::Page page;
    std::string (*text)(const Plan& plan);
    /// False for what it cannot be; the plan is then as it was.
    bool (*read)(Plan& plan, const std::string& text);
};

std::string sizeOf(const DataSize& size) {
    return sizeAsTyped(size, platform().locale.data());
}

std::string dateText(LocalDay day) {
    return shortDateText(dateOf(day), platform().locale.data());
}

std::optional<LocalDay> readDate(const std::string& text) {
    try {
        const CivilTime civil = textToDate(text, platform().locale.data()).civil();
        const std::chrono::year_month_day day(
            std::chrono::year(civil.year), std::chrono::month(static_cast<unsigned>(civil.month)),
            std::chrono::day(static_cast<unsigned>(civil.day)));
        const LocalDay local{day};
        const bool canBeWritten = local >= LocalDay(std::chrono::year(1970) / 1 / 1) &&
                                  local < LocalDay(std::chrono::year(9999) / 1 / 1);
        return canBeWritten ? std::optional(local) : std::nullopt;
    } catch (const RunTimeError&) {
        return std::nullopt; // it is no date
    }
}

bool readNumberInto(int& place, const std::string& text, int least, int most) {
    const auto number = readNumber(trimSpaces(text), least, most);
    place = number.value_or(place);
    return number.has_value();
}

bool readName(Plan& plan, const std::string& text) {
    const std::string name(trimSpaces(text));
    const bool can = !name.empty() && name.size() <= longestPlanName;
    plan.name = can ? name : plan.name;
    return can;
}

bool readAllowance(Plan& plan, const std::string& text) {
    const bool none = trimSpaces(text).empty();
    const auto size = readSize(text, platform().locale.data());
    const bool can = none || (size && size->bytes() > 0);
    plan.allowance = can ? (none ? std::nullopt : size) : plan.allowance;
    return can;
}

bool readHours(Plan& plan, const std::string& text) {
    const bool none = trimSpaces(text).empty();
    const auto hours = readNumber(trimSpaces(text), 1, mostHours);
    plan.hours = none || hours ? hours : plan.hours;
    return none || hours;
}

bool readSizeInto(DataSize& place, const std::string& text) {
    const auto size = readSize(text, platform().locale.data());
    place = size.value_or(place);
    return size.has_value();
}

bool readFrom(Plan& plan, const std::string& text) {
    const auto day = readDate(text);
    const bool isPack = plan.period.kind == PeriodKind::Pack;
    const bool can = day && !(isPack && plan.period.until && *day >= *plan.period.until);
    plan.period.from = can ? *day : plan.period.from;
    return can;
}

bool readUntil(Plan& plan, const std::string& text) {
    const bool none = trimSpaces(text).empty();
    const auto day = readDate(text);
    const bool can = none || (day && *day > plan.period.from);
    plan.period.until = can ? (none ? std::nullopt : day) : plan.period.until;
    return can;
}

/// Each threshold has a percentage of its own: what was said is kept by it.
bool readPercent(Plan& plan, const std::string& text) {
    constexpr int hundred = 100;
    const Threshold* const shown = shownThreshold();
    const auto percent = readNumber(trimSpaces(text), 1, hundred);
    const bool isTaken = percent && std::any_of(plan.thresholds.begin(), plan.thresholds.end(),
                                                [&](const Threshold& one) {
                                                    return &one != shown && one.percent == *percent;
                                                });
    if (shown == nullptr || !percent || isTaken) {
        return shown == nullptr;
    }
    plan.thresholds.at(plans().draft.threshold).percent = *percent;
    return true;
}

bool isFullPath(std::string_view path) {
    const char separator = platform().program.pathSeparator();
    const bool hasDrive = path.size() > 2 && path[1] == ':' && path[2] == separator;
    const bool isOnServer = path.size() > 2 && path[0] == separator && path[1] == separator;
    return separator == '/' ? path.starts_with(separator) : hasDrive || isOnServer;
}

bool readProgram(Plan&, const std::string& text) {
    const std::string path(trimSpaces(text));
    const bool can = path.empty() || (path.size() <= longestPath && isFullPath(path));
    if (Threshold* const shown = shownThreshold(); shown != nullptr && can) {
        shown->program = path;
    }
    return can;
}

template <auto member>
std::string ofThreshold(const Plan&) {
    const Threshold* const shown = shownThreshold();
    return shown == nullptr ? std::string() : wholeToText(shown->*member);
}

const std::array<PlanField, 14> fields{{
    {&FrmPlan::txtName, &FrmPlan::lblNameReason, FrmPlan::pageCount,
     [](const Plan& p) { return p.name; }, readName},
    {&FrmPlan::txtAllowance, &FrmPlan::lblAllowanceReason, FrmPlan::allowance,
     [](const Plan& p) { return p.allowance ? sizeOf(*p.allowance) : std::string(); },
     readAllowance},
    {&FrmPlan::txtHours, &FrmPlan::lblHoursReason, FrmPlan::allowance,
     [](const Plan& p) { return p.hours ? wholeToText(*p.hours) : std::string(); }, readHours},
    {&FrmPlan::txtRollOverMost, &FrmPlan::lblRollOverMostReason, FrmPlan::allowance,
     [](const Plan& p) { return sizeOf(p.rollOverMost); },
     [](Plan& p, const std::string& text) { return readSizeInto(p.rollOverMost, text); }},
    {&FrmPlan::txtRollOverHours, &FrmPlan::lblRollOverHoursReason, FrmPlan::allowance,
     [](const Plan& p) { return wholeToText(p.rollOverHours); },
     [](Plan& p, const std::string& text) {
         return readNumberInto(p.rollOverHours, text, 0, mostHours);
     }},
    {&FrmPlan::txtReserve, &FrmPlan::lblReserveReason, FrmPlan::allowance,
     [](const Plan& p) { return wholeToText(p.reservePercent); },
     [](Plan& p, const std::string& text) {
         return readNumberInto(p.reservePercent, text, 0, 99);
     }},
    {&FrmPlan::txtDay, &FrmPlan::lblDayReason, FrmPlan::period,
     [](const Plan& p) { return wholeToText(p.period.day); },
     [](Plan& p, const std::string& text) { return readNumberInto(p.period.day, text, 1, 31); }},
    {&FrmPlan::txtEvery, &FrmPlan::lblEveryReason, FrmPlan::period,
     [](const Plan& p) { return wholeToText(p.period.every); },
     [](Plan& p, const std::string& text) { return readNumberInto(p.period.every, text, 1, 366); }},
    {&FrmPlan::txtFrom, &FrmPlan::lblFromReason, FrmPlan::period,
     [](const Plan& p) { return dateText(p.period.from); }, readFrom},
    {&FrmPlan::txtUntil, &FrmPlan::lblUntilReason, FrmPlan::period,
     [](const Plan& p) { return p.period.until ? dateText(*p.period.until) : std::string(); },
     readUntil},
    {&FrmPlan::txtPercent, &FrmPlan::lblPercentReason, FrmPlan::thresholds,
     ofThreshold<&Threshold::percent>, readPercent},
    {&FrmPlan::txtGrace, &FrmPlan::lblGraceReason, FrmPlan::thresholds,
     [](const Plan&) {
         const Threshold* const shown = shownThreshold();
         return shown == nullptr ? std::string() : sizeOf(shown->grace);
     },
     [](Plan&, const std::string& text) {
         Threshold* const shown = shownThreshold();
         return shown == nullptr || readSizeInto(shown->grace, text);
     }},
    {&FrmPlan::txtGraceMinutes, &FrmPlan::lblGraceMinutesReason, FrmPlan::thresholds,
     ofThreshold<&Threshold::graceMinutes>,
     [](Plan&, const std::string& text) {
         Threshold* const shown = shownThreshold();
         return shown == nullptr || readNumberInto(shown->graceMinutes, text, 0, 9999);
     }},
    {&FrmPlan::txtProgram, &FrmPlan::lblProgramReason, FrmPlan::thresholds,
     [](const Plan&) {
         const Threshold* const shown = shownThreshold();
         return shown == nullptr ? std::string() : shown->program;
     },
     readProgram},
}};

/// What it says goes into the plan, or why it cannot be stands beside it.
bool check(const PlanField& field) {
    FrmPlan& form = planForm();
    Plan* const plan = shownPlan();
    const TextBox& box = form.*field.box;
    if (plan == nullptr || !box.enabled()) {
        return true;
    }
    const bool can = field.read(*plan, box.text());
    Label& reason = form.*field.reason;
    reason.setCaption(can ? "" : reason.otherCaptions().front());
    return can;
}

void PlanField_LostFocus(const PlanField& Field, void (*Taken)()) {
    guarded("PlanField_LostFocus", [&] {
        if (check(Field)) {
            Taken();
        }
    });
}

} // namespace

void connectPlanFields(void (*taken)()) {
    for (const PlanField& field : fields) {
        TextBox& box = planForm().*field.box;
        // Whoever comes to a field writes it anew, as in the other windows.
        box.GotFocus.connect([&box] { box.select(0, static_cast<int>(box.text().size())); });
        box.LostFocus.connect([&field, taken] { PlanField_LostFocus(field, taken); });
    }
}

void showPlanFields(const Plan& plan) {
    for (const PlanField& field : fields) {
        (planForm().*field.box).setText(field.text(plan));
        (planForm().*field.reason).setCaption("");
    }
}

bool checkPlanFields() {
    const PlanField* wrong = nullptr;
    for (const PlanField& field : fields) {
        if (!check(field) && wrong == nullptr) {
            wrong = &field;
        }
    }
    if (wrong != nullptr) {
        if (wrong->page != FrmPlan::pageCount) {
            planForm().cboPage.setListIndex(wrong->page);
        }
        planForm().focusOn(planForm().*wrong->box);
    }
    return wrong == nullptr;
}

FrmPlan& planForm() {
    return forms().frmPlan;
}

Plan* shownPlan() {
    return plans().draft.shown();
}

Threshold* shownThreshold() {
    Plan* const plan = shownPlan();
    const std::size_t place = plans().draft.threshold;
    return plan != nullptr && place < plan->thresholds.size() ? &plan->thresholds[place] : nullptr;
}

} // namespace tarvik
