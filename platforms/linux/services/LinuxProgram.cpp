#include "linux/services/LinuxProgram.h"

#include "linux/services/Environment.h"
#include "linux/services/FileDescriptor.h"
#include "linux/services/ProgramStart.h"

#include <algorithm>
#include <array>
#include <climits>
#include <pwd.h>
#include <unistd.h>

namespace tarvik {

namespace {

std::string executableFolder() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return length > 0 ? folderOf({path.data(), static_cast<std::size_t>(length)}) : std::string();
}

/// The system would end such a text before its end.
bool holdsNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

/// An environment variable that names a folder; relative ones do not count.
std::string folderFromEnvironment(const char* name) {
    const std::string value = fromEnvironment(name);
    return value.starts_with('/') ? value : "";
}

} // namespace

std::string homeFolder() {
    std::string home = folderFromEnvironment("HOME");
    if (!home.empty()) {
        return home;
    }
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

std::string userDataFolder() {
    const std::string data = folderFromEnvironment("XDG_DATA_HOME");
    return (data.empty() ? homeFolder() + "/.local/share" : data) + "/velmars-tarvik";
}

std::string joinedArguments(const std::vector<std::string>& arguments) {
    std::string text;
    for (std::string argument : arguments) {
        std::erase(argument, '"');
        const bool quoted = argument.empty() || argument.find_first_of(" \t") != std::string::npos;
        text += text.empty() ? "" : " ";
        text += quoted ? '"' + argument + '"' : argument;
    }
    return text;
}

LinuxProgram::LinuxProgram(const std::vector<std::string>& arguments)
    : folder_(executableFolder()), commandLine_(joinedArguments(arguments)) {
    if (folder_.empty() || access(folder_.c_str(), W_OK) != 0) {
        folder_ = userDataFolder();
    }
}

bool LinuxProgram::launch(const std::string& path,
                          const std::vector<std::pair<std::string, std::string>>& variables) {
    const bool whole =
        !holdsNul(path) && std::none_of(variables.begin(), variables.end(), [](const auto& one) {
            return holdsNul(one.first) || holdsNul(one.second);
        });
    return path.starts_with('/') && whole && !hasOtherRightsThanItsUser() &&
           startProgram(path, variables);
}

} // namespace tarvik
