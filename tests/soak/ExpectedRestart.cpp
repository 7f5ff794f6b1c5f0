#include "soak/Expected.h"

#include <utility>

namespace tarvik::soak {

bool Expected::save(Trouble trouble) {
    if (trouble == Trouble::Write) {
        return false;
    }
    file.exists = true;
    file.settings = settings;
    const Amount total = tally.total();
    const bool nothing = total.rcvd + total.sent <= 0 && total.time <= 0;
    const Amount newest = file.records.empty() ? Amount() : file.records.back();
    if (!nothing && newest != total) {
        file.records.push_back(total);
    }
    return true;
}

void Expected::start(bool argumentRun) {
    if (file.exists && file.locked &&
        question("Warning: Another instance of Velmars Tarvik seems to be running.\rAre you sure "
                 "that you want to start another instance?\r(This could cause the protocol file to "
                 "become corrupt!)",
                 MsgBoxButtons::YesNo, MsgBoxIcon::Question,
                 1 + chance_.below(2)) == MsgBoxAnswer::No) {
        return;
    }
    running = true;
    notes_.startAnew();
    warningArmed = true;
    firstOnlineUpdate = true;
    settings = file.exists ? file.settings : Settings();
    resetInDoubt_ = file.exists && settings.lastReset > now_.day;
    waitTold_ = false;
    tally.begin(file.totals());
    tally.carried = inLedger_;
    if (file.exists) {
        file.locked = true;
    } else {
        notice("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxIcon::Exclamation);
        notice("Warning: Old settings could not be loaded.\rAssuming first run.",
               MsgBoxIcon::Exclamation);
    }
    // Without a file nothing is shown before the first tick.
    stale = !file.exists;
    resetIsAnnounced_ = failureTold_ = false;
    overruled_ = false;
    shownAtStart_.reset();
    takeJournal(true);
    foldedOn_ = now_.day;
    if (hasLedger_ && journal.isThere()) {
        keep(true); // what is not in the ledger, before that is folded
    }
    if (shownAtStart_) {
        const bool isHeld = journal.trouble == JournalTrouble::Held;
        tellSoon(isHeld ? heldByAnother : outOfReach);
    }
    monitoring = settings.run || argumentRun;
}

/// What the journal says goes before what the file says. `asAtStart`: nothing was counted or set in
/// this run.
void Expected::takeJournal(bool asAtStart) {
    standsOn_ = file.mark();
    const ReferenceJournal::Found found = journal.take(now_.seconds);
    if (found == ReferenceJournal::Found::Saying && !asAtStart) {
        putJournalAside(countedMeanwhile);
    } else if (found == ReferenceJournal::Found::Saying && goOnFrom(journal.found())) {
        return;
    }
    if (asAtStart && found == ReferenceJournal::Found::OutOfReach) {
        shownAtStart_ = sayingNow();
    } else if (asAtStart) {
        journal.needNot(sayingNow());
    }
}

/// Nothing was counted, set or reset in this run.
bool Expected::isAsAtStart() const {
    return !overruled_ && sayingNow().sameAs(*shownAtStart_);
}

/// One that was out of reach may be in reach by now. That it is not was told at the start.
void Expected::lookAgain() {
    const bool isUntouched = isAsAtStart();
    const std::optional<Saying> shown = std::exchange(shownAtStart_, std::nullopt);
    takeJournal(isUntouched && !tally.knowsSessions());
    if (!journal.isKept()) {
        shownAtStart_ = shown;
    }
}

void Expected::putJournalAside(const char* why) {
    journal.putAside();
    ++journalsPutAside;
    tellSoon(why);
}

/// False when it stands on another content of the file: then it is of no use.
bool Expected::goOnFrom(const Saying& found) {
    const bool holdsNothing = !found.standsOn.exists && file.records.empty();
    if (!found.standsOn.sameAs(file.mark()) && !holdsNothing && !isOwnSave(found)) {
        tally.carried = found.counts.carried; // what it says of the ledger holds
        putJournalAside(ofAnotherFile);
        return false;
    }
    if (!found.ended) {
        settings = found.settings;
        tellSoon(broughtBack);
    }
    tickerBase_ = found.tickerBase;
    tally.goOn(found.counts);
    resetInDoubt_ = resetInDoubt_ && settings.lastReset == file.settings.lastReset;
    stale = false;
    return true;
}

/// One record more, or the first file, and what it holds is what the journal holds: the program has
/// stored it and could not say so any more.
bool Expected::isOwnSave(const Saying& before) const {
    const FileMark& then = before.standsOn;
    const bool oneMore = file.records.size() == then.records + 1;
    const bool first = file.records.size() == then.records && file.exists && !then.exists;
    return (oneMore || first) && file.totals() == before.counts.all;
}

Saying Expected::sayingNow() const {
    return {.counts = tally.kept(line_, asking_),
            .settings = settings,
            .tickerBase = tickerBase_,
            .standsOn = standsOn_,
            .resetIsAnnounced = resetIsAnnounced_,
            .ledger = ledgerWrites_};
}

void Expected::beginLedger() {
    hasLedger_ = true;
    foldedOn_ = now_.day;
    ++ledgerWrites_;
    keep(true);
}

void Expected::ledgerWritten() {
    ++ledgerWrites_;
    inLedger_ = tally.carried;
    if (running) {
        keep(true);
    }
}

void Expected::ledgerWrittenWhileAsking() {
    journal.tellsOfLedger(++ledgerWrites_);
}

void Expected::ledgerFolded() {
    ++ledgerWrites_;
    if (!journal.isThere()) {
        journal.needNot(sayingNow());
    }
}

void Expected::tellSoon(const std::string& text) {
    show(notes_.add(text, now_.seconds, ticks()));
}

void Expected::show(const std::optional<std::string>& note) {
    if (note) {
        balloons.push_back(*note);
    }
}

void Expected::keep(bool atOnce) {
    show(notes_.next(now_.seconds, ticks()));
    if (shownAtStart_ && journal.isDue(now_.seconds)) {
        const int before = journalsPutAside;
        lookAgain();
        broughtBackLate += journal.isKept() && journalsPutAside == before ? 1 : 0;
    }
    write(sayingNow(), atOnce);
}

/// That it fails is told once in a run.
void Expected::write(const Saying& saying, bool atOnce) {
    if (!journal.keep(saying, now_.seconds, atOnce) && !std::exchange(failureTold_, true)) {
        tellSoon(unwritten);
    }
}

/// It stays where the file alone would show something else, or where nobody may delete it. One that
/// was out of reach must not undo what this run has done.
void Expected::endJournal(bool saved, bool deletionFails) {
    if (!journal.isKept() && shownAtStart_ && !isAsAtStart()) {
        putJournalAside(countedMeanwhile);
    }
    Saying last = sayingNow();
    const bool isNeeded = !saved || file.totals() != last.counts.all;
    if (isNeeded || !journal.deleteIt(deletionFails)) {
        if (saved) {
            last.standsOn = file.mark();
            last.counts.sessions.clear();
            last.ended = true;
        }
        write(last, true);
    }
    if (!journal.isThere()) {
        inLedger_ = tally.carried;
    }
    journal.let();
}

void Expected::stop() {
    running = monitoring = connectionActive = dialInStarted = warningVisible = false;
    ending_ = false;
    tickerBase_ = 0;
    errors_.clear();
}

void Expected::crash(bool powerCut) {
    stop();
    isDead = false;
    journal.let();
    if (powerCut) {
        journal.cutPower();
    }
}

void Expected::shutDown(Trouble trouble) {
    ending_ = true;
    tally.keepOthers();
    keep(true);
    const bool saved = save(trouble);
    endJournal(saved, trouble == Trouble::Delete);
    if (saved) {
        file.locked = false;
    } else {
        notice("Warning: State could not be saved.", MsgBoxIcon::Exclamation);
        notice("Warning: Unable to unset \"IsLocked\"-flag in INI-file!", MsgBoxIcon::Exclamation);
    }
    stop();
}

void Expected::endSession(Trouble trouble) {
    shutDown(trouble);
}

void Expected::pressQuit(Trouble trouble) {
    if (monitoring) {
        notice("Warning: Monitoring is still active.\rPlease de-activate monitoring before quit.",
               MsgBoxIcon::Exclamation);
    } else {
        shutDown(trouble);
    }
}

} // namespace tarvik::soak
