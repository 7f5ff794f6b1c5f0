#include "faults/Lives.h"

#include "faults/Life.h"
#include "startup/mdlStartUp.h"
#include "state/mdlTransfers.h"

#include <algorithm>

namespace tarvik::faults {

namespace {

constexpr const char* resetQuestion = "Are you really sure you want to reset the (overall) values?";
constexpr const char* withoutBackup =
    "The criteria to reset the transfer records has been reached.\rHowever - An error occured "
    "while trying to create the backup-file.\rDo you want to reset the transfers recorded anyway?";

/// What the INI file says at first.
constexpr Figures savedBefore{2000, 200, 20};
/// What Harbour has carried when it is found up, and is not to count.
constexpr Figures declined{400, 40, 4000};

bool live(Session& session, const std::string& folder) {
    Life life(session, folder, savedBefore);
    life.start(savedBefore);
    life.connect("Harbour", declined);
    life.passDeclined(0);
    life.carry("Harbour", 5000, 500);
    life.pass(10);
    FrmOptions& options = session.world.forms.frmOptions;
    life.reset([&] { options.cmdResetValues.press(); });
    life.connect("Ridge");
    life.carry("Harbour", 70, 7);
    life.carry("Ridge", 1000, 100);
    life.pass(5);
    life.atOnce([&] {
        life.window().cmdOptions.press();
        options.txtTransferLimit.setText("777");
        options.cmdOK.press();
    });
    life.carry("Harbour", 11, 0);
    life.carry("Ridge", 0, 3);
    life.pass(31);
    life.redial("Harbour");
    life.carry("Harbour", 6000, 600);
    life.pass(10);
    life.atOnce([&] { session.scripted.desktop.pause(); });
    life.drop("Ridge");
    life.connect("Ridge");
    life.carry("Ridge", 40, 4);
    life.pass(10);
    life.state().TransferReset = enDateCalc::EndOfMonth;
    life.state().TransferResetEnable = life.state().TransferResetBackup = 1;
    life.carry("Harbour", 13, 1);
    life.carry("Ridge", 17, 2);
    life.passIntoReset(1);
    life.carry("Ridge", 9, 5);
    life.pass(10);
    return life.end({Life::question(declined), resetQuestion});
}

/// What an earlier life had seen of its lines when it was killed.
constexpr Figures ofHarbour{700, 70, 11'000};
constexpr Figures ofRidge{300, 30, 6'000};

/// The files as a program leaves them that is killed after it has counted so much of two lines.
Folder leftByAKill(Folder files) {
    ScriptedPlatform machine;
    const std::string folder = machine.program.folderPath + machine.program.separator;
    machine.connections.entries = {{.name = "Harbour"}, {.name = "Ridge"}};
    machine.program.arguments = "/r";
    machine.files.setFile(folder + "Tarvik.ini", files.at("Tarvik.ini"));
    {
        const World world(machine.platform);
        const auto carried = [&](std::uint32_t line, const Figures& figures) {
            machine.connections.transfer(line, static_cast<std::uint32_t>(figures.rcvd),
                                         static_cast<std::uint32_t>(figures.sent),
                                         static_cast<std::uint32_t>(figures.time));
        };
        Main();
        const std::uint32_t harbour = machine.connections.connect("Harbour");
        const std::uint32_t ridge = machine.connections.connect("Ridge");
        forms().frmMain.timUpdateStats.fire();
        machine.clock.advanceSeconds(static_cast<double>(ofHarbour.time) / 1000);
        carried(harbour, ofHarbour);
        carried(ridge, ofRidge);
        forms().frmMain.timUpdateStats.fire();
    }
    files["Tarvik.ini"] = machine.files.file(folder + "Tarvik.ini");
    files["Tarvik.journal"] = machine.files.file(folder + "Tarvik.journal");
    return files;
}

constexpr Figures ridgeFoundUp{400, 40, 9'000};

/// Harbour is still up; Ridge is not, but another call of its is that has carried more.
bool liveAgain(Session& session, const std::string& folder, const std::vector<std::string>& said) {
    const Line harbour{.handle = 1,
                       .entry = "Harbour",
                       .carried = ofHarbour,
                       .seen = ofHarbour,
                       .offset = {},
                       .known = true};
    Line ridge = harbour;
    ridge.handle = 2;
    ridge.entry = "Ridge";
    ridge.carried = ridge.seen = ofRidge;
    session.scripted.clock.advanceSeconds(20 + static_cast<double>(ofHarbour.time) / 1000);
    Life life(session, folder, savedBefore, {harbour, ridge});
    life.stay("Harbour", {30, 3, 20'000});
    life.start(savedBefore);
    life.connect("Ridge", ridgeFoundUp);
    life.pass(0);
    life.carry("Harbour", 4, 2);
    life.carry("Ridge", 5, 1);
    life.pass(10);
    life.drop("Harbour");
    return life.end(said);
}

/// What the next start may go on from.
std::vector<JournalEntry> mayGoOnFrom(const Told& told, const std::string& fault,
                                      const JournalEntry& before, bool iniIsGone) {
    std::vector<JournalEntry> all;
    if (!endsInTheMiddle(fault) && told.saved) {
        JournalEntry saved;
        saved.totals = amountOf(told.all);
        return {saved};
    }
    if (told.leftAlone) {
        JournalEntry saved;
        saved.totals = amountOf(savedBefore);
        all.push_back(saved); // the journal that was left alone may be set aside by now
    }
    for (const auto& entry : told.mayBeFound(fault)) {
        // A reset that was announced was done when the file is gone.
        const bool isReset = entry && entry->resetIfGone && iniIsGone;
        all.push_back(isReset ? JournalEntry() : entry.value_or(before));
    }
    return all;
}

/// What is counted in the end of a line that is up, by a start that goes on from that entry: all
/// of it, but for what the entry has already and for what it says is not to count.
Figures still(const JournalEntry& from, const Line& line, const Figures& now) {
    const auto known =
        std::find_if(from.sessions.begin(), from.sessions.end(), [&](const FormerSession& one) {
            return one.session.connection.hrasconn == line.handle &&
                   line.entry == one.session.connection.szEntryName;
        });
    return known == from.sessions.end()
               ? now
               : now - figuresOf(known->session.offset) - figuresOf(known->session.counted);
}

/// Lines that are still up are counted as if nothing had happened.
std::string troubleWithLines(Session& restart, const Told& told,
                             const std::vector<JournalEntry>& from) {
    constexpr Figures more{10, 1, 1000};
    ScriptedConnections& service = restart.scripted.connections;
    restart.world.state.TransferResetEnable = 0;
    restart.scripted.clock.now = Date(told.clock);
    restart.scripted.clock.universal = told.universal;
    restart.scripted.clock.advanceSeconds(static_cast<double>(more.time) / 1000);
    std::vector<Figures> right;
    for (const JournalEntry& entry : from) {
        Figures sum = figuresOf(entry.totals);
        for (const Line& line : told.lines) {
            sum = sum + still(entry, line, line.carried + more);
        }
        right.push_back(sum);
    }
    for (const Line& line : told.lines) {
        const Figures now = line.carried + more;
        service.transfer(service.connect(line.entry), static_cast<std::uint32_t>(now.rcvd),
                         static_cast<std::uint32_t>(now.sent),
                         static_cast<std::uint32_t>(now.time));
    }
    FrmMain& window = restart.world.forms.frmMain;
    window.cmdMonitor.press();
    window.timUpdateStats.fire();
    service.connections.clear();
    window.timUpdateStats.fire();
    window.cmdMonitor.press();
    const Figures shown = shownNow();
    return std::find(right.begin(), right.end(), shown) != right.end()
               ? ""
               : "the lines go on to " + shown.text() + ", not to " + right.back().text() + "\n";
}

std::string look(Session& restart, const std::string& folder, const std::string& fault,
                 const Folder& found, const JournalEntry& before) {
    const Told told = Told::load(folder);
    if (!told.trouble.empty()) {
        return told.trouble;
    }
    std::vector<JournalEntry> from =
        mayGoOnFrom(told, fault, before, !found.contains("Tarvik.ini"));
    const Figures shown = shownNow();
    const std::string last = figuresOf(from.back().totals).text();
    std::erase_if(from, [&](const JournalEntry& one) { return figuresOf(one.totals) != shown; });
    if (from.empty()) {
        return "the next start shows " + shown.text() + ", not " + last + "\n";
    }
    return told.ending ? "" : troubleWithLines(restart, told, from);
}

Operation lifeOf(const char* name, const std::string& folder, Folder before,
                 std::vector<std::string> said, std::vector<std::string> mayWarn,
                 const std::function<bool(Session&)>& act, const JournalEntry& begin) {
    mayWarn.emplace_back(withoutBackup);
    Operation life{name, std::move(before), [](Session&) {},
                   act,  std::move(said),   std::move(mayWarn)};
    life.manyWays = true;
    life.countedWithout = [folder] { return Told::load(folder).leftAlone; };
    life.look = [folder, begin](Session& restart, const Folder& found, const std::string& fault) {
        return look(restart, folder, fault, found, begin);
    };
    return life;
}

} // namespace

Operation wholeLife(const std::string& folder, const Folder& files,
                    std::vector<std::string> mayWarn) {
    JournalEntry begin;
    begin.totals = amountOf(savedBefore);
    return lifeOf(
        "whole life", folder, files, {Life::question(declined), resetQuestion}, std::move(mayWarn),
        [folder](Session& session) { return live(session, folder); }, begin);
}

Operation secondLife(const std::string& folder, const Folder& files,
                     std::vector<std::string> mayWarn) {
    const std::vector<std::string> said{mayWarn.front(), Life::question(ridgeFoundUp)};
    mayWarn.push_back(Life::question(ofHarbour + Figures{30, 3, 0}));
    const Folder left = leftByAKill(files);
    return lifeOf(
        "second life", folder, left, said, std::move(mayWarn),
        [folder, said](Session& session) { return liveAgain(session, folder, said); },
        newestEntry(left.at("Tarvik.journal")).value());
}

Operation startAfterKill(const Folder& files, std::vector<std::string> mayWarn) {
    const Folder left = leftByAKill(files);
    const std::vector<std::string> said{mayWarn.front()};
    Operation start{"start after a kill",
                    left,
                    [](Session&) {},
                    [said](Session& session) {
                        Main();
                        return session.boxes == said;
                    },
                    said,
                    std::move(mayWarn)};
    start.look = [begin = newestEntry(left.at("Tarvik.journal")).value()](Session&, const Folder&,
                                                                          const std::string&) {
        const Figures shown = shownNow();
        return shown == figuresOf(begin.totals) ? ""
                                                : "the next start shows " + shown.text() + "\n";
    };
    return start;
}

} // namespace tarvik::faults
