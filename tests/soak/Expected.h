#pragma once

#include "ports/Desktop.h"
#include "soak/Chance.h"
#include "soak/ReferenceJournal.h"
#include "soak/ReferenceNotes.h"
#include "soak/ReferenceTally.h"
#include "soak/Settings.h"
#include "support/ReferenceBoundary.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik::soak {

/// A box that must come, and how the user answers it.
struct Box {
    std::string text;
    MsgBoxButtons buttons = MsgBoxButtons::OkOnly;
    MsgBoxIcon icon = MsgBoxIcon::None;
    MsgBoxAnswer answer = MsgBoxAnswer::Ok;
    bool sleeps = false; ///< the machine does, while it is open
    bool dies = false;   ///< the program does, after that
};

/// A call of the service that fails.
enum class Failure { None, Enumerate, Status, Statistics, HangUp, Dial };

/// What is wrong with the disk.
enum class Trouble { None, Write, Delete };

/// The file of settings and records as it must be.
struct File {
    bool exists = false;
    bool locked = false;
    Settings settings;
    std::vector<Amount> records;
    int putAside = 0; ///< files of that name, so far

    FileMark mark() const {
        return {.exists = exists, .file = putAside, .records = records.size()};
    }
    Amount totals() const { return records.empty() ? Amount() : records.back(); }
};

/// Now, on the user's clock.
struct Now {
    int day = 0; ///< as a serial
    int hour = 0;
    std::int64_t universal = 0; ///< seconds, the same in all zones
    std::int64_t seconds = 0;   ///< on a clock that nobody sets
};

/// The program as its rules have it: what it must count, ask, show and store at each step.
class Expected {
public:
    Expected(Chance& chance, const Line& line) : chance_(chance), line_(line) {}

    ReferenceTally tally;
    ReferenceJournal journal;
    Settings settings;
    File file;
    std::vector<File> backups; ///< the file as it was at each backup
    bool running = false;
    bool monitoring = false;
    bool connectionActive = false;
    bool firstOnlineUpdate = false;
    bool dialInStarted = false;
    bool warningArmed = false;
    bool warningVisible = false;
    bool stale = false; ///< an error kept the window from being refreshed
    int resets = 0;
    int declined = 0;
    int journalsPutAside = 0;
    int broughtBackLate = 0; ///< journals that were out of reach at the start
    /// The program died at a box, and nothing that would follow is told here.
    bool isDead = false;

    /// What came up since they were last emptied.
    std::vector<Box> boxes;
    std::vector<std::string> balloons;
    /// How notes begin; what follows is left out above.
    static constexpr const char* doubt = "The date of the last reset may be misread";
    static constexpr const char* broughtBack = "When the program last ended, not all was stored.";
    static constexpr const char* outOfReach =
        "The journal of the running count cannot be read and is left alone.";
    static constexpr const char* heldByAnother =
        "Another program has the journal of the running count";
    static constexpr const char* countedMeanwhile =
        "The journal of the running count was out of reach, and this run has counted since.";
    static constexpr const char* ofAnotherFile = "The file of settings is another one";
    static constexpr const char* unwritten = "The journal of the running count cannot be written.";

    /// Now, before anything that follows.
    void itIs(const Now& now) {
        now_ = now;
        tally.now = now.universal;
    }

    void start(bool argumentRun);
    /// The program is killed, or the machine loses its power.
    void crash(bool powerCut);
    void endSession(Trouble trouble);
    /// The machine goes to sleep.
    void pause() {
        keep(true);
        foldedOn_ = now_.day;
    }
    /// The user begins a ledger.
    void beginLedger();
    /// It was written: the journal says at once what is not in it, if the program goes on.
    void ledgerWritten();
    /// The same while the user was asked about a session, with what was known by then.
    void ledgerWrittenWhileAsking();
    /// The start has made it shorter.
    void ledgerFolded();
    void pressQuit(Trouble trouble);
    void pressMonitor();
    void pressDisconnect(std::vector<Session> listed, Failure failure);
    void dialled(Failure failure);
    void requestReset();
    void closeWarning();
    void confirmOptions(const Settings& chosen);
    void tick(std::vector<Session> listed, Failure failure, Trouble trouble);

private:
    struct FailedCall {
        std::string name;
        int code = 0;
    };

    void notice(std::string text, MsgBoxIcon icon);
    void showFailure(const FailedCall& failed);
    void showError(const std::string& numberAndDescription, const std::string& procedure);
    MsgBoxAnswer question(std::string text, MsgBoxButtons buttons, MsgBoxIcon icon,
                          std::uint64_t yesOnceIn);
    void switchOff();
    void hangUp(std::vector<Session>& listed, Failure failure);
    void readListed(Session& one, std::vector<Session>& listed, Failure& failure);
    void readTheOthers(const std::vector<Session>& listed);
    void online(const Session& session, std::vector<Session>& listed);
    bool askAboutSession();
    void checkReset();
    bool backUp();
    void withdrawReset();
    bool fileIsKept();
    void checkTicker();
    void checkLimits(std::vector<Session>& listed);
    bool save(Trouble trouble);
    void shutDown(Trouble trouble);
    void stop();
    Saying sayingNow() const;
    void keep(bool atOnce);
    void write(const Saying& saying, bool atOnce);
    void endJournal(bool saved, bool deletionFails);
    void takeJournal(bool asAtStart);
    void lookAgain();
    bool isAsAtStart() const;
    void putJournalAside(const char* why);
    /// A note that may have to wait for the one before.
    void tellSoon(const std::string& text);
    void show(const std::optional<std::string>& note);
    bool ticks() const { return monitoring && !ending_; }
    bool goOnFrom(const Saying& found);
    bool isOwnSave(const Saying& before) const;

    Chance& chance_;
    const Line& line_;
    ReferenceBoundary boundary_;
    std::int64_t tickerBase_ = 0;
    FailedCall failed_;
    std::set<int> read_;                 ///< in this tick
    std::set<std::string> errors_;       ///< in this tick
    std::set<std::string> errorsBefore_; ///< in the one before, if monitoring went on meanwhile
    Trouble trouble_ = Trouble::None;
    Now now_;
    bool resetInDoubt_ = false; ///< the last reset lay ahead when the program was started
    bool waitTold_ = false;

    bool hasLedger_ = false;
    int ledgerWrites_ = 0;
    int foldedOn_ = 0;                       ///< the user's day
    std::map<std::string, Amount> inLedger_; ///< when it was last written
    FileMark standsOn_;
    ReferenceNotes notes_;
    bool ending_ = false;      ///< there are no ticks any more
    bool asking_ = false;      ///< the box with the question is open
    bool failureTold_ = false; ///< of the journal, in this run
    /// What this run began with; nothing unless it looks for a journal that was out of reach.
    std::optional<Saying> shownAtStart_;
    bool overruled_ = false; ///< a reset in this run goes before what that journal says
    bool wasReset_ = false;  ///< in this tick
    bool resetIsAnnounced_ = false;
};

} // namespace tarvik::soak
