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
        if (!one.hungUp && one.fails == Session::Fails::Status) {
            showFailure({"RasGetConnectStatus", droppedLine});
            switchOff();
            continue;
        }
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
        tally.sessionOver = overruled_ = true;
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
    keep(false); // before they are shown
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
        tally.seeNothing();
        stale = false;
    } else {
        using Fails = Session::Fails;
        tally.failsOnce = failure == Failure::Status       ? Fails::Status
                          : failure == Failure::Statistics ? Fails::Statistics
                                                           : Fails::Nothing;
        tally.beginTick(listed);
        failure = tally.failsOnce == Fails::Nothing ? Failure::None : failure;
        for (Session& one : listed) {
            readListed(one, listed, failure);
            if (isDead) {
                return;
            }
        }
    }
    if (failed_.name.empty()) {
        firstOnlineUpdate = firstOnlineUpdate && !tally.hasResumed();
        tally.endTick();
    } else {
        showFailure(failed_);
        switchOff();
    }
    // What the session under way counts again after a reset is kept at once, too.
    keep(std::exchange(tally.sessionOver, std::exchange(wasReset_, false)));
    if (hasLedger_ && std::exchange(foldedOn_, now_.day) != now_.day) {
        keep(true);
    }
}

void Expected::readListed(Session& one, std::vector<Session>& listed, Failure& failure) {
    if (one.hungUp) {
        return; // in this tick, by the limit
    }
    if (failure == Failure::Status || one.fails == Session::Fails::Status) {
        failure = failure == Failure::Status ? Failure::None : failure;
        failed_ = {"RasGetConnectStatus", droppedLine};
    } else if (!one.connected) {
        tally.foldAt(one);
        stale = false;
    } else if (failure == Failure::Statistics || one.fails == Session::Fails::Statistics) {
        failure = failure == Failure::Statistics ? Failure::None : failure;
        failed_ = {"RasGetConnectionStatistics", droppedLine};
    } else {
        online(one, listed);
    }
}

/// What a limit hangs up is read before, so that nothing is lost.
void Expected::readTheOthers(const std::vector<Session>& listed) {
    for (const Session& one : listed) {
        if (one.connected && one.fails == Session::Fails::Nothing && read_.insert(one.id).second) {
            tally.note(one, listed);
        }
    }
}

void Expected::online(const Session& session, std::vector<Session>& listed) {
    connectionActive = true;
    tally.read(session, listed);
    read_.insert(session.id);
    const bool goesOn = tally.isResumed(session.handle);
    const bool first = firstOnlineUpdate && !goesOn;
    const bool fromBefore = first && !dialInStarted && tally.current != Amount();
    if (first && !tally.hasResumed()) {
        tickerBase_ = tally.finished.rcvd + tally.finished.sent;
    }
    // The one that was dialled may be listed behind one that goes on.
    dialInStarted = dialInStarted && firstOnlineUpdate && goesOn;
    firstOnlineUpdate = firstOnlineUpdate && !first;
    if (fromBefore && !askAboutSession()) {
        stale = true;
        return;
    }
    if (isDead) {
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
    boxes.back().sleeps = chance_.onceIn(3);
    boxes.back().dies = isDead = chance_.onceIn(5);
    if (boxes.back().sleeps) {
        asking_ = true;
        pause();
        asking_ = false;
    }
    if (answer == MsgBoxAnswer::No && !isDead) {
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
    if (settings.backup) {
        withdrawReset();
    }
    if (settings.backup && !backedUp &&
        question("The criteria to reset the transfer records has been reached.\rHowever - An error "
                 "occured while trying to create the backup-file.\rDo you want to reset the "
                 "transfers recorded anyway?",
                 MsgBoxButtons::YesNo, MsgBoxIcon::Question, 3) == MsgBoxAnswer::No) {
        return;
    }
    if (backedUp && resetInDoubt_) {
        tellSoon(doubt); // the backup is the copy
    }
    if (!settings.backup && !fileIsKept()) {
        return;
    }
    tally.reset();
    settings.lastReset = now_.day;
    resetInDoubt_ = false;
    wasReset_ = overruled_ = true;
    keep(true);
    ++resets;
}

/// It comes no more, whatever becomes of the file.
void Expected::withdrawReset() {
    resetIsAnnounced_ = false;
    if (file.exists) {
        keep(true);
    } else {
        standsOn_ = {};
    }
}

/// Whether the copy that a reset in doubt waits for can be made; a note tells of either.
bool Expected::fileIsKept() {
    if (!resetInDoubt_ || !file.exists) {
        return true;
    }
    const bool kept = trouble_ != Trouble::Write;
    if (kept || !std::exchange(waitTold_, true)) {
        tellSoon(doubt);
    }
    return kept;
}

bool Expected::backUp() {
    keep(true);
    if (!save(trouble_)) {
        return false;
    }
    if (journal.isKept()) {
        standsOn_ = file.mark();
        keep(true);
        resetIsAnnounced_ = true;
        keep(true);
    }
    backups.push_back(file);
    if (trouble_ == Trouble::Delete) {
        showError("75 (Path/File access error)", "BackupINIFile");
        return false;
    }
    File next;
    next.putAside = file.putAside + 1;
    file = next;
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

} // namespace tarvik::soak
