#include "faults/Lives.h"

#include "faults/Life.h"
#include "ledger/LedgerContents.h"
#include "settings/mdlSettingsLedger.h"
#include "startup/mdlStartUp.h"
#include "state/mdlTransfers.h"

#include <algorithm>
#include <memory>
#include <optional>

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

/// The same with a ledger: so much more happens to it in these.
bool liveWithLedger(Session& session, const std::string& folder) {
    constexpr double untilLate = 15 * 3600.0 + 300; // 23:20:22
    session.scripted.clock.advanceSeconds(untilLate);
    Life life(session, folder, savedBefore);
    life.start(savedBefore);
    life.connect("Ridge");
    life.pass(0);
    life.carry("Ridge", 90, 9);
    life.pass(6);
    life.beginLedger();
    life.carry("Ridge", 1000, 100);
    life.connect("Harbour", {5000, 500, 2'000'000});
    life.pass(31); // Harbour ran for more than two quarter hours
    life.carry("Ridge", 1'200'000, 4);
    life.pass(70);
    life.carry("Harbour", 11, 2);
    life.atOnce([&] { session.scripted.desktop.pause(); });
    life.pass(1000);
    FrmOptions& options = session.world.forms.frmOptions;
    life.reset([&] { options.cmdResetValues.press(); });
    life.carry("Harbour", 13, 3);
    life.redial("Ridge");
    life.carry("Ridge", 70, 7);
    life.pass(10);
    life.carry("Harbour", 17, 4);
    life.drop("Ridge");
    life.pass(1500); // past midnight
    life.connect("Ridge");
    life.carry("Ridge", 40, 4);
    life.pass(10);
    life.state().TransferReset = enDateCalc::EndOfMonth;
    life.state().TransferResetEnable = life.state().TransferResetBackup = 1;
    life.carry("Harbour", 19, 1);
    life.carry("Ridge", 23, 2);
    life.passIntoReset(1);
    life.carry("Ridge", 9, 5);
    life.pass(10);
    return life.end({resetQuestion});
}

/// What an earlier life had seen of its lines when it was killed.
constexpr Figures ofHarbour{700, 70, 11'000};
constexpr Figures ofRidge{300, 30, 6'000};
/// One that kept a ledger had seen an end of Ridge's before.
constexpr Figures ofFormerRidge{50, 5, 4'000};

/// The lines of that life, the earlier first.
std::vector<Line> formerLines(bool hasLedger) {
    Line harbour{.handle = hasLedger ? 2U : 1U,
                 .entry = "Harbour",
                 .carried = ofHarbour,
                 .seen = ofHarbour,
                 .known = true};
    Line ridge = harbour;
    ++ridge.handle;
    ridge.entry = "Ridge";
    ridge.carried = ridge.seen = ofRidge;
    return {harbour, ridge};
}

void carried(ScriptedPlatform& machine, std::uint32_t line, const Figures& figures) {
    machine.connections.transfer(line, static_cast<std::uint32_t>(figures.rcvd),
                                 static_cast<std::uint32_t>(figures.sent),
                                 static_cast<std::uint32_t>(figures.time));
}

void keepALedger(ScriptedPlatform& machine) {
    BeginLedger();
    const std::uint32_t ridge = machine.connections.connect("Ridge");
    forms().frmMain.timUpdateStats.fire();
    carried(machine, ridge, ofFormerRidge);
    forms().frmMain.timUpdateStats.fire();
    machine.connections.disconnect(ridge);
    forms().frmMain.timUpdateStats.fire();
}

/// The files as a program leaves them that is killed after it has counted so much of two lines.
Folder leftByAKill(Folder files, bool hasLedger = false) {
    ScriptedPlatform machine;
    const std::string folder = machine.program.folderPath + machine.program.separator;
    machine.connections.entries = {{.name = "Harbour"}, {.name = "Ridge"}};
    machine.program.arguments = "/r";
    machine.files.setFile(folder + "Tarvik.ini", files.at("Tarvik.ini"));
    {
        const World world(machine.platform);
        Main();
        if (hasLedger) {
            keepALedger(machine);
        }
        const std::uint32_t harbour = machine.connections.connect("Harbour");
        const std::uint32_t ridge = machine.connections.connect("Ridge");
        forms().frmMain.timUpdateStats.fire();
        machine.clock.advanceSeconds(static_cast<double>(ofHarbour.time) / 1000);
        carried(machine, harbour, ofHarbour);
        carried(machine, ridge, ofRidge);
        forms().frmMain.timUpdateStats.fire();
    }
    files["Tarvik.ini"] = machine.files.file(folder + "Tarvik.ini");
    files["Tarvik.journal"] = machine.files.file(folder + "Tarvik.journal");
    if (hasLedger) {
        files["Tarvik.ledger"] = machine.files.file(folder + "Tarvik.ledger");
    }
    return files;
}

Folder leftByAKill(const Folder& files, Left left) {
    Folder folder = leftByAKill(files, true);
    const std::string lines = newestEntry(folder.at("Tarvik.journal")).value().ledger.value().lines;
    const std::size_t size = left == Left::Unwritten ? 0 : lines.size();
    folder["Tarvik.ledger"] += lines.substr(0, left == Left::Torn ? size - 20 : size);
    return folder;
}

constexpr Figures ridgeFoundUp{400, 40, 9'000};

/// Harbour is still up; Ridge is not, but another call of its is that has carried more.
bool liveAgain(Session& session, const std::string& folder, const std::vector<std::string>& said,
               bool hasLedger) {
    session.scripted.clock.advanceSeconds(20 + static_cast<double>(ofHarbour.time) / 1000);
    const Figures before = hasLedger ? ofFormerRidge : Figures();
    Life life(session, folder, savedBefore + before, formerLines(hasLedger));
    if (hasLedger) {
        life.keepsLedger({{"Ridge", ofFormerRidge}});
    }
    life.stay("Harbour", {30, 3, 20'000});
    life.start(savedBefore);
    life.connect("Ridge", ridgeFoundUp);
    life.pass(0);
    life.carry("Harbour", 4, 2);
    life.carry("Ridge", 5, 1);
    life.pass(10);
    if (hasLedger) {
        life.pass(900);
    }
    life.drop("Harbour");
    return life.end(said);
}

/// What the next start may go on from.
std::vector<Ground> mayGoOnFrom(const Told& told, const std::string& fault, const Ground& before,
                                bool iniIsGone) {
    std::vector<Ground> all;
    if (!endsInTheMiddle(fault) && told.saved) {
        Ground saved;
        saved.sums = told.sums;
        saved.entry.totals = amountOf(told.all);
        return {saved};
    }
    if (told.leftAlone) {
        Ground saved;
        saved.sums = before.sums;
        saved.entry.totals = amountOf(savedBefore);
        all.push_back(saved); // the journal that was left alone may be set aside by now
    }
    for (std::optional<Ground>& found : told.mayBeFound(fault)) {
        Ground ground = found.value_or(before);
        // A reset that was announced was done when the file is gone.
        if (found && found->entry.resetIfGone && iniIsGone) {
            ground.entry.totals = {};
            for (FormerSession& one : ground.entry.sessions) {
                one.session.offset = one.session.counted = {};
            }
        }
        all.push_back(std::move(ground));
    }
    return all;
}

std::optional<LineSession> sessionIn(const JournalEntry& entry, const Line& line) {
    const auto known =
        std::find_if(entry.sessions.begin(), entry.sessions.end(), [&](const FormerSession& one) {
            return one.session.connection.hrasconn == line.handle &&
                   line.entry == one.session.connection.szEntryName;
        });
    return known == entry.sessions.end() ? std::nullopt : std::optional(known->session);
}

/// What is counted in the end of a line that is up, by a start that goes on from that entry: all
/// of it, but for what the entry has already and for what it says is not to count.
Figures still(const JournalEntry& from, const Line& line, const Figures& now) {
    const auto known = sessionIn(from, line);
    return known ? now - figuresOf(known->offset) - figuresOf(known->counted) : now;
}

/// What a ledger is to tell in the end: as much as the lines have carried since the entry too.
Sums ledgeredInTheEnd(const Ground& from, const std::vector<Line>& lines, const Figures& more) {
    Sums sums = from.sums;
    for (const Line& line : lines) {
        const auto known = sessionIn(from.entry, line);
        sums[line.entry] =
            sums[line.entry] + line.carried + more - (known ? figuresOf(known->totals) : Figures());
    }
    return sums;
}

/// Lines that are still up are counted as if nothing had happened.
std::string troubleWithLines(Session& restart, const Told& told, const std::vector<Ground>& from,
                             std::vector<Sums>& ledgers) {
    constexpr Figures more{10, 1, 1000};
    ScriptedConnections& service = restart.scripted.connections;
    restart.world.state.TransferResetEnable = 0;
    restart.scripted.clock.now = Date(told.clock);
    restart.scripted.clock.universal = told.universal;
    restart.scripted.clock.advanceSeconds(static_cast<double>(more.time) / 1000);
    std::vector<Figures> right;
    ledgers.clear();
    for (const Ground& ground : from) {
        Figures sum = figuresOf(ground.entry.totals);
        for (const Line& line : told.lines) {
            sum = sum + still(ground.entry, line, line.carried + more);
        }
        right.push_back(sum);
        ledgers.push_back(ledgeredInTheEnd(ground, told.lines, more));
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

/// What a start has found of a ledger and of what was not in it yet.
Sums foundOf(const Ledger& ledger) {
    std::vector<LedgerEntry> all = ledger.contents().entries;
    all.insert(all.end(), ledger.unwritten.entries().begin(), ledger.unwritten.entries().end());
    return sumsIn(all);
}

/// `ledgers`: what a ledger may tell in the end; none where none is kept.
std::string look(Session& restart, const std::string& folder, const std::string& fault,
                 const Folder& found, const Ground& before, std::vector<Sums>& ledgers) {
    const Told told = Told::load(folder);
    if (!told.trouble.empty()) {
        return told.trouble;
    }
    std::vector<Ground> from = mayGoOnFrom(told, fault, before, !found.contains("Tarvik.ini"));
    const Figures shown = shownNow();
    const std::string last = figuresOf(from.back().entry.totals).text();
    std::erase_if(from, [&](const Ground& one) { return figuresOf(one.entry.totals) != shown; });
    if (from.empty()) {
        return "the next start shows " + shown.text() + ", not " + last + "\n";
    }
    const Sums ledgered = foundOf(restart.world.ledger);
    const Sums lastSums = from.back().sums;
    std::erase_if(from, [&](const Ground& one) { return one.sums != ledgered; });
    if (from.empty()) {
        return "the ledger tells " + textOf(ledgered) + ", not " + textOf(lastSums) + "\n";
    }
    const bool isKept = restart.world.ledger.inUse();
    ledgers = {ledgered};
    std::string trouble = told.ending ? "" : troubleWithLines(restart, told, from, ledgers);
    if (!isKept) {
        ledgers.clear();
    }
    return trouble;
}

/// All is in the file at the end of the start after a life.
std::string lookAtEnd(const Folder& after, const std::vector<Sums>& ledgers) {
    const auto ledger = after.find("Tarvik.ledger");
    const Sums sums =
        ledger == after.end() ? Sums() : sumsIn(readLedger(ledger->second).contents.entries);
    if (ledgers.empty() && sums.empty()) {
        return {};
    }
    return std::find(ledgers.begin(), ledgers.end(), sums) != ledgers.end()
               ? ""
               : "in the end the ledger tells " + textOf(sums) + ", not " +
                     textOf(ledgers.empty() ? Sums() : ledgers.back()) + "\n";
}

Operation lifeOf(const char* name, const std::string& folder, Folder before,
                 std::vector<std::string> said, std::vector<std::string> mayWarn,
                 const std::function<bool(Session&)>& act, const Ground& begin) {
    mayWarn.emplace_back(withoutBackup);
    Operation life{name, std::move(before), [](Session&) {},
                   act,  std::move(said),   std::move(mayWarn)};
    life.manyWays = true;
    life.countedWithout = [folder] { return Told::load(folder).leftAlone; };
    const auto ledgers = std::make_shared<std::vector<Sums>>();
    life.look = [folder, begin, ledgers](Session& restart, const Folder& found,
                                         const std::string& fault) {
        return look(restart, folder, fault, found, begin, *ledgers);
    };
    life.lookAtEnd = [ledgers](const Folder& after) { return lookAtEnd(after, *ledgers); };
    return life;
}

/// That it has records only, no journal.
Ground savedOnly() {
    Ground begin;
    begin.entry.totals = amountOf(savedBefore);
    return begin;
}

} // namespace

Operation wholeLife(const std::string& folder, const Folder& files,
                    std::vector<std::string> mayWarn) {
    return lifeOf(
        "whole life", folder, files, {Life::question(declined), resetQuestion}, std::move(mayWarn),
        [folder](Session& session) { return live(session, folder); }, savedOnly());
}

Operation lifeWithLedger(const std::string& folder, const Folder& files,
                         std::vector<std::string> mayWarn) {
    return lifeOf(
        "life with a ledger", folder, files, {resetQuestion}, std::move(mayWarn),
        [folder](Session& session) { return liveWithLedger(session, folder); }, savedOnly());
}

Operation secondLife(const std::string& folder, const Folder& files,
                     std::vector<std::string> mayWarn) {
    const std::vector<std::string> said{mayWarn.front(), Life::question(ridgeFoundUp)};
    mayWarn.push_back(Life::question(ofHarbour + Figures{30, 3, 0}));
    const Folder left = leftByAKill(files);
    return lifeOf(
        "second life", folder, left, said, std::move(mayWarn),
        [folder, said](Session& session) { return liveAgain(session, folder, said, false); },
        {.entry = newestEntry(left.at("Tarvik.journal")).value()});
}

Operation secondLifeWithLedger(const char* name, Left left, const std::string& folder,
                               const Folder& files, std::vector<std::string> mayWarn) {
    const std::vector<std::string> said{mayWarn.front(), Life::question(ridgeFoundUp)};
    mayWarn.push_back(Life::question(ofHarbour + Figures{30, 3, 0}));
    const Folder before = leftByAKill(files, left);
    return lifeOf(
        name, folder, before, said, std::move(mayWarn),
        [folder, said](Session& session) { return liveAgain(session, folder, said, true); },
        {.entry = newestEntry(before.at("Tarvik.journal")).value(),
         .sums = {{"Harbour", ofHarbour}, {"Ridge", ofFormerRidge + ofRidge}}});
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
