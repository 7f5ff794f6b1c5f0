#include "linux/network/NetworkObjects.h"

#include "linux/network/BusReplies.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <tuple>

namespace tarvik {

namespace {

constexpr std::array dialledTypes{"gsm", "cdma", "pppoe", "adsl", "bluetooth", "vpn", "wireguard"};
/// What reaches other machines by itself, without a connection below.
constexpr std::array baseTypes{"gsm",       "cdma",           "pppoe",          "adsl",
                               "bluetooth", "802-3-ethernet", "802-11-wireless"};
constexpr std::array addressProperties{"Ip4Config", "Ip6Config"};

bool isDialled(const std::string& type) {
    return std::find(dialledTypes.begin(), dialledTypes.end(), type) != dialledTypes.end();
}

bool isBase(const std::string& type) {
    return std::find(baseTypes.begin(), baseTypes.end(), type) != baseTypes.end();
}

/// A text of a profile's settings; empty where it has none.
std::string textOf(const ProfileSettings& settings, const std::string& group,
                   const std::string& key) {
    const auto values = settings.find(group);
    return values == settings.end() ? std::string() : valueOf<std::string>(values->second, key);
}

/// The objects that are still there when they are read, and can be.
template <class Object, class Read>
std::vector<Object> readAll(const std::vector<sdbus::ObjectPath>& paths, const Read& read) {
    std::vector<Object> found;
    for (const auto& path : paths) {
        try {
            if (auto object = read(path)) {
                found.push_back(std::move(*object));
            }
        } catch (const sdbus::Error& error) {
            if (isNoAnswer(error)) {
                throw;
            }
        }
    }
    return found;
}

std::string interfaceOf(BusReplies& replies, const Properties& line) {
    const auto devices = valueOf<std::vector<sdbus::ObjectPath>>(line, "Devices");
    if (devices.empty()) {
        return {};
    }
    const Properties device = replies.propertiesOf(devices.front(), nm::deviceInterface);
    const auto ip = valueOf<std::string>(device, "IpInterface");
    return ip.empty() ? valueOf<std::string>(device, "Interface") : ip;
}

bool haveSameAddresses(const Properties& line, const Properties& device) {
    return std::any_of(addressProperties.begin(), addressProperties.end(), [&](const char* name) {
        const auto own = valueOf<sdbus::ObjectPath>(line, name);
        return own.size() > 1 && own == valueOf<sdbus::ObjectPath>(device, name);
    });
}

/// The device of a VPN is the one below it; the tunnel is the device with the same addresses. A VPN
/// without a tunnel puts its addresses on the one below, which carries all other traffic too.
std::string tunnelOf(BusReplies& replies, const Properties& line) {
    const auto below = valueOf<std::vector<sdbus::ObjectPath>>(line, "Devices");
    const auto devices = valueOf<std::vector<sdbus::ObjectPath>>(
        replies.propertiesOf(nm::managerPath, nm::service), "AllDevices");
    const auto tunnels =
        readAll<std::string>(devices, [&](const std::string& path) -> std::optional<std::string> {
            if (std::find(below.begin(), below.end(), path) != below.end()) {
                return std::nullopt;
            }
            const Properties device = replies.propertiesOf(path, nm::deviceInterface);
            return haveSameAddresses(line, device)
                       ? std::optional(valueOf<std::string>(device, "Interface"))
                       : std::nullopt;
        });
    return tunnels.empty() ? std::string() : tunnels.front();
}

std::vector<std::string> devicesOf(const Properties& line) {
    const auto paths = valueOf<std::vector<sdbus::ObjectPath>>(line, "Devices");
    return {paths.begin(), paths.end()};
}

std::optional<NetworkLine> readLine(BusReplies& replies, const std::string& path,
                                    const Properties& properties) {
    NetworkLine line{.path = path,
                     .uuid = valueOf<std::string>(properties, "Uuid"),
                     .id = valueOf<std::string>(properties, "Id"),
                     .name = valueOf<std::string>(properties, "Id"),
                     .type = valueOf<std::string>(properties, "Type"),
                     .state = valueOf<std::uint32_t>(properties, "State"),
                     .interface = {},
                     .devices = {},
                     .below = {}};
    if (!isDialled(line.type)) {
        return std::nullopt;
    }
    line.interface =
        line.type == "vpn" ? tunnelOf(replies, properties) : interfaceOf(replies, properties);
    (line.type == "vpn" ? line.below : line.devices) = devicesOf(properties);
    return line;
}

/// A connection that other ones can run over.
struct BaseConnection {
    std::string path;
    std::vector<std::string> devices;
};

std::optional<NetworkLine> readLine(BusReplies& replies, const std::string& path,
                                    std::vector<BaseConnection>& bases) {
    const Properties properties = replies.propertiesOf(path, nm::lineInterface);
    if (isBase(valueOf<std::string>(properties, "Type")) &&
        valueOf<std::uint32_t>(properties, "State") == line_state::activated) {
        bases.push_back({.path = path, .devices = devicesOf(properties)});
    }
    return readLine(replies, path, properties);
}

/// What was known of a line before the answer about it failed so; nothing ends by an odd one.
std::optional<NetworkLine> knownLine(const std::vector<NetworkLine>& known, const std::string& path,
                                     const sdbus::Error& error) {
    const auto before = std::find_if(known.begin(), known.end(),
                                     [&](const NetworkLine& one) { return one.path == path; });
    return before == known.end() || isGone(error) ? std::nullopt : std::optional(*before);
}

/// A WireGuard tunnel does not tell what it runs over: it is the only connection that is there for
/// it, else the one with the default route.
std::vector<std::string> belowTunnel(const std::vector<BaseConnection>& bases,
                                     const std::string& primary) {
    const auto found = std::find_if(bases.begin(), bases.end(), [&](const BaseConnection& one) {
        return bases.size() == 1 || one.path == primary;
    });
    return found == bases.end() ? std::vector<std::string>() : found->devices;
}

} // namespace

std::optional<NetworkProfile> readProfile(BusReplies& replies, const std::string& path) {
    const ProfileSettings settings = replies.settingsOf(path);
    const std::string type = textOf(settings, "connection", "type");
    // Bluetooth is dialled where it reaches the other side's modem.
    if (!isDialled(type) ||
        (type == "bluetooth" && textOf(settings, "bluetooth", "type") != "dun")) {
        return std::nullopt;
    }
    return NetworkProfile{.path = path,
                          .uuid = textOf(settings, "connection", "uuid"),
                          .name = textOf(settings, "connection", "id"),
                          .type = type,
                          .userName = textOf(settings, type, "username")};
}

/// A name may be given twice, and the program knows entries by their names: the second one gets a
/// number. The order does not depend on the service's.
std::vector<NetworkProfile>
sortedProfiles(const std::map<std::string, std::optional<NetworkProfile>>& all) {
    std::vector<NetworkProfile> profiles;
    for (const auto& [path, profile] : all) {
        if (profile) {
            profiles.push_back(*profile);
        }
    }
    std::sort(profiles.begin(), profiles.end(), [](const auto& a, const auto& b) {
        return std::tie(a.name, a.uuid) < std::tie(b.name, b.uuid);
    });
    std::set<std::string> names;
    std::map<std::string, int> numbers; // that were given last
    for (NetworkProfile& profile : profiles) {
        const std::string name = profile.name;
        for (int& number = numbers[name]; !names.insert(profile.name).second;) {
            number = std::max(number, 1) + 1;
            profile.name = name + " (" + std::to_string(number) + ")";
        }
    }
    return profiles;
}

void nameLines(std::vector<NetworkLine>& lines, const std::vector<NetworkProfile>& profiles) {
    for (NetworkLine& line : lines) {
        const auto profile = std::find_if(profiles.begin(), profiles.end(),
                                          [&](const auto& one) { return one.uuid == line.uuid; });
        line.name = profile == profiles.end() ? line.id : profile->name;
    }
}

std::vector<NetworkLine> readLines(BusReplies& replies, const std::vector<NetworkLine>& known) {
    const Properties manager = replies.propertiesOf(nm::managerPath, nm::service);
    const auto paths = valueOf<std::vector<sdbus::ObjectPath>>(manager, "ActiveConnections");
    std::vector<BaseConnection> bases;
    auto lines = readAll<NetworkLine>(paths, [&](const std::string& path) {
        try {
            return readLine(replies, path, bases);
        } catch (const sdbus::Error& error) {
            if (isNoAnswer(error)) {
                throw;
            }
            return knownLine(known, path, error);
        }
    });
    for (NetworkLine& line : lines) {
        if (line.type == "wireguard") {
            line.below =
                belowTunnel(bases, valueOf<sdbus::ObjectPath>(manager, "PrimaryConnection"));
        }
    }
    return lines;
}

NetworkState readState(BusReplies& replies) {
    const Properties manager = replies.propertiesOf(nm::managerPath, nm::service);
    NetworkState state{.state = valueOf<std::uint32_t>(manager, "State"),
                       .connectivity = valueOf<std::uint32_t>(manager, "Connectivity"),
                       .primaryType = valueOf<std::string>(manager, "PrimaryConnectionType"),
                       .primaryName = {}};
    const auto primary = valueOf<sdbus::ObjectPath>(manager, "PrimaryConnection");
    const auto names = readAll<std::string>({primary}, [&](const std::string& path) {
        return path.size() < 2 ? std::nullopt
                               : std::optional(valueOf<std::string>(
                                     replies.propertiesOf(path, nm::lineInterface), "Id"));
    });
    state.primaryName = names.empty() ? std::string() : names.front();
    return state;
}

} // namespace tarvik
