#include "linux/network/LinkMark.h"

#include <array>
#include <fstream>
#include <sstream>

namespace tarvik {

namespace {

/// What counts. Errors on the line are counted anew.
constexpr std::array markedCounters{&LinkReading::received, &LinkReading::sent,
                                    &LinkReading::packetsReceived, &LinkReading::packetsSent};
constexpr const char* markKind = "link1";

} // namespace

std::string textOf(const LinkMark& mark) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << markKind << ' ' << mark.boot << ' ' << mark.uuid << ' ' << mark.path << ' '
         << mark.activeSince << ' ' << mark.readAt << ' ' << mark.last.index;
    for (const auto counter : markedCounters) {
        text << ' ' << mark.last.*counter << ' ' << mark.total.*counter;
    }
    return text.str();
}

std::optional<LinkMark> markOf(const std::string& text) {
    std::istringstream from(text);
    from.imbue(std::locale::classic());
    std::string which;
    LinkMark mark;
    from >> which >> mark.boot >> mark.uuid >> mark.path >> mark.activeSince >> mark.readAt >>
        mark.last.index;
    mark.total.index = mark.last.index;
    for (const auto counter : markedCounters) {
        from >> mark.last.*counter >> mark.total.*counter;
    }
    const bool whole = static_cast<bool>(from) && which == markKind && mark.last.index != 0;
    return whole ? std::optional(mark) : std::nullopt;
}

std::string bootOfMachine() {
    std::ifstream file("/proc/sys/kernel/random/boot_id");
    std::string boot;
    file >> boot;
    return boot;
}

} // namespace tarvik
