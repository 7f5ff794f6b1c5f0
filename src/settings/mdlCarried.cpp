#include "settings/mdlCarried.h"

#include "ledger/Ledger.h"
#include "plan/Plans.h"
#include "ports/Clock.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

#include <chrono>
#include <string>
#include <utility>

namespace tarvik {

namespace {

/// What is read of a session for the first time it has carried since it was established.
std::int64_t beginOf(const LineSession& session, const Traffic& gained, std::int64_t now) {
    return session.notedAt != 0 ? session.notedAt
                                : now - static_cast<std::int64_t>(gained.milliseconds);
}

Growth growthOf(const LineSession& session, const Traffic& gained, std::int64_t now) {
    const RASCONNA& connection = session.connection;
    return {.line = StripNull({connection.szEntryName, sizeof connection.szEntryName}),
            .inside = session.within,
            .from = momentOf(beginOf(session, gained, now)),
            .to = momentOf(now),
            .ahead = std::chrono::minutes(platform().clock.minutesAhead(now)),
            .traffic = gained};
}

} // namespace

std::optional<Growth> NotYetTold(const LineSession& Session) {
    const Traffic gained = Session.totals - Session.noted;
    const bool declined = state().DeclinedInTick && !Session.resumed;
    if (!ledger().isKept || declined || gained == Traffic()) {
        return std::nullopt;
    }
    return growthOf(Session, gained, platform().clock.universalMilliseconds());
}

void MarkTold(LineSession& Session) {
    if (Session.noted != Session.totals) {
        Session.noted = Session.totals;
        Session.notedAt = platform().clock.universalMilliseconds();
    }
}

void NoteCarried(LineSession& Session) {
    if (const auto growth = NotYetTold(Session)) {
        for (LedgerEntry& entry : byQuarterHours(*growth)) {
            plans().take(entry);
            ledger().unwritten.add(std::move(entry));
        }
    }
    MarkTold(Session);
}

void NoteCarried() {
    for (LineSession& one : state().LineSessions) {
        NoteCarried(one);
    }
}

} // namespace tarvik
