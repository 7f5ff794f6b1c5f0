#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

class BusReplies;

/// A saved profile of a kind that is dialled.
struct NetworkProfile {
    std::string path; ///< of the object on the bus
    std::string uuid;
    std::string name; ///< no two have the same one
    std::string type; ///< as NetworkManager names it: "gsm", "vpn"
    std::string userName;
};

/// How far an active connection is, in NetworkManager's own numbers; 3 and 4 are its end.
namespace line_state {
inline constexpr std::uint32_t activating = 1;
inline constexpr std::uint32_t activated = 2;
} // namespace line_state

/// An active connection of such a kind.
struct NetworkLine {
    std::string path;
    std::string uuid;
    std::string id;   ///< as NetworkManager names it
    std::string name; ///< that of its profile, as far as it is known
    std::string type;
    std::uint32_t state = 0; ///< one of line_state, or its end
    std::string interface;   ///< of the link itself; empty until it is known, or where it has none
    std::vector<std::string> devices; ///< objects on the bus that are its own; a VPN has none
    std::vector<std::string> below;   ///< those that a tunnel runs over, as far as it is known
};

/// The machine as a whole, in NetworkManager's own numbers and words.
struct NetworkState {
    std::uint32_t state = 0;        ///< 10 asleep, 20 disconnected, 40 connecting, 70 connected
    std::uint32_t connectivity = 0; ///< 0 unknown, 1 none, 4 full
    std::string primaryType;        ///< of the connection that has the default route
    std::string primaryName;
};

/// Nothing where the profile is of a kind that is not dialled. Throws sdbus::Error, as all do that
/// read.
std::optional<NetworkProfile> readProfile(BusReplies& replies, const std::string& path);
/// Those that there are, in an order of their own, no two of one name.
std::vector<NetworkProfile>
sortedProfiles(const std::map<std::string, std::optional<NetworkProfile>>& all);

/// What goes away while it is read is left out; a line about which the answer is odd is the one
/// that was known, if it was. The names are NetworkManager's own.
std::vector<NetworkLine> readLines(BusReplies& replies, const std::vector<NetworkLine>& known = {});
/// Gives the lines the names of their profiles.
void nameLines(std::vector<NetworkLine>& lines, const std::vector<NetworkProfile>& profiles);
NetworkState readState(BusReplies& replies);

} // namespace tarvik
