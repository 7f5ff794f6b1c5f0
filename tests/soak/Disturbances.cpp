#include "soak/Run.h"

#include <algorithm>
#include <array>

namespace tarvik::soak {

namespace {

constexpr std::int64_t counterEnd = 4'294'967'296;

/// Where counters turn into something else: a negative number, nothing.
constexpr std::array<std::int64_t, 5> ends{2'147'483'646, 2'147'483'647, 2'147'483'648,
                                           4'294'967'295, 4'294'967'296};

} // namespace

bool Run::anyConnected() const {
    return std::any_of(line_.up.begin(), line_.up.end(),
                       [](const Session& one) { return one.connected; });
}

std::string Run::nameOf(const Session& session) const {
    return session.entry + " (session " + std::to_string(session.id) + ", handle " +
           std::to_string(session.handle) + ", " + session.carried.text() +
           (session.connected ? ")" : ", not connected)");
}

void Run::anotherConnection() {
    const std::string entry = line_.freeEntry();
    if (!line_.up.empty() && chance_.onceIn(2)) {
        return note("another program dials through the line: " + nameOf(line_.dialInside(entry)));
    }
    Session& made = line_.dial(entry);
    made.connected = !chance_.onceIn(15);
    note("another program dials " + nameOf(made));
    if (chance_.onceIn(4)) {
        line_.reverse();
    }
}

/// A session that has been up for weeks when the program first sees it.
void Run::oldConnection() {
    Session& made = line_.dial(line_.freeEntry());
    const auto close = [&] {
        return ends.at(chance_.index(ends.size())) * static_cast<std::int64_t>(chance_.below(3)) +
               static_cast<std::int64_t>(chance_.below(4)) * 1'000;
    };
    made.carried = {.rcvd = close(), .sent = close(), .time = close()};
    if (chance_.onceIn(2)) {
        made.carried.time = counterEnd - static_cast<std::int64_t>(chance_.below(2 * 86'400'000));
    }
    note("an old session is found: " + nameOf(made));
}

/// Between two ticks, as if nothing had happened.
void Run::replaceSession(Session& session) {
    const std::string before = nameOf(session);
    switch (chance_.below(4)) {
    case 0:
        line_.redial(session, !session.marked); // what tells sessions apart gives each a handle
        break;
    case 1:
        line_.redial(session, false);
        break;
    case 2:
        if (expected_.tally.renumbers) {
            line_.renumber(session);
        }
        break;
    default:
        line_.follow(session, line_.freeEntry());
        break;
    }
    note(before + " is followed by " + nameOf(session));
}

void Run::approachEnd(Session& session) {
    const auto further = [&](std::int64_t figure) {
        const std::int64_t whole = figure / counterEnd * counterEnd;
        const std::int64_t target = whole + ends.at(chance_.index(ends.size()));
        return target > figure && target - figure < counterEnd / 2 ? target : figure;
    };
    session.carried.rcvd = further(session.carried.rcvd);
    session.carried.sent = further(session.carried.sent);
    note("to the end of the counters: " + nameOf(session));
}

void Run::upsetSession(Session& session) {
    switch (chance_.below(8)) {
    case 0:
    case 1:
    case 2:
        return replaceSession(session);
    case 3:
    case 4:
        return session.connected ? approachEnd(session) : void();
    case 5:
        session.connected = !session.connected;
        return note(nameOf(session) + " changes its state");
    case 6:
        if (session.framed && !session.wide) {
            Line::clear(session);
            note("the counters are cleared: " + nameOf(session));
        }
        return;
    default:
        note("the line drops " + nameOf(session));
        std::erase_if(line_.up, [&](const Session& one) { return one.id == session.id; });
        return;
    }
}

void Run::lineActs() {
    const bool mayGrow = line_.up.empty() ? chance_.onceIn(3) : chance_.onceIn(80);
    if (mayGrow && line_.up.size() < 2) {
        return line_.up.empty() && chance_.onceIn(4) ? oldConnection() : anotherConnection();
    }
    for (Session& one : line_.up) {
        if (!one.connected && chance_.onceIn(2)) {
            one.connected = true;
            note(nameOf(one) + " is connected");
        }
    }
    if (!line_.up.empty() && chance_.onceIn(7)) {
        upsetSession(line_.up[chance_.index(line_.up.size())]);
    }
    if (line_.up.size() > 1 && chance_.onceIn(12) && line_.reverse()) {
        note("the service lists them the other way round");
    }
}

/// Ends the sessions of which no reading can tell whether they are the ones of before, or how often
/// a counter has passed its end: what is to be counted of them nothing defines.
void Run::dropWhatNobodyCanTell() {
    const auto doubtful = [this] {
        return std::find_if(line_.up.begin(), line_.up.end(), [this](const Session& one) {
            return !expected_.tally.tellable(one, line_.up);
        });
    };
    for (auto found = doubtful(); found != line_.up.end(); found = doubtful()) {
        note("nobody could tell, so it ends: " + nameOf(*found));
        line_.up.erase(found);
        ++counts_.doubtful;
    }
}

void Run::pass(std::int64_t seconds) {
    calendar_.seconds += seconds;
    expected_.itIs(calendar_.now());
    line_.carry(seconds * 1'000);
}

/// The clock goes on, nothing else does. The line may be gone afterwards, or another one be up.
void Run::sleep(std::int64_t seconds) {
    if (chance_.onceIn(2)) {
        expected_.pause();
        act("the machine tells that it goes to sleep", [this] { machine_.desktop.pause(); });
    }
    note("sleep");
    calendar_.sleep(seconds);
    expected_.itIs(calendar_.now());
    if (line_.up.empty() || chance_.onceIn(3)) {
        return;
    }
    if (chance_.onceIn(2)) {
        line_.up.clear();
    } else {
        replaceSession(line_.up.front());
    }
}

/// One call fails, and the same call a moment later does not.
Failure Run::someFailure() {
    if (chance_.onceIn(150)) {
        machine_.connections.failNext("RasEnumConnectionsA", 668);
        return Failure::Enumerate;
    }
    if (!line_.up.empty() && chance_.onceIn(150)) {
        machine_.connections.failNext("RasGetConnectStatusA", 668);
        return Failure::Status;
    }
    if (anyConnected() && chance_.onceIn(150)) {
        machine_.connections.failNext("RasGetConnectionStatistics", 668);
        return Failure::Statistics;
    }
    return Failure::None;
}

/// A tick that has yet to look for sessions of the run before reads some lines twice: what fails
/// once may be the look alone.
Failure Run::someFailureBeforeTheLook() {
    if (chance_.onceIn(10)) {
        ++counts_.failedLooks;
        machine_.connections.failNext("RasEnumConnectionsA", 668);
        return Failure::Enumerate;
    }
    if (anyConnected() && chance_.onceIn(6)) {
        ++counts_.failedLooks;
        const bool status = chance_.onceIn(2);
        machine_.connections.failNext(
            status ? "RasGetConnectStatusA" : "RasGetConnectionStatistics", 668);
        return status ? Failure::Status : Failure::Statistics;
    }
    if (!line_.up.empty() && chance_.onceIn(5)) {
        ++counts_.failedLooks;
        line_.up[chance_.index(line_.up.size())].fails =
            chance_.onceIn(2) ? Session::Fails::Status : Session::Fails::Statistics;
    }
    return Failure::None;
}

void Run::troubleFiles(Trouble trouble) {
    machine_.files.replaceFailure =
        trouble == Trouble::Write ? FileResult(ErrorNumber::DiskFull) : std::nullopt;
    machine_.files.killFailure =
        trouble == Trouble::Delete ? FileResult(ErrorNumber::PathFileAccess) : std::nullopt;
}

bool Run::journalFails(const std::string& operation) const {
    switch (expected_.journal.trouble) {
    case JournalTrouble::Full:
        return operation == "write" || operation == "flush" ||
               (operation == "hold" && !machine_.files.exists(journalPath));
    case JournalTrouble::Closed:
        return operation == "hold";
    default:
        return false;
    }
}

JournalTrouble Run::someTrouble() {
    constexpr std::array<JournalTrouble, 4> troubles{JournalTrouble::Full, JournalTrouble::Flush,
                                                     JournalTrouble::Closed, JournalTrouble::Held};
    return troubles.at(chance_.index(troubles.size()));
}

void Run::troubleJournal(JournalTrouble trouble) {
    trouble = hasLedger_ ? JournalTrouble::None : trouble;
    constexpr std::array<const char*, 5> names{"well", "full", "not flushed", "closed", "held"};
    if (trouble != expected_.journal.trouble) {
        note(std::string("the journal's disk: ") + names.at(static_cast<std::size_t>(trouble)));
    }
    expected_.journal.trouble = trouble;
    machine_.files.heldElsewhere = trouble == JournalTrouble::Held;
    machine_.files.flushFailure =
        trouble == JournalTrouble::Flush ? FileResult(ErrorNumber::PathFileAccess) : std::nullopt;
    machine_.files.holdFailure.reset();
    machine_.files.meanwhile = nullptr;
    if (trouble == JournalTrouble::Full || trouble == JournalTrouble::Closed) {
        machine_.files.meanwhile = [this](const std::string& operation, const std::string&) {
            machine_.files.holdFailure =
                journalFails(operation) ? FileResult(ErrorNumber::PathFileAccess) : std::nullopt;
        };
    }
}

void Run::tick() {
    if (!expected_.monitoring) {
        return;
    }
    dropWhatNobodyCanTell();
    const Failure failure =
        expected_.tally.hasFormer() ? someFailureBeforeTheLook() : someFailure();
    const std::array<Trouble, 3> troubles{Trouble::None, Trouble::Write, Trouble::Delete};
    const Trouble trouble = troubles.at(chance_.index(troubles.size()));
    troubleFiles(trouble);
    std::string what = "tick";
    for (const Session& one : line_.up) {
        what += "; " + nameOf(one);
    }
    ++counts_.ticks;
    expected_.tick(line_.up, failure, trouble);
    act(what, [this] { window().timUpdateStats.fire(); });
    troubleFiles(Trouble::None);
    for (Session& one : line_.up) {
        one.fails = Session::Fails::Nothing;
    }
    if (expected_.isDead) {
        ++counts_.diedAsking;
        crash();
    }
}

} // namespace tarvik::soak
