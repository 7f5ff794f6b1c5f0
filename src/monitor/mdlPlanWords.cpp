#include "monitor/mdlPlanWords.h"

#include "forms/Forms.h"
#include "ledger/Ledger.h"
#include "monitor/mdlPlanFigures.h"
#include "monitor/mdlPlanSaid.h"
#include "plan/PlanText.h"
#include "plan/Plans.h"
#include "ports/Clock.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "settings/mdlSettingsLedger.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "types/Convert.h"

#include <algorithm>

namespace tarvik {

namespace {

void giveReason(bool isWrong) {
    Label& reason = forms().frmPlan.lblNowReason;
    reason.setCaption(isWrong ? reason.otherCaptions().front() : "");
}

bool isOfSameKind(const LedgerNote& a, const LedgerNote& b) {
    return a.plan == b.plan && a.what.index() == b.what.index();
}

/// Notes of one kind are told apart by their moments: the next one that none has.
Moment freeMoment(const LedgerNote& note) {
    const std::vector<LedgerNote>& notes = ledger().contents().notes;
    Moment at = note.at;
    while (std::any_of(notes.begin(), notes.end(), [&](const LedgerNote& one) {
        return isOfSameKind(one, note) && one.at == at;
    })) {
        at += std::chrono::seconds(1);
    }
    return at;
}

/// A clock that was ahead when the plan was made: what is said of it now would be of the time
/// before.
void makeNow(PlanInUse& one, Moment now) {
    if (one.plan.made > now) {
        one.plan.made = now;
        SavePlans();
    }
}

bool write(PlanInUse& one, decltype(LedgerNote::what) what) {
    LedgerNote note{.at = momentNow(platform().clock),
                    .ahead = aheadNow(platform().clock),
                    .plan = one.plan.number,
                    .what = what};
    makeNow(one, note.at);
    note.at = freeMoment(note);
    const bool isWritten = AddToLedger(note);
    if (!isWritten) {
        MsgBox("Error: It could not be written into the ledger.", MsgBoxButtons::OkOnly,
               MsgBoxIcon::Critical);
    }
    plans().forget();
    ShowPlans();
    return isWritten;
}

/// The plan counts in that: it limits it, or it limits nothing.
bool isCountedIn(const Plan& plan, Measure measure) {
    return isLimited(plan, measure) || (!plan.allowance && !plan.hours);
}

/// What the text says, if that can be said of the plan that is shown.
std::optional<MeasuredAmount> amountFor(const PlanInUse* shown, const std::string& text,
                                        std::uint64_t least) {
    const auto amount = readAmount(text, platform().locale.data());
    const bool can = shown != nullptr && shown->meter && amount && amount->amount >= least &&
                     isCountedIn(shown->plan, amount->measure);
    giveReason(!can);
    return can ? amount : std::nullopt;
}

Extension extensionBy(const MeasuredAmount& amount, bool today) {
    const bool isTime = amount.measure == Measure::Time;
    return {.bytes = isTime ? 0 : amount.amount,
            .milliseconds = isTime ? amount.amount : 0,
            .today = today};
}

} // namespace

void SayProvidersFigure(const std::string& Text) {
    guarded("SayProvidersFigure", [&] {
        PlanInUse* const shown = plans().shown();
        if (const auto amount = amountFor(shown, Text, 0)) {
            const Quantity counted = countedOf(shown->plan, shown->meter->carried);
            write(*shown, ProvidersFigure{.measure = amount->measure,
                                          .told = amount->amount,
                                          .counted = counted.of(amount->measure)});
        }
    });
}

void ExtendShownPlan(const std::string& Text, bool Today) {
    guarded("ExtendShownPlan", [&] {
        PlanInUse* const shown = plans().shown();
        if (const auto amount = amountFor(shown, Text, 1)) {
            write(*shown, extensionBy(*amount, Today));
        }
    });
}

bool ExtendPlan(const PlanKey& Key, bool Today) {
    return guarded("ExtendPlan", false, [&](bool& result) {
        if (PlanInUse* const one = plans().find(Key)) {
            result = write(*one, UsualExtension(*one, Today));
        }
    });
}

void TakeBackNote(int Row) {
    guarded("TakeBackNote", [&] {
        PlanInUse* const shown = plans().shown();
        const std::vector<LedgerNote> notes = NotesOfShownPlan();
        if (shown != nullptr && Row >= 0 && static_cast<std::size_t>(Row) < notes.size()) {
            const LedgerNote& note = notes[static_cast<std::size_t>(Row)];
            write(*shown, TakenBack{.extension = std::holds_alternative<Extension>(note.what),
                                    .at = note.at});
        }
    });
}

} // namespace tarvik
