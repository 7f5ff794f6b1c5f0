#include "soak/Run.h"

#include "state/mdlTransfers.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tarvik::soak {

namespace {

constexpr const char* folder = "C:\\Prog";
constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

/// Told by how they begin, for more than the rules tell follows.
constexpr std::array<const char*, 7> beginnings{Expected::doubt,         Expected::broughtBack,
                                                Expected::outOfReach,    Expected::heldByAnother,
                                                Expected::ofAnotherFile, Expected::countedMeanwhile,
                                                Expected::unwritten};

std::int64_t whole(Currency value) {
    return value.integralPart();
}

/// The number that a figure of the window shows.
std::int64_t figure(const std::string& text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char each) { return each != ','; });
    return std::stoll(digits);
}

/// The milliseconds of hr:min:sec:ms.
std::int64_t timeOf(const std::string& text) {
    const std::size_t first = text.find(':');
    const std::string rest = text.substr(first);
    return ((std::stoll(text.substr(0, first)) * 60 + std::stoll(rest.substr(1, 2))) * 60 +
            std::stoll(rest.substr(4, 2))) *
               1000 +
           std::stoll(rest.substr(7));
}

std::string balloonText(const ScriptedNotificationArea::Request& request) {
    const std::string text =
        (request.data.uFlags & NotificationArea::info) != 0 ? request.data.szInfo : "";
    for (const char* beginning : beginnings) {
        if (text.starts_with(beginning)) {
            return beginning;
        }
    }
    return text;
}

} // namespace

/// One thing that happens to the program: the boxes that must come are announced before, everything
/// is compared afterwards.
void Run::act(const std::string& what, const std::function<void()>& action) {
    note(what);
    mayFall_ = mayFall_ || line_.up.size() > 1;
    machine_.clock.now = calendar_.shown();
    machine_.clock.universal = calendar_.universal() * 1'000;
    machine_.clock.steady = static_cast<std::uint64_t>(calendar_.now().seconds) * 1'000;
    for (const Box& box : expected_.boxes) {
        announce(box);
    }
    expected_.boxes.clear();
    line_.publish(machine_.connections);
    action();
    if (filesAtDeath_) {
        return goBackToDeath();
    }
    line_.adopt(machine_.connections);
    machine_.desktop.verify();
    if (!unexpected_.empty()) {
        violated(unexpected_);
    }
    noteLedger();
    expectSame();
    expectLedger();
    mayFall_ = false;
}

void Run::announce(const Box& box) {
    note("  box: " + box.text.substr(0, box.text.find('\r')) +
         (box.sleeps ? "; the machine goes to sleep" : "") +
         (box.dies ? "; the program dies" : ""));
    questionsInRun_ += box.text.starts_with("Monitoring has been started") ? 1 : 0;
    counts_.pausedAsking += box.sleeps ? 1 : 0;
    ++counts_.boxes;
    machine_.desktop.expect(
        {box.text, box.buttons, box.icon, box.answer, [this, sleeps = box.sleeps, dies = box.dies] {
             if (sleeps) {
                 machine_.desktop.pause();
                 noteLedger(true);
             }
             if (dies) {
                 filesAtDeath_ = machine_.files;
                 balloonsAtDeath_ = machine_.notificationArea.requests.size();
                 machine_.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Ok; };
             }
         }});
}

/// Nothing in here can end the program within a call: what it has done since is undone instead.
void Run::goBackToDeath() {
    machine_.desktop.answerAny = nullptr;
    machine_.notificationArea.requests.resize(balloonsAtDeath_);
    machine_.files.goBackTo(*filesAtDeath_);
    filesAtDeath_.reset();
    machine_.desktop.verify();
    if (!unexpected_.empty()) {
        violated(unexpected_);
    }
    expectBalloons();
}

void Run::expectSame() {
    expectBalloons();
    expectBackups();
    expectAside();
    demand(machine_.files.exists(journalPath) == expected_.journal.isThere(),
           "the journal is there");
    if (!expected_.running) {
        demand(!world_ || machine_.desktop.realisedForms().empty(), "the program has ended");
        return;
    }
    const State& s = world_->state;
    demand(s.MonitoringActive == expected_.monitoring, "monitoring is on or off");
    demand(world_->forms.frmMain.timUpdateStats.enabled() == expected_.monitoring,
           "the timer runs");
    demand(s.ConnectionActive == expected_.connectionActive, "a connection is up");
    demand(s.FirstOnlineUpdate == expected_.firstOnlineUpdate, "the first online tick is to come");
    demand(world_->forms.frmWarning.visible() == expected_.warningVisible, "the warning is shown");
    demand(questionsInRun_ <= 1, "the question is asked once in a run");
    expectTotals();
}

void Run::expectTotals() {
    const Amount counted{.rcvd = whole(Rcvd().overall()),
                         .sent = whole(Sent().overall()),
                         .time = whole(Duration().overall())};
    const Amount total = expected_.tally.total();
    if (counted != total) {
        violated("counted are " + counted.text() + ",\n  but it must be " + total.text());
    }
    demand(total.rcvd >= 0 && total.sent >= 0 && total.time >= 0, "nothing is below zero");
    if (!expected_.stale) {
        expectShown(total);
    }
    expectNoFall(total);
}

void Run::expectShown(const Amount& total) {
    const FrmMain& window = world_->forms.frmMain;
    demand(figure(window.txtBytesRcvdTotal.text()) == total.rcvd, "received bytes shown");
    demand(figure(window.txtBytesSentTotal.text()) == total.sent, "sent bytes shown");
    demand(timeOf(window.txtDurationTotal.text()) == total.time, "time shown");
}

/// Totals fall by a reset or a journal that comes late alone, as long as no second connection
/// displaces the one that counted.
void Run::expectNoFall(const Amount& total) {
    const int sums = expected_.resets + expected_.broughtBackLate;
    const bool reset = std::exchange(lastResets_, sums) != sums;
    if (!reset && !mayFall_ &&
        (total.rcvd < lastTotal_.rcvd || total.sent < lastTotal_.sent ||
         total.time < lastTotal_.time)) {
        violated("the totals fell from " + lastTotal_.text() + " to " + total.text());
    }
    lastTotal_ = total;
}

void Run::expectBalloons() {
    std::vector<std::string> shown;
    for (const auto& request : machine_.notificationArea.requests) {
        if (const std::string text = balloonText(request); !text.empty()) {
            shown.push_back(text);
        }
    }
    machine_.notificationArea.requests.clear();
    if (shown != expected_.balloons) {
        std::string text = "other balloons than expected:";
        for (const std::string& one : shown) {
            text += "\n  shown: " + one;
        }
        for (const std::string& one : expected_.balloons) {
            text += "\n  expected: " + one;
        }
        violated(text);
    }
    for (const std::string& text : shown) {
        counts_.outOfReach +=
            text == Expected::outOfReach || text == Expected::heldByAnother ? 1 : 0;
        counts_.unwritten += text == Expected::unwritten ? 1 : 0;
        if (std::find(beginnings.begin(), beginnings.end(), text) != beginnings.end()) {
            continue;
        }
        const std::string overall = text.substr(text.find('\r'));
        demand(overall != std::exchange(lastBalloon_, overall),
               "each balloon tells another figure");
        ++counts_.balloons;
    }
    expected_.balloons.clear();
}

/// What was moved aside holds all that was recorded until then. The newest of a tick replaces
/// another of the same day.
void Run::expectBackups() {
    if (std::exchange(backupsSeen_, expected_.backups.size()) != expected_.backups.size()) {
        const CivilTime today = Date(calendar_.now().day).civil();
        const std::string name = "C:\\Prog\\Tarvik." + std::to_string(today.year) + "-" +
                                 std::to_string(today.month) + "-" + std::to_string(today.day) +
                                 ".ini";
        const std::string problem =
            records_.check(machine_.files.file(name), expected_.backups.back().records);
        if (!problem.empty()) {
            violated("the backup " + name + ": " + problem);
        }
        ++counts_.backups;
        expectFile();
    }
}

/// A journal that is given up is there to the byte, under another name.
void Run::expectAside() {
    if (std::exchange(asideSeen_, expected_.journalsPutAside) == expected_.journalsPutAside) {
        return;
    }
    for (const std::string& name : machine_.files.namesIn(folder)) {
        const std::string path = std::string(folder) + "\\" + name;
        if (path != journalPath && name.ends_with(".journal")) {
            demand(machine_.files.file(path) == journalBefore_, "what was put aside is as it was");
            machine_.files.remove(path);
            return;
        }
    }
    violated("a journal was to be put aside");
}

void Run::expectFile() {
    const File& file = expected_.file;
    demand(machine_.files.exists(iniPath) == file.exists, "the file is there");
    if (!file.exists) {
        records_.forget();
        return;
    }
    const std::string text = machine_.files.file(iniPath);
    if (const std::string problem = records_.check(text, file.records); !problem.empty()) {
        violated("the file: " + problem);
    }
    const bool locked = text.find("IsLocked=1") != std::string::npos;
    demand(locked == file.locked, "the file tells of a running program");
}

void Run::note(const std::string& what) {
    constexpr std::size_t kept = 40;
    events_.push_back(what);
    if (events_.size() > kept) {
        events_.pop_front();
    }
}

void Run::demand(bool holds, const char* what) {
    if (!holds) {
        violated(std::string("this does not hold: ") + what);
    }
}

void Run::violated(const std::string& what) {
    std::string text = "seed " + std::to_string(seed_) + ", day " + std::to_string(counts_.days) +
                       ", tick " + std::to_string(counts_.ticks) + ": " + what +
                       "\nThe last events:";
    for (const std::string& event : events_) {
        text += "\n  " + event;
    }
    throw Violation(text);
}

} // namespace tarvik::soak
