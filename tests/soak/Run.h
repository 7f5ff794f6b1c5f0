#pragma once

#include "scripted/ScriptedPlatform.h"
#include "soak/Calendar.h"
#include "soak/Expected.h"
#include "soak/Records.h"
#include "wiring/World.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

namespace tarvik::soak {

/// What happened, and what became of it.
struct Counts {
    int days = 0;
    int ticks = 0;
    int sessions = 0;
    int resets = 0;
    int restarts = 0;
    int declined = 0;
    int boxes = 0;
    int balloons = 0;
    int backups = 0;
    int crashes = 0;
    int doubtful = 0; ///< sessions that were ended since no reading could have told them
    // What is rare, and must have happened all the same.
    int failedLooks = 0; ///< ticks that failed before they had found the sessions of the run before
    int joined = 0;      ///< dials of what was up
    int diedAsking = 0;  ///< ends of the program at the question about a session
    int pausedAsking = 0; ///< sleeps of the machine while it was open
    int outOfReach = 0;   ///< starts that left the journal alone
    int late = 0;         ///< journals that came into reach in time
    int putAside = 0;     ///< journals that stood on another file
    int unwritten = 0;    ///< runs that could not write it
    int undeleted = 0;    ///< ends that left it there
    int knownByMark = 0;  ///< sessions of a run before, by the service's word

    Counts& operator+=(const Counts& other);
};

class Violation : public std::runtime_error {
    using runtime_error::runtime_error;
};

/// Days of a user, a line and a machine that only the seed knows. After everything that happens the
/// program is held against what the rules expect.
class Run {
public:
    /// How often the program is killed, or the power is cut.
    enum class Crashes { Seldom, Often };

    /// With a ledger nothing is wrong around the journal.
    explicit Run(std::uint32_t seed, Crashes crashes = Crashes::Seldom, bool hasLedger = false);

    /// Throws a `Violation` that tells the day, the tick and the last events.
    void spendDay();
    Counts counts() const;

private:
    static constexpr const char* journalPath = "C:\\Prog\\Tarvik.journal";
    static constexpr const char* ledgerPath = "C:\\Prog\\Tarvik.ledger";

    // Whoever works on the machine.
    void userActs();
    void startProgram();
    void crash();
    void endSession();
    void quit();
    void restartSometimes();
    void openOptions();
    void connect();
    void connectAgain();
    void pressConnect(const std::string& entry);
    void disconnect();
    void requestReset();
    void closeWarning();
    void turnClock();

    // The disk.
    void troubleFiles(Trouble trouble);
    void troubleJournal(JournalTrouble trouble);
    JournalTrouble someTrouble();
    bool journalFails(const std::string& operation) const;

    // The line.
    void lineActs();
    void anotherConnection();
    void oldConnection();
    void replaceSession(Session& session);
    void upsetSession(Session& session);
    void approachEnd(Session& session);
    void dropWhatNobodyCanTell();
    void pass(std::int64_t seconds);
    void sleep(std::int64_t seconds);
    void tick();
    Failure someFailure();
    Failure someFailureBeforeTheLook();
    void ticksOfAMoment();

    // The invariants.
    void act(const std::string& what, const std::function<void()>& action);
    void announce(const Box& box);
    void goBackToDeath();
    void expectSame();
    void expectTotals();
    void expectShown(const Amount& total);
    void expectNoFall(const Amount& total);
    void expectBalloons();
    void expectBackups();
    void expectAside();
    void expectFile();
    void noteLedger(bool whileAsking = false);
    void expectLedger();
    void demand(bool holds, const char* what);
    void note(const std::string& what);
    [[noreturn]] void violated(const std::string& what);

    bool anyConnected() const;
    std::string nameOf(const Session& session) const;
    FrmMain& window() { return world_->forms.frmMain; }

    std::uint32_t seed_;
    Crashes crashes_;
    bool hasLedger_;
    bool starts_ = false;                    ///< the program is being started
    std::string ledgerBefore_;               ///< what the ledger's file holds
    std::map<std::string, Amount> inLedger_; ///< what that tells of each line
    Chance chance_{seed_};
    ScriptedPlatform machine_;
    std::optional<World> world_;
    Line line_{chance_};
    Calendar calendar_;
    Expected expected_{chance_, line_};
    Records records_;
    Counts counts_;
    std::deque<std::string> events_;
    std::string unexpected_; ///< box, or that one did not come
    Amount lastTotal_;
    int lastResets_ = 0;
    bool mayFall_ = true;
    int questionsInRun_ = 0;
    std::size_t backupsSeen_ = 0;
    std::string journalBefore_; ///< what it held before the program was started
    int asideSeen_ = 0;
    /// What lay on the disk when the program died at a box, and how many balloons had come.
    std::optional<ScriptedFiles> filesAtDeath_;
    std::size_t balloonsAtDeath_ = 0;
    std::string lastBalloon_;
};

} // namespace tarvik::soak
