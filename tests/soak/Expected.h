#pragma once

#include "monitor/ReferenceBoundary.h"
#include "ports/Desktop.h"
#include "soak/Chance.h"
#include "soak/ReferenceTally.h"

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
};

/// The settings that accounting depends on; these are the defaults.
struct Settings {
    bool run = false;
    bool transferLimit = false;
    std::int64_t transferLimitValue = 1'000'000;
    bool durationLimit = false;
    int hours = 600;
    int minutes = 0;
    bool warning = false;
    bool hangUp = false;
    bool resets = false;
    int criterion = 0;
    bool backup = false;
    int lastReset = 36'892; ///< day, 1 January 2001
    bool ticker = false;
    int tickerValue = 100; ///< mega-bytes

    friend bool operator==(const Settings&, const Settings&) = default;
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
};

/// Now, on the user's clock.
struct Now {
    int day = 0; ///< as a serial
    int hour = 0;
    std::int64_t clock = 0;   ///< seconds
    std::int64_t seconds = 0; ///< on a clock that nobody sets
};

/// What the journal must say.
struct Journal {
    ReferenceTally::Kept counts;
    Settings settings;
    std::int64_t tickerBase = 0;
    /// Which file it stands on, by what tells one from another.
    bool fileExists = false;
    std::size_t records = 0;
    bool resetIsAnnounced = false;
    bool ended = false;

    /// There is nothing new to be written.
    bool says(const Journal& other) const;
};

/// The program as its rules have it: what it must count, ask, show and store at each step.
class Expected {
public:
    explicit Expected(Chance& chance) : chance_(chance) {}

    ReferenceTally tally;
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

    /// What came up since they were last emptied.
    std::vector<Box> boxes;
    std::vector<std::string> balloons;
    /// How the notes on a reset in doubt and on what was brought back begin; what follows is left
    /// out above.
    static constexpr const char* doubt = "The date of the last reset may be misread";
    static constexpr const char* broughtBack = "When the program last ended, not all was stored.";

    /// Now, before anything that follows.
    void itIs(const Now& now) { now_ = now; }
    bool journalIsThere() const { return journalIsThere_; }

    void start(bool argumentRun);
    /// The program is killed, or the machine loses its power.
    void crash(bool powerCut);
    void endSession(Trouble trouble);
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
    bool fileIsKept();
    void checkTicker();
    void checkLimits(std::vector<Session>& listed);
    bool save(Trouble trouble);
    void shutDown(Trouble trouble);
    void stop();
    Journal journalNow() const;
    void keep(bool atOnce);
    void endJournal(bool saved);
    void restore();
    Amount totalsOfFile() const { return file.records.empty() ? Amount() : file.records.back(); }

    Chance& chance_;
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

    bool journalIsThere_ = false;
    Journal written_; ///< what it says, or what need not be said
    Journal flushed_; ///< what it says after a power cut
    std::optional<std::int64_t> lookedAt_;
    std::optional<std::int64_t> flushedAt_;
    std::optional<std::int64_t> readAt_; ///< when a session was last read
    bool isUnflushed_ = false;
    bool standsOnFile_ = false;
    std::size_t standsOnRecords_ = 0;
    bool resetIsAnnounced_ = false;
};

} // namespace tarvik::soak
