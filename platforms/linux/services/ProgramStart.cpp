#include "linux/services/ProgramStart.h"

#include "linux/services/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvik {

namespace {

/// What a desktop gives one program alone when it starts it, or lets it come to the front.
constexpr std::array<std::string_view, 2> ownTokens{"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"};

std::string_view nameIn(std::string_view entry) {
    return entry.substr(0, entry.find('='));
}

std::vector<std::string>
environmentWith(const std::vector<std::pair<std::string, std::string>>& variables) {
    std::vector<std::string> entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view name = nameIn(*entry);
        const bool replaced = std::any_of(variables.begin(), variables.end(),
                                          [name](const auto& one) { return one.first == name; });
        if (!replaced && std::find(ownTokens.begin(), ownTokens.end(), name) == ownTokens.end()) {
            entries.emplace_back(*entry);
        }
    }
    for (const auto& [name, value] : variables) {
        entries.push_back(name + '=' + value);
    }
    return entries;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Between fork and exec only what a signal handler may do: other threads may have held any lock.

/// The handlers of this program are not to run in a process that only looks like it.
void forgetSignals() {
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    for (int each = 1; each < NSIG; ++each) {
        sigaction(each, &standard, nullptr);
    }
    sigset_t none{};
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void leaveFiles() {
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (nowhere < 0 || dup2(nowhere, standard) < 0) {
            close(standard);
        }
    }
    constexpr int firstOther = STDERR_FILENO + 1;
    if (close_range(firstOther, ~0U, 0) == 0) {
        return;
    }
    // A kernel that does not know it.
    constexpr rlim_t mostLooked = 1U << 20U;
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    for (int file = firstOther; file < static_cast<int>(std::min(limit.rlim_cur, mostLooked));
         ++file) {
        close(file);
    }
}

[[noreturn]] void become(const char* path, char* const* environment) {
    leaveFiles();
    std::array<char*, 2> arguments{const_cast<char*>(path), nullptr};
    forgetSignals();
    execve(path, arguments.data(), environment);
    constexpr int noSuchProgram = 127;
    _exit(noSuchProgram);
}

/// In the process between: its end is waited for, and the one that it leaves is waited for by the
/// system.
[[noreturn]] void leaveChild(const char* path, char* const* environment) {
    setsid();
    const pid_t child = _Fork();
    if (child == 0) {
        become(path, environment);
    }
    _exit(child > 0 ? EXIT_SUCCESS : EXIT_FAILURE);
}

} // namespace

bool hasOtherRightsThanItsUser() {
    return getauxval(AT_SECURE) != 0 || getuid() != geteuid() || getgid() != getegid();
}

bool startProgram(const std::string& path,
                  const std::vector<std::pair<std::string, std::string>>& variables) {
    std::vector<std::string> entries = environmentWith(variables);
    const std::vector<char*> environment = pointersTo(entries);
    sigset_t all{};
    sigset_t before{};
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t between = fork();
    if (between == 0) {
        leaveChild(path.c_str(), environment.data());
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    int status = EXIT_SUCCESS;
    // Who ignores ended children is not told how they ended.
    return between > 0 && (retried([&] { return waitpid(between, &status, 0); }) != between ||
                           status == EXIT_SUCCESS);
}

} // namespace tarvik
