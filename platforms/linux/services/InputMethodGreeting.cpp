#include "linux/services/InputMethodGreeting.h"

#include "linux/services/LinuxProgram.h"
#include "linux/services/LocalSocket.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace tarvik {

namespace {

std::string fromEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Each display has a file with the address of the one that runs on it, named by rules that differ
/// from version to version: all are looked at.
std::vector<std::string> addressFiles() {
    const std::string told = fromEnvironment("IBUS_ADDRESS_FILE");
    if (!told.empty()) {
        return {told};
    }
    const std::string config = fromEnvironment("XDG_CONFIG_HOME");
    const std::string folder = (config.empty() ? homeFolder() + "/.config" : config) + "/ibus/bus";
    std::vector<std::string> files;
    std::error_code failed;
    for (std::filesystem::directory_iterator each(folder, failed), end; !failed && each != end;
         each.increment(failed)) {
        files.push_back(each->path().string());
    }
    return files;
}

/// The socket that the file tells, "" for none: "unix:path=PATH,..." or "unix:abstract=NAME,...".
std::string socketIn(const std::string& file) {
    constexpr std::string_view begin = "IBUS_ADDRESS=unix:";
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(begin)) {
            continue;
        }
        line = line.substr(begin.size(), line.find(',') - begin.size());
        const std::size_t equals = line.find('=');
        const std::string kind = line.substr(0, equals);
        if (equals != std::string::npos && (kind == "path" || kind == "abstract")) {
            return (kind == "path" ? "" : std::string(1, '\0')) + line.substr(equals + 1);
        }
    }
    return "";
}

/// Somebody listens there and says something, or nobody listens.
bool speaks(const std::string& socket) {
    const FileDescriptor file = connectTo(socket);
    char word = 0;
    return !file || (sendTo(file, std::string_view("\0AUTH\r\n", 7)) &&
                     retried([&] { return read(file.number(), &word, 1); }) > 0);
}

} // namespace

bool inputMethodGreets() {
    if (fromEnvironment("QT_IM_MODULE") != "ibus") {
        return true;
    }
    const std::vector<std::string> files = addressFiles();
    return std::all_of(files.begin(), files.end(),
                       [](const std::string& file) { return speaks(socketIn(file)); });
}

} // namespace tarvik
