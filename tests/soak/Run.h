#pragma once

#include "scripted/ScriptedPlatform.h"
#include "soak/Calendar.h"
#include "soak/Expected.h"
#include "soak/Records.h"
#include "wiring/World.h"

#include <deque>
#include <functional>
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

    explicit Run(std::uint32_t seed, Crashes crashes = Crashes::Seldom);

    /// Throws a `Violation` that tells the day, the tick and the last events.
    void spendDay();
    Counts counts() const;

private:
    // Whoever works on the machine.
    void userActs();
    void startProgram();
    void crash();
    void endSession();
    void quit();
    void restartSometimes();
    void openOptions();
    void connect();
    void disconnect();
    void requestReset();
    void closeWarning();
    void turnClock();

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
    void ticksOfAMoment();

    // The invariants.
    void act(const std::string& what, const std::function<void()>& action);
    void expectSame();
    void expectTotals();
    void expectShown(const Amount& total);
    void expectNoFall(const Amount& total);
    void expectBalloons();
    void expectBackups();
    void expectFile();
    void demand(bool holds, const char* what);
    void note(const std::string& what);
    [[noreturn]] void violated(const std::string& what);

    bool anyConnected() const;
    std::string nameOf(const Session& session) const;
    FrmMain& window() { return world_->forms.frmMain; }

    std::uint32_t seed_;
    Crashes crashes_;
    Chance chance_{seed_};
    ScriptedPlatform machine_;
    std::optional<World> world_;
    Line line_{chance_};
    Calendar calendar_;
    Expected expected_{chance_};
    Records records_;
    Counts counts_;
    std::deque<std::string> events_;
    std::string unexpected_; ///< box, or that one did not come
    Amount lastTotal_;
    int lastResets_ = 0;
    bool mayFall_ = true;
    int questionsInRun_ = 0;
    std::size_t backupsSeen_ = 0;
    std::string lastBalloon_;
};

} // namespace tarvik::soak
