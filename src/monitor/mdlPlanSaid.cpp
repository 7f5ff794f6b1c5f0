#include "monitor/mdlPlanSaid.h"

#include "ledger/Ledger.h"
#include "plan/PlanText.h"
#include "plan/Plans.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "types/Convert.h"

#include <algorithm>

namespace tarvik {

namespace {

/// In the units in which it was said, as far as they can be told.
std::string saidText(std::uint64_t bytes) {
    constexpr std::uint64_t mebibyte = 1'048'576;
    return sizeText(bytes, bytes != 0 && bytes % mebibyte == 0, platform().locale.data());
}

std::string textOf(const Extension& extension) {
    const std::string amount = extension.bytes != 0
                                   ? saidText(extension.bytes)
                                   : durationText(extension.milliseconds, platform().locale.data());
    return amount + (extension.today ? " today" : " to the period's end");
}

} // namespace

std::vector<LedgerNote> NotesOfShownPlan() {
    const PlanInUse* const shown = plans().shown();
    if (shown == nullptr || !shown->meter) {
        return {};
    }
    std::vector<LedgerNote> notes =
        notesThatHold(shown->plan, ledger().contents(), shown->meter->standing.period);
    std::reverse(notes.begin(), notes.end());
    return notes;
}

std::string NoteDateText(const LedgerNote& Note) {
    return toText(dateOf(localOf(Note.at, Note.ahead)), platform().locale.data());
}

std::string NoteText(const LedgerNote& Note) {
    if (const auto* const extension = std::get_if<Extension>(&Note.what)) {
        return "Extended by " + textOf(*extension);
    }
    const auto* const figure = std::get_if<ProvidersFigure>(&Note.what);
    if (figure == nullptr) {
        return {};
    }
    return "The provider says " + (figure->measure == Measure::Bytes
                                       ? saidText(figure->told)
                                       : durationText(figure->told, platform().locale.data()));
}

Extension UsualExtension(const PlanInUse& one, bool today) {
    constexpr std::uint64_t bytes = 500'000'000;
    constexpr std::uint64_t milliseconds = 3'600'000;
    const Measure measure =
        one.meter ? fullerMeasure(one.plan, one.meter->standing) : toldMeasure(one.plan);
    const bool isTime = measure == Measure::Time;
    return {.bytes = isTime ? 0 : bytes, .milliseconds = isTime ? milliseconds : 0, .today = today};
}

std::string ExtendText(const PlanInUse& one, bool today) {
    return "Extend by " + textOf(UsualExtension(one, today));
}

} // namespace tarvik
