#include "soak/Run.h"

#include "settings/mdlSettingsLedger.h"
#include "startup/mdlStartUp.h"

#include <algorithm>

namespace tarvik::soak {

Counts& Counts::operator+=(const Counts& other) {
    days += other.days;
    ticks += other.ticks;
    sessions += other.sessions;
    resets += other.resets;
    restarts += other.restarts;
    declined += other.declined;
    boxes += other.boxes;
    balloons += other.balloons;
    backups += other.backups;
    crashes += other.crashes;
    doubtful += other.doubtful;
    failedLooks += other.failedLooks;
    joined += other.joined;
    diedAsking += other.diedAsking;
    pausedAsking += other.pausedAsking;
    outOfReach += other.outOfReach;
    late += other.late;
    putAside += other.putAside;
    unwritten += other.unwritten;
    undeleted += other.undeleted;
    knownByMark += other.knownByMark;
    return *this;
}

Run::Run(std::uint32_t seed, Crashes crashes, bool hasLedger)
    : seed_(seed), crashes_(crashes), hasLedger_(hasLedger), calendar_(seed % 2 != 0) {
    machine_.connections.entries = {
        {.name = "Harbour"}, {.name = "Quay"}, {.name = "Ridge"}, {.name = "Tower"}};
    // Some services never give a connection another handle; some of them know a session from
    // every other one.
    machine_.connections.renumbersConnections = seed % 3 != 0;
    line_.marks = seed % 3 == 0;
    machine_.connections.joinsRunning = true;
    expected_.tally.renumbers = machine_.connections.renumbersConnections;
    machine_.connections.errorTexts[668] = "The line was dropped.";
    machine_.desktop.fail = [this](const std::string& what) {
        unexpected_ = unexpected_.empty() ? what : unexpected_;
    };
    startProgram();
    if (hasLedger_) {
        expected_.beginLedger();
        act("begin a ledger", [] { BeginLedger(); });
    }
}

Counts Run::counts() const {
    Counts result = counts_;
    result.sessions = line_.sessions;
    result.resets = expected_.resets;
    result.declined = expected_.declined;
    result.late = expected_.broughtBackLate;
    result.putAside = expected_.journalsPutAside;
    result.knownByMark = expected_.tally.knownByMark;
    return result;
}

void Run::startProgram() {
    while (!expected_.running) {
        const bool run = chance_.onceIn(2);
        machine_.program.arguments = run ? "/r" : "";
        expected_.itIs(calendar_.now());
        if (chance_.onceIn(6)) {
            troubleJournal(chance_.onceIn(4) ? JournalTrouble::None : someTrouble());
        }
        expected_.start(run);
        questionsInRun_ = 0;
        mayFall_ = true;
        lastBalloon_.clear();
        journalBefore_ = machine_.files.file(journalPath);
        machine_.instances.endProgram();
        world_.emplace(machine_.platform);
        starts_ = true;
        act("start", [] { Main(); });
        starts_ = false;
    }
    expectFile();
    ++counts_.restarts;
}

void Run::crash() {
    const bool powerCut = chance_.onceIn(2);
    expected_.crash(powerCut);
    act(powerCut ? "power cut" : "kill", [&] {
        world_.reset();
        if (powerCut) {
            machine_.files.cutPower();
        }
    });
    if (powerCut) {
        calendar_.boot();
    }
    ++counts_.crashes;
    startProgram();
}

void Run::endSession() {
    Trouble trouble = chance_.onceIn(20) ? Trouble::Write : Trouble::None;
    trouble = chance_.onceIn(8) ? Trouble::Delete : trouble;
    troubleFiles(trouble);
    expected_.endSession(trouble);
    act("end of the user's session", [this] { window().unload(UnloadMode::AppWindows); });
    troubleFiles(Trouble::None);
    expectFile();
    world_.reset();
    startProgram();
}

void Run::quit() {
    const Trouble trouble = chance_.onceIn(8) ? Trouble::Delete : Trouble::None;
    troubleFiles(trouble);
    expected_.pressQuit(trouble);
    act("quit", [this] { window().cmdQuit.press(); });
    troubleFiles(Trouble::None);
    if (!expected_.running) {
        counts_.undeleted += expected_.journal.isThere() ? 1 : 0;
        expectFile();
        world_.reset();
        startProgram();
    }
}

void Run::restartSometimes() {
    switch (chance_.below(24)) {
    case 0:
        return crash();
    case 1:
        return endSession();
    case 2:
    case 3:
    case 4:
        return quit();
    default:
        return;
    }
}

void Run::openOptions() {
    Settings chosen;
    chosen.run = chance_.onceIn(2);
    chosen.transferLimit = chance_.onceIn(4);
    chosen.transferLimitValue = static_cast<std::int64_t>(chance_.below(20'000'000'000));
    if (chance_.onceIn(2)) {
        // Close to what is counted, where one byte decides.
        const Amount total = expected_.tally.total();
        const auto near = total.rcvd + total.sent - 1 + static_cast<std::int64_t>(chance_.below(3));
        chosen.transferLimitValue = std::max<std::int64_t>(near, 0);
    }
    chosen.durationLimit = chance_.onceIn(4);
    chosen.hours = static_cast<int>(chance_.below(3'000));
    chosen.minutes = static_cast<int>(chance_.below(60));
    chosen.warning = chance_.onceIn(2);
    chosen.hangUp = chance_.onceIn(3);
    chosen.resets = !chance_.onceIn(3);
    chosen.criterion = static_cast<int>(chance_.below(12));
    chosen.backup = chance_.onceIn(2);
    chosen.ticker = chance_.onceIn(2);
    chosen.tickerValue = static_cast<int>(chance_.between(1, chance_.onceIn(2) ? 9'999 : 50));
    expected_.confirmOptions(chosen);
    act("options", [&] {
        window().cmdOptions.press();
        FrmOptions& o = world_->forms.frmOptions;
        o.chkStartupRunMonitoring.setValue(chosen.run ? 1 : 0);
        o.chkTransferLimit.setValue(chosen.transferLimit ? 1 : 0);
        o.txtTransferLimit.setText(std::to_string(chosen.transferLimitValue));
        o.chkDurationLimit.setValue(chosen.durationLimit ? 1 : 0);
        o.txtDurationLimitHr.setText(std::to_string(chosen.hours));
        o.txtDurationLimitMin.setText(std::to_string(chosen.minutes));
        o.chkTransferLimitWarning.setValue(chosen.warning ? 1 : 0);
        o.chkTransferLimitHangUp.setValue(chosen.hangUp ? 1 : 0);
        o.chkTransferResetEnable.setValue(chosen.resets ? 1 : 0);
        o.cboTransferReset.setListIndex(chosen.criterion);
        o.chkTransferResetBackup.setValue(chosen.backup ? 1 : 0);
        o.chkTransferTicker.setValue(chosen.ticker ? 1 : 0);
        o.txtTransferTicker.setText(std::to_string(chosen.tickerValue));
        o.cmdOK.press();
    });
}

void Run::connect() {
    if (!line_.up.empty() && chance_.onceIn(4)) {
        return connectAgain();
    }
    const std::string entry = line_.freeEntry();
    if (line_.up.size() > (chance_.onceIn(5) ? 1U : 0U)) {
        return;
    }
    const Failure failure = chance_.onceIn(10) ? Failure::Dial : Failure::None;
    if (failure == Failure::Dial) {
        machine_.connections.failNext("RasDialA", 668);
    }
    expected_.dialled(failure);
    act("connect " + entry, [&] { pressConnect(entry); });
    if (failure == Failure::None) {
        expected_.tally.dialled(line_.up.back().handle);
    }
}

/// The line is listed already: what is up goes on, what is not yet begins anew.
void Run::connectAgain() {
    Session& one = line_.up[chance_.index(line_.up.size())];
    if (expected_.tally.mayBeRenumbered(one)) {
        return; // nobody could tell before the next tick that it is up
    }
    if (one.marked && !one.connected) {
        return; // such a service gives every session a handle of its own
    }
    ++counts_.joined;
    expected_.dialled(Failure::None);
    expected_.tally.dialledAgain(one);
    const bool wasUp = one.connected;
    act("connect again " + nameOf(one), [&] { pressConnect(one.entry); });
    if (!wasUp) {
        line_.redial(one, true);
    }
}

void Run::pressConnect(const std::string& entry) {
    const auto& items = window().cboConnections.items();
    const auto place = std::find(items.begin(), items.end(), entry);
    window().cboConnections.setListIndex(static_cast<int>(place - items.begin()));
    window().cmdConnect.press();
}

void Run::disconnect() {
    Failure failure = Failure::None;
    if (chance_.onceIn(12)) {
        failure = Failure::Enumerate;
        machine_.connections.failNext("RasEnumConnectionsA", 668);
    } else if (chance_.onceIn(12) && anyConnected()) {
        failure = Failure::HangUp;
        machine_.connections.failNext("RasHangUpA", 668);
    }
    expected_.pressDisconnect(line_.up, failure);
    act("disconnect", [this] { window().cmdDisconnect.press(); });
}

void Run::requestReset() {
    expected_.requestReset();
    act("reset", [this] {
        Forms& f = world_->forms;
        (f.frmWarning.visible() ? f.frmWarning.cmdReset : f.frmOptions.cmdResetValues).press();
    });
}

void Run::closeWarning() {
    if (expected_.warningVisible) {
        expected_.closeWarning();
        act("close the warning", [this] { world_->forms.frmWarning.cmdCancel.press(); });
    }
}

void Run::turnClock() {
    constexpr std::int64_t day = 86'400;
    switch (chance_.below(6)) {
    case 0:
        calendar_.travel(static_cast<int>(chance_.below(25)) - 12);
        return note("another time zone");
    case 1:
        calendar_.turnClock((chance_.onceIn(2) ? 1 : -1) * 365 * day);
        return note("the clock is set a year off");
    case 2:
        calendar_.turnClock((static_cast<std::int64_t>(chance_.below(60)) - 30) * day);
        return note("the clock is set days off");
    case 3:
        calendar_.turnClock(static_cast<std::int64_t>(chance_.below(40'000)) - 20'000);
        return note("the clock is set hours off");
    default:
        calendar_.setRight();
        return note("the clock is set right");
    }
}

void Run::userActs() {
    switch (chance_.below(26)) {
    case 0:
        expected_.pressMonitor();
        return act("start or stop monitoring", [this] { window().cmdMonitor.press(); });
    case 1:
    case 2:
    case 3:
        return connect();
    case 4:
        disconnect();
        return chance_.onceIn(2) ? connect() : void();
    case 5:
        return closeWarning();
    case 6:
        return chance_.onceIn(4) ? openOptions() : void();
    case 7:
        return chance_.onceIn(8) ? requestReset() : void();
    case 8:
        if (chance_.onceIn(8)) {
            turnClock();
            expected_.itIs(calendar_.now());
        }
        return;
    default:
        return;
    }
}

void Run::ticksOfAMoment() {
    for (std::uint64_t left = chance_.between(1, 6); left > 0; --left) {
        userActs();
        lineActs();
        pass(static_cast<std::int64_t>(chance_.between(1, chance_.onceIn(4) ? 1'200 : 5)));
        tick();
        if (crashes_ == Crashes::Often && chance_.onceIn(4)) {
            crash();
        }
    }
    troubleJournal(chance_.onceIn(12) ? someTrouble() : JournalTrouble::None);
}

void Run::spendDay() {
    constexpr std::int64_t day = 86'400;
    const std::int64_t end = calendar_.seconds / day * day + day;
    const auto moments = static_cast<std::int64_t>(chance_.between(2, 6));
    for (std::int64_t left = moments; left > 0 && calendar_.seconds < end; --left) {
        ticksOfAMoment();
        if (!expected_.monitoring && chance_.onceIn(2)) {
            expected_.pressMonitor();
            act("start monitoring", [this] { window().cmdMonitor.press(); });
        }
        restartSometimes();
        const std::int64_t rest = std::max<std::int64_t>(end - calendar_.seconds, 0) / left;
        chance_.onceIn(2) ? sleep(rest) : pass(rest);
    }
    ++counts_.days;
    machine_.connections.calls.clear();
    machine_.connections.sizesOffered.clear();
    machine_.connections.dialled.clear();
    machine_.connections.parametersAsked.clear();
    machine_.connections.extensionsSeen.clear();
    machine_.desktop.boxesShown.clear();
    machine_.desktop.changesTold.clear();
    machine_.desktop.broughtToFront.clear();
    machine_.desktop.visibilityTold.clear();
    machine_.profile.written.clear();
}

} // namespace tarvik::soak
