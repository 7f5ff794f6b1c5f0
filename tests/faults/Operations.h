#pragma once

#include "faults/Session.h"

namespace tarvik::faults {

/// Something that the program does with its files.
struct Operation {
    const char* name;
    /// What lies in the program's folder before; nothing stands for no folder.
    std::optional<Folder> before;
    /// What comes before faults may happen.
    std::function<void(Session&)> prepare;
    /// What faults may strike; false when it tells its caller that it failed.
    std::function<bool(Session&)> act;
    /// Boxes that may come in it, when all goes well.
    std::vector<std::string> said = {};
    /// Boxes that a fault in it may bring.
    std::vector<std::string> mayWarn = {};
    /// What is right beside the states between its steps: a step may fail, and the next succeed.
    std::vector<Folder> alsoRight = {};
    /// With calls that fail it may take many right ways, of which `look` tells the wrong ones; few
    /// of those faults are tried.
    bool manyWays = false;
    /// What is wrong with what the next start shows, after that fault and on the files found.
    std::function<std::string(Session& restart, const Folder& found, const std::string& fault)>
        look = [](Session&, const Folder&, const std::string&) { return std::string(); };
    /// What is wrong with the files that the next start leaves at its end.
    std::function<std::string(const Folder& after)> lookAtEnd = [](const Folder&) {
        return std::string();
    };
    /// The run has told that it could not read the journal and counts without it: what the journal
    /// says is in the one that is set aside only.
    std::function<bool()> countedWithout = [] { return false; };
};

/// Start, end, save, backup, export, locking and unlocking. `folder` and `separator` are those of
/// the sessions in which they are to happen.
std::vector<Operation> operations(const std::string& folder, char separator);

/// An operation that nothing disturbs: every state of the folder between its steps, the one before
/// it first. Nothing stands for no folder.
using States = std::vector<std::optional<Folder>>;

/// What a run told of itself.
struct Report {
    bool result = false;
    std::vector<std::string> boxes;

    std::string text() const;
    static Report of(const std::string& text);
};

/// Runs the operation in a new session; `arm` and `disarm` stand around what faults may strike.
Report run(const Operation& operation, Session& session, const std::function<void()>& arm,
           const std::function<void()>& disarm);

/// Runs the operation in peace and gives its states.
States statesOf(const Operation& operation, Session& session, const std::string& folder);

/// What is wrong with a run that went on to its end; nothing when nothing is.
std::string troubleWithReport(const Operation& operation, const States& states,
                              const std::string& folder, const Report& report);

/// What is wrong with the folder after a run; nothing when nothing is. `restart` is a fresh
/// session, which is started and ended: everything must be as after any start.
std::string troubleAfter(const Operation& operation, const States& states,
                         const std::string& folder, Session& restart, const std::string& fault);

} // namespace tarvik::faults
