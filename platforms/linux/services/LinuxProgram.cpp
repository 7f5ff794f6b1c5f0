#include "linux/services/LinuxProgram.h"

#include "linux/services/Environment.h"
#include "linux/services/FileDescriptor.h"

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

} // namespace tarvik
