// Lets every file call of everything the program does with its files fail, and ends a process at
// each of them; then starts the program again and looks at what is there.
//
//     kill_at_every_step [OPERATION [FAULT]]
//
// Prints one line for each operation and the count of all cases.

#include "faults/ImportHooks.h"
#include "faults/Operations.h"
#include "windows/services/SystemHeader.h"
#include "windows/services/WindowsFiles.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace tarvik::faults {

namespace {

bool isKill(const std::string& fault) {
    return fault.starts_with("kill") || fault.starts_with("cut");
}

/// In a row of calls that write, the first and the last stand for those between.
bool isAmongWrites(const std::vector<std::string>& calls, std::size_t place) {
    const auto writes = [&](std::size_t i) { return i < calls.size() && calls[i] == "WriteFile"; };
    return place > 0 && writes(place - 1) && writes(place) && writes(place + 1);
}

/// Runs this program with those arguments; its exit status.
DWORD runSelf(const std::string& arguments) {
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, sizeof self);
    std::string command = "\"" + std::string(self) + "\" " + arguments;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process) == FALSE) {
        return MAXDWORD;
    }
    constexpr DWORD deadline = 30'000; // milliseconds; a program that hangs is ended
    DWORD status = MAXDWORD;
    if (WaitForSingleObject(process.hProcess, deadline) == WAIT_OBJECT_0) {
        GetExitCodeProcess(process.hProcess, &status);
    } else {
        TerminateProcess(process.hProcess, MAXDWORD);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

class Harness {
public:
    explicit Harness(std::string folder) : folder_(std::move(folder)) {}

    void strike(const Operation& operation, const std::string& only) {
        operation_ = &operation;
        prepare();
        {
            WindowsFiles files(folder_);
            Session session(files, folder_, '\\');
            states_ = statesOf(operation, session, folder_);
        }
        if (!only.empty()) {
            one(only);
            return;
        }
        const int before = cases_;
        one("count");
        const std::vector<std::string> calls = callsNamed();
        for (std::size_t i = 0; i < calls.size(); ++i) {
            if (!isAmongWrites(calls, i)) {
                everythingAt(std::to_string(i + 1), calls[i]);
            }
        }
        // After the last call nothing may be lost any more.
        states_ = {states_.back()};
        one("cut " + std::to_string(calls.size() + 1));
        std::printf("%-24s %3zu calls, %5d cases\n", operation.name, calls.size(), cases_ - before);
    }

    /// What the process does that is to be ended.
    [[noreturn]] void runUntilEnd(const Operation& operation, const std::string& fault) const {
        WindowsFiles files(folder_);
        Session session(files, folder_, '\\');
        run(
            operation, session, [&] { arm(fault); }, [] { finish(); });
        TerminateProcess(GetCurrentProcess(), 0);
        std::abort();
    }

    int cases() const { return cases_; }
    int failures() const { return failures_; }

private:
    void prepare() const {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
        if (operation_->before) {
            makeFolder(folder_, *operation_->before);
        }
    }

    void everythingAt(const std::string& call, const std::string& name) {
        constexpr int forGoodAtEvery = 4; // call of a life: the next few differ in little
        one("kill " + call);
        one("cut " + call);
        if (name == "WriteFile") {
            one("killhalf " + call);
        }
        if (operation_->manyWays) {
            one("fail " + call + " " + std::to_string(ERROR_NOT_READY) + " 1");
            if (std::stoi(call) % forGoodAtEvery == 1) {
                one("fail " + call + " " + std::to_string(ERROR_DISK_FULL) + " 1000000");
            }
            return;
        }
        for (const DWORD error : {ERROR_DISK_FULL, ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
                                  ERROR_NOT_READY, ERROR_FILE_NOT_FOUND}) {
            one("fail " + call + " " + std::to_string(error) + " 1");
            one("fail " + call + " " + std::to_string(error) + " 1000000");
        }
        if (name == "WriteFile" || name == "ReadFile") {
            one("short " + call + " 1");
            one("short " + call + " 1000000");
        }
    }

    void one(const std::string& fault) {
        ++cases_;
        prepare();
        std::string trouble = isKill(fault) ? endedBy(fault) : struckBy(fault);
        if (trouble.empty()) {
            WindowsFiles files(folder_);
            Session session(files, folder_, '\\');
            trouble = troubleAfter(*operation_, states_, folder_, session, fault);
        }
        if (!trouble.empty()) {
            ++failures_;
            std::printf("FAILED: %s, \"%s\": %s\n", operation_->name, fault.c_str(),
                        trouble.c_str());
        }
    }

    /// The operation in a process that ends in it, or that had nothing to be ended at.
    std::string endedBy(const std::string& fault) {
        const DWORD status = runSelf("--run \"" + std::string(operation_->name) + "\" \"" + fault +
                                     "\" \"" + folder_ + "\"");
        return status == cutStatus
                   ? ""
                   : "the process ended with status " + std::to_string(status) + "\n";
    }

    /// The operation in this process, up to its own end.
    std::string struckBy(const std::string& fault) {
        Report report;
        {
            WindowsFiles files(folder_);
            Session session(files, folder_, '\\');
            report = run(
                *operation_, session, [&] { arm(fault); }, disarm);
        }
        const bool couldNotDelete = fault.ends_with(" 1000000") || callStruck() == "DeleteFileA";
        const Folder now = folderAt(folder_);
        for (const auto& [name, bytes] : now) {
            if (isTemporary(name) && !couldNotDelete) {
                return "a temporary file is left\n";
            }
        }
        return troubleWithReport(*operation_, states_, folder_, report);
    }

    std::string folder_;
    const Operation* operation_ = nullptr;
    States states_;
    int cases_ = 0;
    int failures_ = 0;
};

/// A new process takes its time: what these hold already is left out.
bool chosen(const Operation& operation) {
    constexpr std::array<std::string_view, 11> names{
        "lock",           "save",
        "backup",         "export over a file",
        "first session",  "second backup of other records",
        "reset in doubt", "whole life",
        "second life",    "life with a ledger",
        "ledger torn"};
    return std::find(names.begin(), names.end(), operation.name) != names.end();
}

int strikeAll(const std::string& onlyOperation, const std::string& onlyFault) {
    const std::string root = (std::filesystem::temp_directory_path() /
                              ("tarvik-faults-" + std::to_string(GetCurrentProcessId())))
                                 .string();
    std::filesystem::create_directories(root);
    const std::string folder = root + "\\data";
    Harness harness(folder);
    for (const Operation& operation : operations(folder, '\\')) {
        if (onlyOperation.empty() ? chosen(operation) : onlyOperation == operation.name) {
            harness.strike(operation, onlyFault);
        }
    }
    std::printf("%d cases, %d failed\n", harness.cases(), harness.failures());
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
    return harness.cases() > 0 && harness.failures() == 0 ? 0 : 1;
}

int runOne(const std::string& name, const std::string& fault, const std::string& folder) {
    for (const Operation& operation : operations(folder, '\\')) {
        if (operation.name == name) {
            Harness(folder).runUntilEnd(operation, fault);
        }
    }
    return 1;
}

} // namespace

} // namespace tarvik::faults

int main(int count, char** arguments) {
    if (count == 5 && std::string(arguments[1]) == "--run") {
        return tarvik::faults::runOne(arguments[2], arguments[3], arguments[4]);
    }
    return tarvik::faults::strikeAll(count > 1 ? arguments[1] : "", count > 2 ? arguments[2] : "");
}
