#include "faults/Life.h"

#include "monitor/mdlCodeDial.h"
#include "settings/mdlSettingsLedger.h"
#include "startup/mdlStartUp.h"

#include <algorithm>

namespace tarvik::faults {

namespace {

constexpr const char* unreadWarning =
    "Warning: Old settings could not be loaded.\rAssuming first run.";
constexpr const char* unsavedWarning = "Warning: State could not be saved.";
constexpr const char* questionBegin =
    "Monitoring has been started and an active connection with transfer has been detected.";

std::uint32_t counter(std::int64_t figure) {
    return static_cast<std::uint32_t>(figure);
}

} // namespace

Life::Life(Session& session, std::string folder, const Figures& finished,
           const std::vector<Line>& former)
    : session_(session), folder_(std::move(folder)) {
    session_.files.heldChanges = [this](const std::string& step, std::string_view bytes) {
        note(step, bytes);
    };
    session_.scripted.desktop.answerAny =
        [this, usual = session_.scripted.desktop.answerAny](const MsgBoxRequest& request) {
            const MsgBoxAnswer answer = usual(request);
            return declines_ && request.text.starts_with(questionBegin) ? MsgBoxAnswer::No : answer;
        };
    carried_.finished = finished;
    carried_.lines = former;
    for (Line& one : carried_.lines) {
        one.up = false;
        used_ = std::max(used_, one.handle);
    }
    expect({carried_});
}

Life::~Life() {
    session_.files.heldChanges = [](const std::string&, std::string_view) {};
}

std::string Life::question(const Figures& carried) {
    return std::string(questionBegin) +
           "\r\rIf you have already monitored this online-session with Tarvik then\r"
           "this may result in an unwanted offset of the recorded transfer.\r\r"
           "Do you want to use (record) the this online-session (" +
           std::to_string(carried.rcvd + carried.sent) +
           " bytes)?\r(Press NO if you restarted Tarvik.)";
}

void Life::start(const Figures& inFile) {
    session_.scripted.program.arguments = "/r";
    Main();
    const bool unread = hasBox(unreadWarning);
    told_.leftAlone = unread || hasNote("left alone");
    if (told_.leftAlone) {
        carried_.finished = unread ? Figures() : inFile;
        carried_.forget();
    }
    if (hasNote("journal is now")) {
        told_.add("the start has set a journal aside");
    }
    expect({carried_});
}

/// A handle that no line had before.
std::uint32_t Life::made(const std::string& entry) {
    ScriptedConnections& service = session_.scripted.connections;
    std::uint32_t handle = service.connect(entry);
    for (; handle <= used_; handle = service.connect(entry)) {
        service.disconnect(handle);
    }
    return handle;
}

void Life::connect(const std::string& entry, const Figures& carried) {
    Line line{.handle = made(entry), .entry = entry, .carried = carried};
    session_.scripted.connections.transfer(line.handle, counter(carried.rcvd),
                                           counter(carried.sent), counter(carried.time));
    carried_.lines.push_back(std::move(line));
}

void Life::stay(const std::string& entry, const Figures& more) {
    ScriptedConnections& service = session_.scripted.connections;
    const auto former = std::find_if(carried_.lines.begin(), carried_.lines.end(),
                                     [&](const Line& one) { return one.entry == entry; });
    former->up = true;
    former->carried = former->carried + more;
    for (std::uint32_t made = service.connect(entry); made < former->handle;) {
        service.disconnect(made);
        made = service.connect(entry);
    }
    service.transfer(former->handle, counter(former->carried.rcvd), counter(former->carried.sent),
                     counter(former->carried.time));
}

void Life::carry(const std::string& entry, std::int64_t rcvd, std::int64_t sent) {
    Line& line = carried_.line(entry);
    line.carried = line.carried + Figures{rcvd, sent, 0};
    session_.scripted.connections.transfer(line.handle, counter(rcvd), counter(sent), 0);
}

void Life::drop(const std::string& entry) {
    Line& line = carried_.line(entry);
    session_.scripted.connections.disconnect(line.handle);
    line.up = false;
    pass(1);
    demandKept(true);
}

void Life::redial(const std::string& entry) {
    Line& line = carried_.line(entry);
    session_.scripted.connections.disconnect(line.handle);
    line.up = false;
    const auto handle = static_cast<std::uint32_t>(DialIn(entry, "").value());
    carried_.lines.push_back({.handle = handle, .entry = entry});
}

void Life::advance(std::uint32_t seconds) {
    session_.scripted.clock.advanceSeconds(seconds);
    for (Line& one : carried_.lines) {
        if (one.up) {
            one.carried.time += std::int64_t{seconds} * 1000;
            session_.scripted.connections.transfer(one.handle, 0, 0, seconds * 1000);
        }
    }
    carried_.list();
}

void Life::tick(std::uint32_t seconds) {
    constexpr std::uint32_t untilWrite = 5;
    constexpr std::uint32_t untilFlush = 30;
    window().timUpdateStats.fire();
    if (seconds >= untilWrite) {
        demandKept(seconds >= untilFlush);
    }
}

void Life::pass(std::uint32_t seconds) {
    advance(seconds);
    carried_.lookAtAll();
    expect({carried_});
    tick(seconds);
}

void Life::passDeclined(std::uint32_t seconds) {
    advance(seconds);
    carried_.lookAtAll();
    carried_.decline();
    expect({carried_});
    declines_ = true;
    tick(seconds);
    declines_ = false;
}

void Life::passIntoReset(std::uint32_t seconds) {
    advance(seconds);
    // The reset comes with the first of the lines; those after it are read anew then.
    carried_.look(carried_.lines.front());
    const Carried before = carried_;
    carried_.reset();
    const Carried after = carried_;
    for (std::size_t i = 1; i < carried_.lines.size(); ++i) {
        carried_.look(carried_.lines[i]);
    }
    expect({before, after, carried_}, true);
    tick(0);
    expect({carried_});
}

void Life::keepsLedger(const Sums& over) {
    carried_.hasLedger = true;
    carried_.over = over;
    expect({carried_});
}

void Life::beginLedger() {
    const Carried before = carried_;
    carried_.beginLedger();
    expect({before, carried_});
    if (BeginLedger()) {
        expect({carried_});
        demandKept(true);
    } else {
        carried_ = before;
        expect({carried_});
    }
}

bool Life::end(const std::vector<std::string>& said) {
    told_.ending = true;
    expect({carried_});
    window().unload(UnloadMode::AppWindows);
    told_.saved = !hasBox(unsavedWarning);
    told_.inPeace = session_.boxes == said;
    told_.save(folder_);
    return told_.inPeace;
}

void Life::expect(std::vector<Carried> stages, bool resets) {
    stages_ = std::move(stages);
    stage_ = 0;
    told_.resetting = resets;
    told_.all = stages_.back().all();
    told_.sums = stages_.back().ledgered();
    told_.hasLedger = stages_.back().hasLedger;
    told_.lines.clear();
    std::copy_if(carried_.lines.begin(), carried_.lines.end(), std::back_inserter(told_.lines),
                 [](const Line& one) { return one.up; });
    told_.clock = session_.scripted.clock.now.serial();
    told_.universal = session_.scripted.clock.universal;
    told_.anew = told_.leftAlone && hasNote("has counted since");
    told_.save(folder_);
}

void Life::demandKept(bool flushed) {
    if (!undisturbed_ || told_.leftAlone) {
        return;
    }
    if (told_.entries.empty() || !told_.entries.back().whole ||
        !carried_.troubleWith(readPlace(told_.entries.back().bytes).entry, false).empty()) {
        told_.add("what counts is not kept: " + carried_.all().text());
    } else if (flushed && !told_.entries.back().flushed) {
        told_.add("what counts is not flushed: " + carried_.all().text());
    }
}

void Life::note(const std::string& step, std::string_view bytes) {
    if (step == "save") {
        noteSave(std::string(bytes));
    } else if (step == "write") {
        noteEntry(bytes);
    } else if (step == "written") {
        told_.written();
    } else if (step == "flushed") {
        told_.flushed();
    } else {
        undisturbed_ = false;
    }
    told_.save(folder_);
}

void Life::noteEntry(std::string_view bytes) {
    const JournalPlace place = readPlace(bytes);
    std::string trouble =
        told_.leftAlone && !hasNote("has counted since") ? "one that is left alone" : "";
    for (std::size_t i = stage_; i < stages_.size(); ++i) {
        const std::string found = stages_[i].troubleWith(place.entry, told_.ending);
        if (found.empty()) {
            stage_ = i;
            trouble.clear();
            break;
        }
        trouble += trouble.empty() ? found : ", or " + found;
    }
    if (place.kind != JournalPlace::Kind::Whole || !trouble.empty()) {
        told_.add("an entry tells " + trouble);
    }
    told_.begun(bytes, stages_[stage_].ledgered());
}

void Life::noteSave(const std::string& ini) {
    const auto records = recordsIn(ini);
    const auto newest = std::find_if(records.begin(), records.end(), [&](const Record& one) {
        return !records_.contains(one.section);
    });
    if (newest == records.end()) {
        return;
    }
    records_.insert(newest->section);
    const auto isRight = [&](const Carried& one) {
        return newest->figures == (told_.ending ? one.all() : one.shown());
    };
    if (std::none_of(stages_.begin(), stages_.end(), isRight)) {
        told_.add("a record tells " + newest->figures.text() + " instead of " +
                  stages_.front().shown().text());
    }
}

bool Life::hasNote(const char* part) const {
    const auto& requests = session_.scripted.notificationArea.requests;
    return std::any_of(requests.begin(), requests.end(), [&](const auto& request) {
        return std::string(request.data.szInfo).find(part) != std::string::npos;
    });
}

bool Life::hasBox(const char* text) const {
    return std::find(session_.boxes.begin(), session_.boxes.end(), text) != session_.boxes.end();
}

} // namespace tarvik::faults
