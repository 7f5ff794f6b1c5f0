// Stops the program at every file-system call of everything it does with its files, and lets every
// call fail, each time in a process of its own; then starts it again and looks at what is there.
//
//     kill_at_every_step [OPERATION [FAULT]]
//
// Prints one line for each operation and the count of all cases.

#include "faults/Interposer.h"
#include "faults/Operations.h"
#include "linux/services/LinuxFiles.h"
#include "support/FileBytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdlib.h> // mkdtemp
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik::faults {

namespace {

namespace fs = std::filesystem;

/// A folder of the harness's own, where flushing costs nothing if there is such a place.
class Sandbox {
public:
    Sandbox() {
        const bool quick = access("/dev/shm", W_OK) == 0;
        std::string name =
            (quick ? "/dev/shm" : fs::temp_directory_path().string()) + "/tarvik-faults-XXXXXX";
        root_ = fs::canonical(mkdtemp(name.data())).string();
    }
    ~Sandbox() {
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    std::string folder() const { return root_ + "/data"; }
    std::string gone() const { return folder() + ".gone"; }
    std::string shadow() const { return root_ + "/shadow"; }
    std::string report() const { return root_ + "/report"; }

    void prepare(const Operation& operation) const {
        std::error_code ignored;
        fs::remove_all(gone(), ignored);
        fs::remove(report(), ignored);
        makeFolder(shadow(), {});
        if (operation.before) {
            makeFolder(folder(), *operation.before);
        } else {
            fs::remove_all(folder(), ignored);
        }
    }

    /// A folder that vanished is back after the restart of the machine, say.
    void bringBack() const {
        if (fs::exists(gone())) {
            fs::remove_all(folder());
            fs::rename(gone(), folder());
        }
    }

private:
    std::string root_;
};

/// How a process with a fault in it ended.
enum class End { Itself, Cut, Impossible, Wrong };

struct Outcome {
    End end = End::Wrong;
    Report report;
    int status = 0;
};

class Harness {
public:
    bool strike(const Operation& operation, const std::string& only) {
        operation_ = &operation;
        sandbox_.prepare(operation);
        {
            LinuxFiles files(sandbox_.folder());
            Session session(files, sandbox_.folder(), '/');
            states_ = statesOf(operation, session, sandbox_.folder());
        }
        if (!only.empty()) {
            one(only);
            return failures_ == 0;
        }
        const int before = cases_;
        const int calls = countCalls();
        for (int call = 1; call <= calls; ++call) {
            everythingAt(call, calls);
        }
        // After the last call nothing may be lost any more.
        states_ = {states_.back()};
        cutsAt(calls + 1);
        std::printf("%-24s %3d calls, %5d cases\n", operation.name, calls, cases_ - before);
        return failures_ == 0;
    }

    int cases() const { return cases_; }
    int failures() const { return failures_; }
    std::string folder() const { return sandbox_.folder(); }

private:
    /// The faults at one call.
    void everythingAt(int call, int calls) {
        const std::string at = std::to_string(call);
        one("kill " + at);
        one("killhalf " + at);
        cutsAt(call);
        if (operation_->manyWays) {
            fewFailuresAt(call, calls);
            return;
        }
        for (const int error : {ENOSPC, EIO, EACCES, EROFS, ENOENT}) {
            one("fail " + at + " " + std::to_string(error) + " 1");
            one("fail " + at + " " + std::to_string(error) + " 1000000");
        }
        one("fail " + at + " " + std::to_string(EINTR) + " 1");
        // Out of reach for a while, and within reach again.
        for (const char* times : {"2", "3", "4", "6", "8", "12", "16", "24"}) {
            one("fail " + at + " " + std::to_string(EIO) + " " + times);
        }
        one("short " + at + " 1");
        one("short " + at + " 1000000");
        one("full " + at);
        one("vanish " + at);
        // How the program cleans up after a failure ends within a few calls.
        for (int second = call + 1; second <= std::min(call + 8, calls); ++second) {
            one("failkill " + at + " " + std::to_string(EIO) + " " + std::to_string(second));
        }
    }

    /// Once, for good, and full; and a kill soon after the first and long after it.
    void fewFailuresAt(int call, int calls) {
        const std::string at = std::to_string(call);
        const std::string once = " " + std::to_string(EIO) + " ";
        one("fail " + at + once + "1");
        one("fail " + at + " " + std::to_string(ENOSPC) + " 1000000");
        one("full " + at);
        for (const int later : {5, 23}) {
            if (call + later <= calls) {
                one("failkill " + at + once + std::to_string(call + later));
            }
        }
    }

    void cutsAt(int call) {
        for (unsigned kept = 0;; ++kept) {
            const std::string cut = "cut " + std::to_string(call) + " " + std::to_string(kept);
            if (!one(cut + " 0")) {
                return;
            }
            one(cut + " 1");
            one(cut + " 2");
            one(cut + " 3");
        }
    }

    /// One case; false when it cannot happen.
    bool one(const std::string& fault) {
        sandbox_.prepare(*operation_);
        const Outcome outcome = inProcess(fault);
        if (outcome.end == End::Impossible) {
            return false;
        }
        ++cases_;
        std::string trouble;
        if (outcome.end == End::Wrong) {
            trouble = "the process ended with status " + std::to_string(outcome.status) + "\n";
        } else if (outcome.end == End::Itself && !fs::exists(sandbox_.gone())) {
            trouble = troubleWithReport(*operation_, states_, sandbox_.folder(), outcome.report);
            trouble += troubleWithTemporary(fault);
        }
        sandbox_.bringBack();
        if (trouble.empty()) {
            LinuxFiles files(sandbox_.folder());
            Session session(files, sandbox_.folder(), '/');
            trouble = troubleAfter(*operation_, states_, sandbox_.folder(), session, fault);
        }
        if (!trouble.empty()) {
            ++failures_;
            std::printf("FAILED: %s, \"%s\": %s\n", operation_->name, fault.c_str(),
                        trouble.c_str());
        }
        return true;
    }

    /// A run that went on to its end leaves no temporary file, unless it could not delete it.
    std::string troubleWithTemporary(const std::string& fault) const {
        const Folder files = folderAt(sandbox_.folder());
        const bool left = std::any_of(files.begin(), files.end(),
                                      [](const auto& file) { return isTemporary(file.first); });
        std::istringstream words(fault);
        std::string kind;
        std::size_t call = 0;
        std::size_t error = 0;
        std::size_t times = 1;
        words >> kind >> call;
        if (kind == "fail") {
            words >> error >> times;
        }
        const std::vector<std::string> calls = callsOfLast();
        bool couldNot = fault.ends_with(" 1000000");
        for (std::size_t i = call; i < call + times && i <= calls.size(); ++i) {
            couldNot = couldNot || calls[i - 1] == "unlink";
        }
        return left && !couldNot ? "a temporary file is left\n" : "";
    }

    std::vector<std::string> callsOfLast() const {
        std::istringstream words(contentOf(sandbox_.report() + ".calls"));
        return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
    }

    /// Lets the operation run in a process of its own.
    Outcome inProcess(const std::string& fault) {
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            childRuns(fault);
        }
        int status = 0;
        waitpid(child, &status, 0);
        Outcome outcome{.end = End::Wrong, .report = {}, .status = status};
        if (WIFEXITED(status) && WEXITSTATUS(status) == cutStatus) {
            outcome.end = End::Cut;
        } else if (WIFEXITED(status) && WEXITSTATUS(status) == impossibleStatus) {
            outcome.end = End::Impossible;
        } else if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
            outcome.end = End::Itself;
            outcome.report = Report::of(contentOf(sandbox_.report()));
        }
        return outcome;
    }

    [[noreturn]] void childRuns(const std::string& fault) const {
        alarm(20); // a program that hangs is ended
        LinuxFiles files(sandbox_.folder());
        Session session(files, sandbox_.folder(), '/');
        const Report report = run(
            *operation_, session, [&] { arm(sandbox_.folder(), sandbox_.shadow(), fault); },
            [&] { last(fault); });
        std::ofstream(sandbox_.report(), std::ios::binary) << report.text();
        std::ofstream(sandbox_.report() + ".calls") << callsNamed();
        _exit(0);
    }

    /// The cut after the last call.
    static void last(const std::string& fault) {
        if (fault.starts_with("cut ") && !happened()) {
            finish();
        }
        disarm();
    }

    int countCalls() {
        sandbox_.prepare(*operation_);
        inProcess("count");
        return static_cast<int>(callsOfLast().size());
    }

    Sandbox sandbox_;
    const Operation* operation_ = nullptr;
    States states_;
    int cases_ = 0;
    int failures_ = 0;
};

int strikeAll(const std::string& onlyOperation, const std::string& onlyFault) {
    Harness harness;
    for (const Operation& operation : operations(harness.folder(), '/')) {
        if (onlyOperation.empty() || onlyOperation == operation.name) {
            harness.strike(operation, onlyFault);
        }
    }
    std::printf("%d cases, %d failed\n", harness.cases(), harness.failures());
    return harness.cases() > 0 && harness.failures() == 0 ? 0 : 1;
}

} // namespace

} // namespace tarvik::faults

int main(int count, char** arguments) {
    return tarvik::faults::strikeAll(count > 1 ? arguments[1] : "", count > 2 ? arguments[2] : "");
}
