#include "linux/services/InputMethodGreeting.h"

#include "linux/services/BusGreeting.h"
#include "linux/services/Environment.h"
#include "linux/services/LinuxProgram.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

namespace {

/// What ends the name of the file for the display of X: "-unix-1" for ":1.0", "-host-1" for
/// "host:1.0".
std::string endingOf(const std::string& display) {
    const std::size_t colon = display.find(':');
    const std::string host = colon == std::string::npos ? "" : display.substr(0, colon);
    const std::string number = colon == std::string::npos ? display : display.substr(colon + 1);
    return "-" + (host.empty() ? "unix" : host) + "-" + number.substr(0, number.find('.'));
}

std::vector<std::string> addressFiles(const InputMethodPlaces& places) {
    if (!places.file.empty()) {
        return {places.file};
    }
    std::vector<std::string> files;
    std::error_code failed;
    for (std::filesystem::directory_iterator each(places.folder, failed), end;
         !failed && each != end; each.increment(failed)) {
        const std::string file = each->path().string();
        if (std::any_of(places.endings.begin(), places.endings.end(),
                        [&](const std::string& ending) { return file.ends_with(ending); })) {
            files.push_back(file);
        }
    }
    return files;
}

/// The address of its own bus that the file tells, "" for none.
std::string addressIn(const std::string& file) {
    constexpr std::string_view begin = "IBUS_ADDRESS=";
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(begin)) {
            return line.substr(begin.size());
        }
    }
    return "";
}

/// So many answers of its bus the toolkit waits for, beside the method's own.
constexpr int answersOfMethodsBus = 10;

/// Anything that changes nothing: the toolkit will have it make something for this program, and
/// wait for that.
void askMethod(sdbus::IConnection& bus) {
    const char* const name = "org.freedesktop.IBus";
    sdbus::createProxy(bus, name, "/org/freedesktop/IBus")
        ->getProperty("Address")
        .onInterface(name);
    askBus(bus, answersOfMethodsBus);
}

} // namespace

InputMethodPlaces inputMethodPlaces() {
    InputMethodPlaces places;
    places.wanted = fromEnvironment("QT_IM_MODULE") == "ibus";
    if (!places.wanted) {
        return places;
    }
    const std::string config = fromEnvironment("XDG_CONFIG_HOME");
    const std::string wayland = fromEnvironment("WAYLAND_DISPLAY");
    places.file = fromEnvironment("IBUS_ADDRESS_FILE");
    places.folder = (config.empty() ? homeFolder() + "/.config" : config) + "/ibus/bus";
    places.endings.push_back(endingOf(fromEnvironment("DISPLAY")));
    // Where there are both displays, it depends on the toolkit's version which of them counts.
    if (!wayland.empty()) {
        places.endings.push_back("-unix-" + wayland);
    }
    return places;
}

bool inputMethodGreets(const InputMethodPlaces& places) {
    const std::vector<std::string> files =
        places.wanted ? addressFiles(places) : std::vector<std::string>();
    return std::all_of(files.begin(), files.end(), [](const std::string& file) {
        return busGreets(addressIn(file), askMethod);
    });
}

} // namespace tarvik
