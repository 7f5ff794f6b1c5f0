#include "soak/Expected.h"

#include <algorithm>
#include <utility>

namespace tarvik::soak {

namespace {

constexpr std::int64_t largestLong = 2'147'483'647;
constexpr int droppedLine = 668;

} // namespace

void Expected::notice(std::string text, MsgBoxIcon icon) {
    boxes.push_back({.text = std::move(text), .icon = icon});
}

void Expected::showFailure(const FailedCall& failed) {
    notice("Error: " + failed.name + " failed with " + std::to_string(failed.code) + ":\r" +
               (failed.code == droppedLine ? "The line was dropped." : "Unknown error."),
           MsgBoxIcon::Critical);
}

/// What the tick before has told too is not told again.
void Expected::showError(const std::string& numberAndDescription, const std::string& procedure) {
    const std::string text = "Error " + numberAndDescription + "\roccured in function \"" +
                             procedure + "\".\rPlease contact the author for support.";
    errors_.insert(text);
    if (!errorsBefore_.contains(text)) {
        notice(text, MsgBoxIcon::Critical);
    }
}

/// The user says Yes or OK once in so many times.
MsgBoxAnswer Expected::question(std::string text, MsgBoxButtons buttons, MsgBoxIcon icon,
                                std::uint64_t yesOnceIn) {
    const bool yes = chance_.onceIn(yesOnceIn);
    const MsgBoxAnswer answer = buttons == MsgBoxButtons::YesNo
                                    ? (yes ? MsgBoxAnswer::Yes : MsgBoxAnswer::No)
                                    : (yes ? MsgBoxAnswer::Ok : MsgBoxAnswer::Cancel);
    boxes.push_back({std::move(text), buttons, icon, answer});
    return answer;
}

void Expected::switchOff() {
    if (connectionActive &&
        question("Warning: An active connection has been detected.\rIf monitoring is stopped the "
                 "transfer of this connection\rwill no longer be recorded.\rPress OK to stop "
                 "monitoring now.",
                 MsgBoxButtons::OkCancel, MsgBoxIcon::Exclamation, 2) == MsgBoxAnswer::Cancel) {
        return;
    }
    monitoring = false;
    connectionActive = false;
    keep(true);
}

void Expected::pressMonitor() {
    if (monitoring) {
        switchOff();
    } else {
        monitoring = true;
        errors_.clear();
    }
}

void Expected::hangUp(std::vector<Session>& listed, Failure failure) {
    if (failure == Failure::Enumerate) {
        showFailure({"RasEnumConnections", droppedLine});
        showFailure({"RasEnumConnections", droppedLine});
        switchOff();
        return;
    }
    for (Session& one : listed) {
        if (one.hungUp || !one.connected) {
            continue;
        }
        if (failure == Failure::HangUp) {
            failure = Failure::None;
            showFailure({"RasHangUp", droppedLine});
            switchOff();
            continue;
        }
        one.hungUp = true;
        tally.hungUp(one.handle);
        connectionActive = false;
    }
}

void Expected::pressDisconnect(std::vector<Session> listed, Failure failure) {
    hangUp(listed, failure);
}

void Expected::dialled(Failure failure) {
    dialInStarted = failure != Failure::Dial;
    if (failure == Failure::Dial) {
        showFailure({"RasDial", droppedLine});
    }
}

void Expected::requestReset() {
    if (question("Are you really sure you want to reset the (overall) values?",
                 MsgBoxButtons::YesNo, MsgBoxIcon::Question, 2) == MsgBoxAnswer::Yes) {
        tally.reset();
        keep(true);
        stale = false;
        ++resets;
    }
}

void Expected::closeWarning() {
    warningArmed = false;
    warningVisible = false;
}

void Expected::confirmOptions(const Settings& chosen) {
    const int lastReset = settings.lastReset;
    settings = chosen;
    settings.lastReset = lastReset;
    warningArmed = warningArmed || settings.warning;
    keep(true);
    stale = false;
}

void Expected::tick(std::vector<Session> listed, Failure failure, Trouble trouble) {
    connectionActive = false;
    failed_ = {};
    trouble_ = trouble;
    read_.clear();
    errorsBefore_ = std::exchange(errors_, {});
    if (failure == Failure::Enumerate) {
        showFailure({"RasEnumConnections", droppedLine});
        failed_ = {"RasEnumConnections", droppedLine};
    } else if (listed.empty()) {
        tally.seeNothing(now_.clock);
        stale = false;
    } else {
        tally.beginTick(listed, now_.clock);
        for (Session& one : listed) {
            readListed(one, listed, failure);
        }
    }
    if (failed_.name.empty()) {
        firstOnlineUpdate = firstOnlineUpdate && !tally.hasResumed();
        tally.endTick();
    } else {
        showFailure(failed_);
        switchOff();
    }
    keep(std::exchange(tally.sessionOver, false));
}

void Expected::readListed(Session& one, std::vector<Session>& listed, Failure& failure) {
    if (one.hungUp) {
        return; // in this tick, by the limit
    }
    if (failure == Failure::Status) {
        failure = Failure::None;
        failed_ = {"RasGetConnectStatus", droppedLine};
    } else if (!one.connected) {
        tally.fold();
        stale = false;
    } else if (failure == Failure::Statistics) {
        failure = Failure::None;
        failed_ = {"RasGetConnectionStatistics", droppedLine};
    } else {
        online(one, listed);
    }
}

/// What a limit hangs up is read before, so that nothing is lost.
void Expected::readTheOthers(const std::vector<Session>& listed) {
    for (const Session& one : listed) {
        if (one.connected && read_.insert(one.id).second) {
            tally.note(one, listed);
            readAt_ = now_.seconds;
        }
    }
}

void Expected::online(const Session& session, std::vector<Session>& listed) {
    connectionActive = true;
    tally.read(session, listed);
    readAt_ = now_.seconds;
    read_.insert(session.id);
    const bool first = firstOnlineUpdate && !tally.isResumed(session.handle);
    const bool fromBefore = first && !dialInStarted && tally.current != Amount();
    if (first && !tally.hasResumed()) {
        tickerBase_ = tally.finished.rcvd + tally.finished.sent;
    }
    firstOnlineUpdate = firstOnlineUpdate && !first;
    dialInStarted = false;
    if (fromBefore && !askAboutSession()) {
        stale = true;
        return;
    }
    checkReset();
    checkLimits(listed);
    stale = false;
}

/// False when the question cannot be formed: its figures are added as numbers of 32 bits as long as
/// each of them is one.
bool Expected::askAboutSession() {
    const Amount& found = tally.current;
    const std::int64_t sum = found.rcvd + found.sent;
    if (sum > largestLong && std::max(found.rcvd, found.sent) <= largestLong) {
        showError("6 (Overflow)", "HandleOnline");
        return false;
    }
    const MsgBoxAnswer answer = question(
        "Monitoring has been started and an active connection with transfer has been detected.\r\r"
        "If you have already monitored this online-session with Tarvik then\rthis may result in an "
        "unwanted offset of the recorded transfer.\r\rDo you want to use (record) the this "
        "online-session (" +
            std::to_string(sum) + " bytes)?\r(Press NO if you restarted Tarvik.)",
        MsgBoxButtons::YesNo, MsgBoxIcon::Question, 2);
    if (answer == MsgBoxAnswer::No) {
        tally.decline();
        ++declined;
    }
    return true;
}

void Expected::checkReset() {
    if (!settings.resets || now_.day <= boundary_.day(settings.criterion, settings.lastReset, false,
                                                      now_.day, now_.hour)) {
        return;
    }
    const bool backedUp = settings.backup && backUp();
    resetIsAnnounced_ = settings.backup ? false : resetIsAnnounced_;
    if (settings.backup && !file.exists) {
        standsOnFile_ = false;
        standsOnRecords_ = 0;
    }
    if (settings.backup && !backedUp &&
        question("The criteria to reset the transfer records has been reached.\rHowever - An error "
                 "occured while trying to create the backup-file.\rDo you want to reset the "
                 "transfers recorded anyway?",
                 MsgBoxButtons::YesNo, MsgBoxIcon::Question, 3) == MsgBoxAnswer::No) {
        return;
    }
    if (backedUp && resetInDoubt_) {
        balloons.emplace_back(doubt); // the backup is the copy
    }
    if (!settings.backup && !fileIsKept()) {
        return;
    }
    tally.reset();
    settings.lastReset = now_.day;
    resetInDoubt_ = false;
    keep(true);
    ++resets;
}

/// Whether the copy that a reset in doubt waits for can be made; a note tells of either.
bool Expected::fileIsKept() {
    if (!resetInDoubt_ || !file.exists) {
        return true;
    }
    const bool kept = trouble_ != Trouble::Write;
    if (kept || !std::exchange(waitTold_, true)) {
        balloons.emplace_back(doubt);
    }
    return kept;
}

bool Expected::backUp() {
    keep(true);
    if (!save(trouble_)) {
        return false;
    }
    standsOnFile_ = true;
    standsOnRecords_ = file.records.size();
    resetIsAnnounced_ = true;
    keep(true);
    backups.push_back(file);
    if (trouble_ == Trouble::Delete) {
        showError("75 (Path/File access error)", "BackupINIFile");
        return false;
    }
    file = {};
    return true;
}

void Expected::checkTicker() {
    const Amount overall = tally.finished + tally.current;
    const std::int64_t all = overall.rcvd + overall.sent;
    const std::int64_t further = all - tickerBase_;
    if (further > std::int64_t{settings.tickerValue} * 1024 * 1024) {
        balloons.push_back("Another " + std::to_string(further) + " bytes transferred (" +
                           std::to_string(settings.tickerValue) + "MB were setup).\r" +
                           std::to_string(all) + " bytes transferred in total.");
        tickerBase_ = all;
    }
}

void Expected::checkLimits(std::vector<Session>& listed) {
    if (settings.ticker) {
        checkTicker();
    }
    const Amount total = tally.total();
    const bool tooMuch =
        settings.transferLimit && total.rcvd + total.sent > settings.transferLimitValue;
    const std::int64_t most = (std::int64_t{settings.hours} * 60 + settings.minutes) * 60'000;
    const bool tooLong = settings.durationLimit && total.time > most;
    if (!tooMuch && !tooLong) {
        return;
    }
    warningVisible = warningVisible || (settings.warning && warningArmed);
    if (settings.hangUp && connectionActive) {
        readTheOthers(listed);
        hangUp(listed, Failure::None);
    }
}

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
    warningArmed = true;
    firstOnlineUpdate = true;
    settings = file.exists ? file.settings : Settings();
    resetInDoubt_ = file.exists && settings.lastReset > now_.day;
    waitTold_ = false;
    tally.begin(file.records.empty() ? Amount() : file.records.back());
    if (file.exists) {
        file.locked = true;
    } else {
        notice("Warning: Unable to set \"IsLocked\"-flag in INI-file!", MsgBoxIcon::Exclamation);
        notice("Warning: Old settings could not be loaded.\rAssuming first run.",
               MsgBoxIcon::Exclamation);
    }
    // Without a file nothing is shown before the first tick.
    stale = !file.exists;
    restore();
    monitoring = settings.run || argumentRun;
}

/// What the journal says goes before what the file says.
void Expected::restore() {
    lookedAt_.reset();
    flushedAt_.reset();
    readAt_.reset();
    isUnflushed_ = resetIsAnnounced_ = false;
    standsOnFile_ = file.exists;
    standsOnRecords_ = file.records.size();
    if (!journalIsThere_) {
        written_ = journalNow();
        return;
    }
    settings = written_.settings;
    tickerBase_ = written_.tickerBase;
    tally.goOn(written_.counts);
    resetInDoubt_ = resetInDoubt_ && settings.lastReset == file.settings.lastReset;
    stale = false;
    flushed_ = written_;
    if (!written_.ended) {
        balloons.emplace_back(broughtBack);
    }
}

bool Journal::says(const Journal& other) const {
    const auto& ours = counts.sessions;
    const auto& theirs = other.counts.sessions;
    return counts.all == other.counts.all && settings == other.settings &&
           tickerBase == other.tickerBase && fileExists == other.fileExists &&
           records == other.records && resetIsAnnounced == other.resetIsAnnounced &&
           ended == other.ended &&
           std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                      [](const ReferenceTally::Known& a, const ReferenceTally::Known& b) {
                          return a.sameAs(b);
                      });
}

Journal Expected::journalNow() const {
    const bool read = tally.hasSessions() && readAt_;
    const std::int64_t moment = now_.clock - (read ? now_.seconds - *readAt_ : 0);
    return {.counts = tally.kept(moment),
            .settings = settings,
            .tickerBase = tickerBase_,
            .fileExists = standsOnFile_,
            .records = standsOnRecords_,
            .resetIsAnnounced = resetIsAnnounced_};
}

/// Written after five seconds, flushed after thirty; both at once where that is asked for.
void Expected::keep(bool atOnce) {
    constexpr std::int64_t betweenWrites = 5;
    constexpr std::int64_t betweenFlushes = 30;
    if (!atOnce && lookedAt_ && now_.seconds - *lookedAt_ < betweenWrites) {
        return;
    }
    lookedAt_ = now_.seconds;
    if (const Journal now = journalNow(); !now.says(written_)) {
        written_ = now;
        journalIsThere_ = isUnflushed_ = true;
    }
    if (isUnflushed_ && (atOnce || !flushedAt_ || now_.seconds - *flushedAt_ >= betweenFlushes)) {
        flushedAt_ = now_.seconds;
        flushed_ = written_;
        isUnflushed_ = false;
    }
}

/// It stays where the file alone would show something else.
void Expected::endJournal(bool saved) {
    if (saved && totalsOfFile() == tally.kept(0).all) {
        journalIsThere_ = false;
        return;
    }
    if (!saved) {
        return;
    }
    written_ = journalNow();
    written_.counts.sessions.clear();
    written_.fileExists = true;
    written_.records = file.records.size();
    written_.ended = journalIsThere_ = true;
    flushed_ = written_;
}

void Expected::stop() {
    running = monitoring = connectionActive = dialInStarted = warningVisible = false;
    tickerBase_ = 0;
    errors_.clear();
}

void Expected::crash(bool powerCut) {
    stop();
    written_ = powerCut ? flushed_ : written_;
}

void Expected::shutDown(Trouble trouble) {
    tally.keepOthers();
    keep(true);
    const bool saved = save(trouble);
    endJournal(saved);
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
