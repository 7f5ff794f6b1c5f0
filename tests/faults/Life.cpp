#include "faults/Life.h"

#include "journal/JournalEntry.h"
#include "startup/mdlStartUp.h"
#include "state/mdlTransfers.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <memory>

namespace tarvik::faults {

namespace {

constexpr const char* resetQuestion = "Are you really sure you want to reset the (overall) values?";
constexpr const char* withoutBackup =
    "The criteria to reset the transfer records has been reached.\rHowever - An error occured "
    "while trying to create the backup-file.\rDo you want to reset the transfers recorded anyway?";

/// What a life has told of itself by the time it ended, however it ended. All bytes received.
struct Told {
    std::vector<std::int64_t> entries; ///< what each entry of the journal says, whole or only begun
    std::size_t written = 0;           ///< so many are whole
    std::size_t flushed = 0;           ///< so many are on the disk
    std::int64_t before = 0;           ///< what is to be shown if the step under way did nothing
    std::int64_t after = 0;            ///< or everything
    bool lineIsUp = false;
    std::uint32_t counter = 0;
    std::uint32_t milliseconds = 0;
    double clock = 0;
    bool resetting = false;
    bool ending = false;
    bool inPeace = false; ///< it ended, and no box came that should not

    void save(const std::string& path) const {
        std::ofstream to(path);
        to.precision(17);
        to << written << ' ' << flushed << ' ' << before << ' ' << after << ' ' << lineIsUp << ' '
           << counter << ' ' << milliseconds << ' ' << clock << ' ' << resetting << ' ' << ending
           << ' ' << inPeace;
        for (const std::int64_t entry : entries) {
            to << ' ' << entry;
        }
    }
    static Told load(const std::string& path) {
        Told told;
        std::ifstream from(path);
        from >> told.written >> told.flushed >> told.before >> told.after >> told.lineIsUp >>
            told.counter >> told.milliseconds >> told.clock >> told.resetting >> told.ending >>
            told.inPeace;
        for (std::int64_t entry = 0; from >> entry;) {
            told.entries.push_back(entry);
        }
        return told;
    }
};

/// Beside the folder: what is told outlives the program, and is no file of its.
std::string toldAt(const std::string& folder) {
    return folder + ".told";
}

class Life {
public:
    Life(Session& session, const std::string& folder, std::int64_t begin)
        : session_(session), path_(toldAt(folder)), finished_(begin) {
        session_.files.heldChanges = [this](const std::string& step, std::string_view bytes) {
            note(step, bytes);
        };
        tell();
    }
    ~Life() {
        session_.files.heldChanges = [](const std::string&, std::string_view) {};
    }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    FrmMain& window() { return session_.world.forms.frmMain; }
    State& state() { return session_.world.state; }

    void connect(std::uint32_t bytes = 0, std::uint32_t milliseconds = 0) {
        line_ = session_.scripted.connections.connect("Harbour");
        session_.scripted.connections.transfer(line_, bytes, 0, milliseconds);
        told_.lineIsUp = true;
        told_.counter = bytes;
        told_.milliseconds = milliseconds;
        tick();
    }
    /// So many seconds later the line has carried so many bytes, and a tick sees it.
    void pass(std::uint32_t seconds, std::uint32_t bytes) {
        session_.scripted.clock.advanceSeconds(seconds);
        if (told_.lineIsUp) {
            session_.scripted.connections.transfer(line_, bytes, 0, seconds * 1000);
            told_.counter += bytes;
            told_.milliseconds += seconds * 1000;
        }
        tick();
    }
    void hangUp() {
        session_.scripted.connections.disconnect(line_);
        finished_ += told_.counter;
        told_.counter = 0;
        told_.lineIsUp = false;
        pass(1, 0);
    }
    /// Afterwards the session under way counts from its beginning.
    template <class Deed>
    void reset(Deed&& deed) {
        told_.before = finished_ + told_.counter;
        told_.after = told_.counter;
        told_.resetting = true;
        told_.save(path_);
        deed();
        finished_ = 0;
        told_.resetting = false;
        tell();
    }
    bool end(const std::vector<std::string>& said) {
        told_.ending = true;
        tell();
        window().unload(UnloadMode::AppWindows);
        told_.inPeace = session_.boxes == said;
        tell();
        return told_.inPeace;
    }

private:
    void tick() {
        tell();
        window().timUpdateStats.fire();
    }
    void tell() {
        told_.before = told_.after = finished_ + told_.counter;
        told_.clock = session_.scripted.clock.now.serial();
        told_.save(path_);
    }
    void note(const std::string& step, std::string_view bytes) {
        if (step == "write") {
            told_.entries.resize(told_.written);
            told_.entries.push_back(readPlace(bytes).entry.totals.rcvd.integralPart());
        } else if (step == "written") {
            told_.written = told_.entries.size();
        } else if (step == "flushed") {
            told_.flushed = told_.written;
        }
        told_.save(path_);
    }

    Session& session_;
    std::string path_;
    Told told_;
    std::int64_t finished_; ///< before the session under way
    std::uint32_t line_ = 0;
};

bool live(Session& session, const std::string& folder) {
    Life life(session, folder, 2000);
    session.scripted.program.arguments = "/r";
    Main();
    life.connect();
    life.pass(10, 5000);
    life.pass(5, 70);
    FrmOptions& options = session.world.forms.frmOptions;
    life.window().cmdOptions.press();
    options.txtTransferLimit.setText("777");
    options.cmdOK.press();
    life.pass(31, 11);
    life.hangUp();
    life.connect();
    life.pass(10, 300);
    life.window().Pause.raise();
    life.reset([&] { options.cmdResetValues.press(); });
    life.pass(10, 40);
    life.reset([&] {
        life.state().TransferReset = enDateCalc::EndOfMonth;
        life.state().TransferResetEnable = life.state().TransferResetBackup = 1;
        life.window().timUpdateStats.fire();
    });
    life.pass(10, 9);
    return life.end({resetQuestion});
}

constexpr std::uint32_t countedBefore = 700;
constexpr std::uint32_t millisecondsBefore = 11'000;

/// The files as a program leaves them that is killed after it has counted so much of a session.
Folder leftByAKill(Folder files) {
    ScriptedPlatform machine;
    const std::string folder = machine.program.folderPath + machine.program.separator;
    machine.connections.entries = {{.name = "Harbour"}};
    machine.program.arguments = "/r";
    machine.files.setFile(folder + "Tarvik.ini", files.at("Tarvik.ini"));
    {
        const World world(machine.platform);
        Main();
        const std::uint32_t line = machine.connections.connect("Harbour");
        forms().frmMain.timUpdateStats.fire();
        machine.clock.advanceSeconds(millisecondsBefore / 1000);
        machine.connections.transfer(line, countedBefore, 0, millisecondsBefore);
        forms().frmMain.timUpdateStats.fire();
    }
    files["Tarvik.ini"] = machine.files.file(folder + "Tarvik.ini");
    files["Tarvik.journal"] = machine.files.file(folder + "Tarvik.journal");
    return files;
}

bool liveAgain(Session& session, const std::string& folder, const std::vector<std::string>& said) {
    Life life(session, folder, 2000);
    session.scripted.program.arguments = "/r";
    session.scripted.clock.advanceSeconds(20 + millisecondsBefore / 1000.0);
    Main();
    life.connect(countedBefore + 30, millisecondsBefore + 20'000);
    life.pass(10, 4);
    life.hangUp();
    return life.end(said);
}

bool isKill(const std::string& fault) {
    return fault.starts_with("kill");
}

/// What may be shown first after that fault.
std::vector<std::int64_t> mayBeShown(const Told& told, const std::string& fault,
                                     const std::vector<std::int64_t>& atBegin) {
    const std::size_t safe = isKill(fault) ? told.written : told.flushed;
    std::vector<std::int64_t> values = safe == 0 ? atBegin : std::vector<std::int64_t>();
    for (std::size_t i = safe == 0 ? 0 : safe - 1; i < told.entries.size(); ++i) {
        values.push_back(told.entries[i]);
    }
    return values;
}

bool isAmong(const std::vector<std::int64_t>& values, std::int64_t one) {
    return std::find(values.begin(), values.end(), one) != values.end();
}

/// A session that is still up is counted as if nothing had happened.
std::string troubleWithSession(Session& restart, const Told& told) {
    constexpr std::uint32_t more = 10;
    restart.world.state.TransferResetEnable = 0;
    restart.scripted.clock.now = Date(told.clock);
    restart.scripted.clock.advanceSeconds(1);
    const std::uint32_t line = restart.scripted.connections.connect("Harbour");
    restart.scripted.connections.transfer(line, told.counter + more, 0, told.milliseconds + 1000);
    FrmMain& window = restart.world.forms.frmMain;
    window.cmdMonitor.press();
    window.timUpdateStats.fire();
    const std::int64_t shown = Rcvd().overall().integralPart();
    restart.scripted.connections.disconnect(line);
    window.timUpdateStats.fire();
    window.cmdMonitor.press();
    return shown == told.before + more || shown == told.after + more
               ? ""
               : "the session goes on at " + std::to_string(shown) + ", not at " +
                     std::to_string(told.after + more) + "\n";
}

std::string look(Session& restart, const std::string& folder, const std::string& fault,
                 const Folder& found, const std::vector<std::int64_t>& atBegin) {
    const Told told = Told::load(toldAt(folder));
    const std::int64_t shown = Rcvd().overall().integralPart();
    std::vector<std::int64_t> right =
        told.inPeace ? std::vector{told.after} : mayBeShown(told, fault, atBegin);
    if (!found.contains("Tarvik.ini") && told.resetting) {
        right.push_back(0); // the reset was announced
    }
    if (!isAmong(right, shown)) {
        return "the next start shows " + std::to_string(shown) + ", the last entry said " +
               (told.entries.empty() ? "nothing" : std::to_string(told.entries.back())) + "\n";
    }
    return told.lineIsUp && !told.ending ? troubleWithSession(restart, told) : "";
}

Operation lifeOf(const char* name, const std::string& folder, Folder before,
                 std::vector<std::string> said, std::vector<std::string> mayWarn,
                 const std::function<bool(Session&)>& act, std::vector<std::int64_t> atBegin) {
    mayWarn.emplace_back(withoutBackup);
    Operation life{name, std::move(before), [](Session&) {},
                   act,  std::move(said),   std::move(mayWarn)};
    life.endsOnly = true;
    life.look = [folder, atBegin](Session& restart, const Folder& found, const std::string& fault) {
        return look(restart, folder, fault, found, atBegin);
    };
    return life;
}

} // namespace

Operation wholeLife(const std::string& folder, const Folder& files,
                    std::vector<std::string> mayWarn) {
    return lifeOf("whole life", folder, files, {resetQuestion}, std::move(mayWarn),
                  [folder](Session& session) { return live(session, folder); }, {2000});
}

Operation secondLife(const std::string& folder, const Folder& files,
                     std::vector<std::string> mayWarn) {
    const std::vector<std::string> said{mayWarn.front()};
    return lifeOf("second life", folder, leftByAKill(files), said, std::move(mayWarn),
                  [folder, said](Session& session) { return liveAgain(session, folder, said); },
                  {2000 + std::int64_t{countedBefore}});
}

} // namespace tarvik::faults
