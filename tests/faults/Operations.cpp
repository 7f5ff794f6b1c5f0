#include "faults/Operations.h"

#include "common/ProfileForm.h"
#include "faults/Lives.h"
#include "faults/Told.h"
#include "ledger/LedgerContents.h"
#include "monitor/mdlCodeReset.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "state/mdlTools.h"

#include <algorithm>

namespace tarvik::faults {

namespace {

constexpr const char* instanceQuestion =
    "Warning: Another instance of Velmars Tarvik seems to be running.\r"
    "Are you sure that you want to start another instance?\r"
    "(This could cause the protocol file to become corrupt!)";
constexpr const char* lockWarning = "Warning: Unable to set \"IsLocked\"-flag in INI-file!";
constexpr const char* unlockWarning = "Warning: Unable to unset \"IsLocked\"-flag in INI-file!";
constexpr const char* firstRunWarning =
    "Warning: Old settings could not be loaded.\rAssuming first run.";
constexpr const char* saveWarning = "Warning: State could not be saved.";
constexpr const char* exported = "All records have been successfully exported.";

/// Two records and a stranger's section, in the order of whoever wrote them.
constexpr const char* earlierRecords = "[12.11.2026|08:00:00]\n"
                                       "Sent=100\nRcvd=1000\nDuration=10\nIPAddress=10.0.0.1\n"
                                       "[14.11.2026|09:30:00]\n"
                                       "Sent=200\nRcvd=2000\nDuration=20\nIPAddress=\n"
                                       "[Foreign]\nKeep=me\n";

Folder usualFolder() {
    return {{"Tarvik.ini", std::string("; kept by hand\n[Settings]\nIsLocked=0\n"
                                       "LastState=14.11.2026|09:30:00\n"
                                       "DateStamp1=12.11.2026|08:00:00\n"
                                       "DateStamp2=14.11.2026|09:30:00\n"
                                       "LastDateStamp=2\nRefreshInterval=200\n") +
                               earlierRecords},
            {"notes.txt", "not the program's\n"}};
}

Folder with(Folder folder, const char* name, const char* bytes) {
    folder[name] = bytes;
    return folder;
}

/// A backup of this day that holds the only copy of a record.
constexpr const char* otherRecords = "[Settings]\nLastDateStamp=1\nDateStamp1=16.11.2026|01:00:00\n"
                                     "[16.11.2026|01:00:00]\nSent=1\nRcvd=1\nDuration=1\n";

/// The date of the last reset is none of the language that the program is started in.
Folder folderOfAnotherLanguage() {
    Folder folder = usualFolder();
    std::string& ini = folder["Tarvik.ini"];
    ini.insert(ini.find("RefreshInterval"),
               "TransferResetEnable=1\nTransferReset=8\nTransferResetLast=11/15/2026\n");
    return folder;
}

/// The usual file as an editor saves it as "Unicode".
Folder wideFolder() {
    Folder folder = usualFolder();
    std::string& ini = folder["Tarvik.ini"];
    ini = bytesOf({ini}, ProfileForm::Utf16Little);
    return folder;
}

void start(Session&) {
    Main();
}

void startAndTransfer(Session& session) {
    Main();
    State& state = session.world.state;
    state.BytesSentTotal = Currency(300);
    state.BytesRcvdTotal = Currency(3000);
    state.DurationTotal = Currency(30);
}

bool isNothing(const State& totals) {
    return totals.BytesRcvdTotal == Currency(0) && totals.BytesSentTotal == Currency(0) &&
           totals.DurationTotal == Currency(0);
}

void quit(Session& session) {
    session.world.forms.frmMain.cmdQuit.press();
}

/// A note says that the file was copied before a reset.
bool tellsOfCopy(const Session& session) {
    const auto& requests = session.scripted.notificationArea.requests;
    return std::any_of(requests.begin(), requests.end(), [](const auto& request) {
        return std::string(request.data.szInfo).find("was copied to") != std::string::npos;
    });
}

std::vector<std::string> fileErrors(const std::string& procedure) {
    std::vector<std::string> boxes;
    for (const char* error : {"53 (File not found)", "61 (Disk full)", "70 (Permission denied)",
                              "75 (Path/File access error)", "76 (Path not found)"}) {
        boxes.push_back(std::string("Error ") + error + "\roccured in function \"" + procedure +
                        "\".\rPlease contact the author for support.");
    }
    return boxes;
}

Operation exporting(const char* name, Folder before, const std::string& target) {
    const auto import = [target](Session& session) {
        Main();
        session.world.forms.frmHistory.cmdImport.press();
        session.boxes.clear();
        session.scripted.dialogs.chosen = target;
    };
    const auto act = [](Session& session) {
        session.world.forms.frmHistory.cmdExport.press();
        return session.boxes == std::vector<std::string>{exported};
    };
    return {name, std::move(before), import, act, {exported}, fileErrors("cmdExport_Click")};
}

bool containsAll(const std::vector<std::string>& all, const std::vector<std::string>& some) {
    return std::all_of(some.begin(), some.end(), [&](const std::string& one) {
        return std::find(all.begin(), all.end(), one) != all.end();
    });
}

/// Without what is there on the way only: the journal is, while the program runs.
Folder withoutPassing(Folder folder) {
    std::erase_if(folder, [](const auto& file) {
        return isTemporary(file.first) || file.first == "Tarvik.journal";
    });
    return folder;
}

/// A ledger grows between the steps; what it says is looked at by itself.
Folder withoutLedger(Folder folder) {
    std::erase_if(folder, [](const auto& file) { return isLedger(file.first); });
    return withoutPassing(std::move(folder));
}

std::string shown(const std::optional<Folder>& folder) {
    std::string text = folder ? "" : "(no folder)";
    for (const auto& [name, bytes] : folder.value_or(Folder())) {
        text += "--- " + name + "\n" + bytes;
    }
    return text + "\n";
}

std::optional<Folder> stateAt(const std::string& path) {
    bool there = false;
    Folder folder = folderAt(path, &there);
    return there ? std::optional(std::move(folder)) : std::nullopt;
}

bool isOneOf(const States& states, const std::optional<Folder>& folder) {
    // An empty folder is as good as none.
    return std::any_of(states.begin(), states.end(), [&](const std::optional<Folder>& state) {
        return withoutLedger(state.value_or(Folder())) == withoutLedger(folder.value_or(Folder()));
    });
}

/// The text of a file, whatever its form.
std::string textIn(const Folder& folder, const std::string& name) {
    const std::string& bytes = folder.at(name);
    return textOf(bytes, formOf(bytes));
}

std::vector<std::string> boxesOfStart(const Folder& folder) {
    const auto ini = folder.find("Tarvik.ini");
    if (ini == folder.end()) {
        return {lockWarning, firstRunWarning};
    }
    return textIn(folder, ini->first).find("IsLocked=1\n") != std::string::npos
               ? std::vector<std::string>{instanceQuestion}
               : std::vector<std::string>();
}

/// The earlier records stand in the INI file or in a backup of it.
bool hasEarlierRecords(const Folder& folder) {
    return std::any_of(folder.begin(), folder.end(), [&](const auto& file) {
        const std::string text = textIn(folder, file.first);
        return file.first.ends_with(".ini") && text.find(earlierRecords) != std::string::npos &&
               text.find("DateStamp2=14.11.2026|09:30:00\n") != std::string::npos;
    });
}

LedgerReading ledgerIn(const Folder& folder) {
    const auto ledger = folder.find("Tarvik.ledger");
    return ledger == folder.end() ? LedgerReading() : readLedger(ledger->second);
}

/// What of a ledger cannot be read is kept beside it, or where it is if something else has that
/// name; and nothing else comes there.
std::string troubleWithDamaged(const Folder& before, const Folder& after) {
    const LedgerReading found = ledgerIn(before);
    const bool isNone = found.kind != LedgerReading::Kind::Ledger; // cut off in its first line
    const std::string damaged = isNone ? "" : found.damaged;
    // What follows it begins on a line of its own.
    bool isKept = damaged.empty() || ledgerIn(after).damaged.starts_with(damaged);
    for (const auto& [name, bytes] : after) {
        if (isLedger(name) && !before.contains(name) && (damaged.empty() || bytes != damaged)) {
            return name + " should not be there\n";
        }
        isKept = isKept || (isLedger(name) && name != "Tarvik.ledger" && bytes == damaged);
    }
    return isKept ? "" : "what was damaged of the ledger is lost\n";
}

/// The one record of an earlier backup stands in one of the files, or never did.
bool keepsOtherRecords(const States& states, const Folder& folder) {
    const auto holds = [](const Folder& files) {
        return std::any_of(files.begin(), files.end(),
                           [](const auto& file) { return file.second == otherRecords; });
    };
    return !holds(states.front().value_or(Folder())) || holds(folder);
}

/// A start and its end leave these files, but for what they take out of a ledger that is damaged.
bool hasNamesOf(const Folder& before, bool nothingCounted, Folder after) {
    std::erase_if(after, [&](const auto& file) {
        return isLedger(file.first) && !before.contains(file.first);
    });
    Folder names = before;
    names["Tarvik.ini"];
    if (nothingCounted && hasEarlierRecords({{"Tarvik.ini", textIn(after, "Tarvik.ini")}})) {
        names["Tarvik.journal"]; // no record tells of a reset
    }
    return names.size() == after.size() &&
           std::equal(names.begin(), names.end(), after.begin(),
                      [](const auto& a, const auto& b) { return a.first == b.first; });
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += "  box: " + text + "\n";
    }
    return all;
}

} // namespace

std::vector<Operation> operations(const std::string& folder, char separator) {
    const std::string exportFile = folder + separator + "export.csv";
    const std::vector<std::string> endWarnings{saveWarning, unlockWarning};
    std::vector<std::string> allWarnings{lockWarning, firstRunWarning, saveWarning, unlockWarning};
    std::vector<std::string> lifeWarnings = fileErrors("BackupINIFile");
    lifeWarnings.insert(lifeWarnings.begin(), allWarnings.begin(), allWarnings.end());
    lifeWarnings.insert(lifeWarnings.begin(), instanceQuestion);
    return {
        {"lock", usualFolder(), [](Session&) { GetLocked(); },
         [](Session&) { return SetLocked(true); }},
        {"unlock", usualFolder(), start, [](Session&) { return SetLocked(false); }},
        {"save", usualFolder(), startAndTransfer, [](Session&) { return SaveState(); }},
        {"backup",
         usualFolder(),
         startAndTransfer,
         [](Session&) { return BackupINIFile(); },
         {},
         fileErrors("BackupINIFile")},
        {"second backup of a day",
         with(usualFolder(), "Tarvik.2026-11-16.ini", "[Settings]\nLastDateStamp=0\n"),
         startAndTransfer,
         [](Session&) { return BackupINIFile(); },
         {},
         fileErrors("BackupINIFile")},
        {"second backup of other records",
         with(usualFolder(), "Tarvik.2026-11-16.ini", otherRecords),
         startAndTransfer,
         [](Session&) { return BackupINIFile(); },
         {},
         fileErrors("BackupINIFile")},
        {"reset in doubt", folderOfAnotherLanguage(), start,
         [](Session& session) {
             CheckReset();
             return tellsOfCopy(session);
         }},
        {"save of two bytes a character", wideFolder(), startAndTransfer,
         [](Session&) { return SaveState(); }},
        exporting("export", usualFolder(), exportFile),
        exporting("export over a file", with(usualFolder(), "export.csv", "old\r\n"), exportFile),
        {"start",
         usualFolder(),
         [](Session&) {},
         [](Session& session) {
             Main();
             return session.boxes.empty();
         },
         {},
         {lockWarning, firstRunWarning}},
        {"end",
         usualFolder(),
         startAndTransfer,
         [](Session& session) {
             quit(session);
             return session.boxes.empty();
         },
         {},
         endWarnings,
         {usualFolder()}},
        {"whole session",
         usualFolder(),
         [](Session&) {},
         [](Session& session) {
             startAndTransfer(session);
             quit(session);
             return session.boxes.empty();
         },
         {},
         allWarnings},
        {"first session",
         std::nullopt,
         [](Session&) {},
         [](Session& session) {
             startAndTransfer(session);
             quit(session);
             return session.boxes == std::vector<std::string>{lockWarning, firstRunWarning};
         },
         {lockWarning, firstRunWarning},
         allWarnings,
         {{{"Tarvik.ini", "[Settings]\nIsLocked=0\n"}}}},
        startAfterKill(usualFolder(), lifeWarnings),
        wholeLife(folder, usualFolder(), lifeWarnings),
        secondLife(folder, usualFolder(), lifeWarnings),
        lifeWithLedger(folder, usualFolder(), lifeWarnings),
        secondLifeWithLedger("ledger not written", Left::Unwritten, folder, usualFolder(),
                             lifeWarnings),
        secondLifeWithLedger("ledger torn", Left::Torn, folder, usualFolder(), lifeWarnings),
        secondLifeWithLedger("ledger written", Left::Written, folder, usualFolder(), lifeWarnings),
    };
}

std::string Report::text() const {
    std::string all = result ? "1" : "0";
    for (const std::string& box : boxes) {
        all += '\0' + box;
    }
    return all;
}

Report Report::of(const std::string& text) {
    Report report{.result = text.starts_with('1'), .boxes = {}};
    for (std::size_t begin = text.find('\0'); begin != std::string::npos;) {
        const std::size_t end = text.find('\0', begin + 1);
        report.boxes.push_back(text.substr(begin + 1, end - begin - 1));
        begin = end;
    }
    return report;
}

Report run(const Operation& operation, Session& session, const std::function<void()>& arm,
           const std::function<void()>& disarm) {
    operation.prepare(session);
    arm();
    const bool result = operation.act(session);
    disarm();
    return {result, session.boxes};
}

States statesOf(const Operation& operation, Session& session, const std::string& folder) {
    States states;
    run(
        operation, session,
        [&] {
            states.push_back(stateAt(folder));
            session.files.changed = [&] { states.push_back(stateAt(folder)); };
        },
        [&] {
            session.files.changed = [] {};
            states.push_back(stateAt(folder)); // the journal comes and goes beside
        });
    states.insert(states.end() - 1, operation.alsoRight.begin(), operation.alsoRight.end());
    return states;
}

std::string troubleWithReport(const Operation& operation, const States& states,
                              const std::string& folder, const Report& report) {
    std::vector<std::string> known = operation.said;
    known.insert(known.end(), operation.mayWarn.begin(), operation.mayWarn.end());
    if (!containsAll(known, report.boxes)) {
        return "a box that should not come\n" + joined(report.boxes);
    }
    const std::optional<Folder> now = stateAt(folder);
    if (report.result &&
        withoutLedger(now.value_or(Folder())) != withoutLedger(states.back().value_or(Folder()))) {
        return "told of success, but left\n" + shown(now);
    }
    return {};
}

std::string troubleAfter(const Operation& operation, const States& states,
                         const std::string& folder, Session& restart, const std::string& fault) {
    std::optional<Folder> found = stateAt(folder);
    if (found) {
        found = withoutPassing(std::move(*found));
    }
    const bool ended = endsInTheMiddle(fault) && !fault.starts_with("fail");
    if ((ended || !operation.manyWays) && !isOneOf(states, found)) {
        return "neither an old state nor the new one\n" + shown(found);
    }
    const bool hadRecords = hasEarlierRecords(states.front().value_or(Folder()));
    const Folder before = found.value_or(Folder());
    Main();
    if (restart.boxes != boxesOfStart(before)) {
        return "other boxes at the restart\n" + joined(restart.boxes) + shown(found);
    }
    restart.boxes.clear();
    const bool areInFile =
        before.contains("Tarvik.ini") && hasEarlierRecords({*before.find("Tarvik.ini")});
    if (hadRecords && (areInFile ? GetNumRecords() < Long(2) : !hasEarlierRecords(before))) {
        return "too few records at the restart\n" + shown(found);
    }
    if (const std::string trouble = operation.look(restart, before, fault); !trouble.empty()) {
        return trouble + shown(found);
    }
    restart.boxes.clear();
    const bool nothingCounted = isNothing(restart.world.state);
    const Figures counted = shownNow();
    quit(restart);
    Folder after = folderAt(folder);
    if (!ended) {
        // Of a folder that was away the journal stands on the file that was made there meanwhile.
        const bool mayDiffer = fault.starts_with("vanish") || operation.countedWithout();
        const std::string trouble = mayDiffer ? "" : troubleWithAside(after, counted);
        if (!trouble.empty()) {
            return trouble + shown(after);
        }
        std::erase_if(after, [&](const auto& file) {
            return isAside(file.first) && !before.contains(file.first);
        });
    }
    std::string ofLedger = troubleWithDamaged(before, after);
    ofLedger = ofLedger.empty() ? operation.lookAtEnd(after) : ofLedger;
    if (!ofLedger.empty()) {
        return ofLedger + shown(found) + shown(after);
    }
    if (!restart.boxes.empty() || !hasNamesOf(before, nothingCounted, after) ||
        (hadRecords && !hasEarlierRecords(after)) || !keepsOtherRecords(states, after) ||
        textIn(after, "Tarvik.ini").find("IsLocked=0\n") == std::string::npos) {
        return "not as it should be after the restart\n" + joined(restart.boxes) + shown(after);
    }
    return {};
}

} // namespace tarvik::faults
