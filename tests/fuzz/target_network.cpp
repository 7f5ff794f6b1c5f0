// What NetworkManager answers: any properties of any types, objects that are gone, errors. And the
// counters of a connection, whatever the kernel counts.
//
// Input: bytes only. Each answer is made of what comes next.

#include "Fuzz.h"
#include "linux/network/BusReplies.h"
#include "linux/network/LinkSession.h"
#include "linux/network/LinuxInternetState.h"
#include "linux/network/NetworkObjects.h"
#include "linux/network/ProfileBook.h"
#include "linux/network/ReasonCodes.h"

#include <algorithm>
#include <array>
#include <set>

namespace tarvik::fuzz {
namespace {

using Paths = std::vector<sdbus::ObjectPath>;

// The kinds of connections that are dialled, said a second time on purpose: whatever the answers,
// no entry and no line may be of another kind, and the program's own list is not asked which those
// are.
constexpr std::array dialledTypes{"gsm", "cdma", "pppoe", "adsl", "bluetooth", "vpn", "wireguard"};
constexpr std::array otherTypes{"802-3-ethernet", "", "loopback"};
constexpr std::array propertyNames{"Uuid",
                                   "Id",
                                   "Type",
                                   "State",
                                   "Devices",
                                   "Interface",
                                   "Ip4Config",
                                   "Ip6Config",
                                   "IpInterface",
                                   "ActiveConnections",
                                   "AllDevices",
                                   "Connectivity",
                                   "PrimaryConnection",
                                   "PrimaryConnectionType",
                                   "id",
                                   "uuid",
                                   "type",
                                   "username"};

/// A bus that answers with whatever the input says. The same question may have another answer.
class AnyReplies : public BusReplies {
public:
    explicit AnyReplies(Input& input) : input_(input) {}

    Properties propertiesOf(const std::string& path, const std::string& interface) override {
        require(!path.empty() && !interface.empty(), "a question names what it is about");
        throwSometimes();
        Properties properties;
        for (std::uint8_t i = input_.below(8); i > 0; --i) {
            properties[propertyNames[input_.below(propertyNames.size())]] = value();
        }
        return properties;
    }

    Paths profilePaths() override {
        throwSometimes();
        return paths();
    }

    ProfileSettings settingsOf(const std::string&) override {
        throwSometimes();
        ProfileSettings settings;
        // Mostly whole, so that profiles come out.
        for (const char* group : {"connection", "vpn", "bluetooth", "gsm"}) {
            if (input_.below(4) != 0) {
                Properties& values = settings[group];
                values["type"] = input_.flag() ? sdbus::Variant(type()) : value();
                values["id"] = input_.flag() ? sdbus::Variant(name()) : value();
                values["uuid"] = sdbus::Variant(name());
                values["username"] = value();
            }
        }
        return settings;
    }

private:
    void throwSometimes() {
        constexpr std::array names{"UnknownObject", "UnknownMethod", "AccessDenied",
                                   "NoReply",       "Failed",        ""};
        const std::uint8_t chance = input_.byte();
        if (chance > 240) {
            throw sdbus::Error(
                std::string("org.freedesktop.DBus.Error.") + names[chance % names.size()], "");
        }
    }

    std::string name() {
        std::string text(input_.below(4), ' ');
        std::generate(text.begin(), text.end(),
                      [&] { return static_cast<char>('a' + input_.below(3)); });
        return text;
    }

    std::string type() {
        const std::uint8_t number = input_.below(dialledTypes.size() + otherTypes.size() + 3);
        if (number < dialledTypes.size()) {
            return dialledTypes[number];
        }
        const std::size_t other = number - dialledTypes.size();
        return other < otherTypes.size() ? otherTypes[other] : "dun";
    }

    sdbus::ObjectPath path() { return sdbus::ObjectPath("/o" + std::to_string(input_.below(6))); }

    Paths paths() {
        Paths result(input_.below(6));
        std::generate(result.begin(), result.end(), [&] { return path(); });
        return result;
    }

    sdbus::Variant value() {
        switch (input_.below(10)) {
        case 0:
            return sdbus::Variant(name());
        case 1:
        case 2:
            return sdbus::Variant(type());
        case 3:
            return sdbus::Variant(path());
        case 4:
        case 5:
            return sdbus::Variant(paths());
        case 6:
            return sdbus::Variant(input_.number());
        case 7:
            return sdbus::Variant(static_cast<std::int32_t>(input_.number()));
        case 8:
            return sdbus::Variant(std::vector<std::string>{name()});
        default:
            return {};
        }
    }

    Input& input_;
};

bool isDialled(const std::string& type) {
    return std::find(dialledTypes.begin(), dialledTypes.end(), type) != dialledTypes.end();
}

void checkProfiles(const std::vector<NetworkProfile>& profiles) {
    std::set<std::string> names;
    for (const NetworkProfile& profile : profiles) {
        require(names.insert(profile.name).second, "no two entries have one name");
        require(isDialled(profile.type), "an entry is of a kind that is dialled");
    }
}

void checkLines(const std::vector<NetworkLine>& lines,
                const std::vector<NetworkProfile>& profiles) {
    for (const NetworkLine& line : lines) {
        require(isDialled(line.type), "a line is of a kind that is dialled");
        const auto profile =
            std::find_if(profiles.begin(), profiles.end(),
                         [&](const NetworkProfile& one) { return one.uuid == line.uuid; });
        require(profile == profiles.end() || profile->name == line.name,
                "a line bears the name of its entry");
    }
}

void checkState(const NetworkState& state, const std::vector<NetworkLine>& lines,
                bool profilesExist) {
    const InternetFlags flags = internetFlags(state, lines, profilesExist, true);
    const bool modem = (flags.flags & InternetState::modem) != 0;
    const bool lan = (flags.flags & InternetState::lan) != 0;
    require(flags.connected == (modem || lan) && !(modem && lan),
            "a connection is by modem or by network");
    require(((flags.flags & InternetState::configured) != 0) == profilesExist,
            "entries are told of");
}

void requireBusError(const sdbus::Error& error) {
    require(!isGone(error) || error.getName().ends_with(".AccessDenied") ||
                error.getName().ends_with("UnknownObject") ||
                error.getName().ends_with("UnknownMethod"),
            "only the bus's own errors come through");
    codeOfBusError(error.getName());
}

/// Bit by bit, with changes between.
std::vector<NetworkProfile> readProfiles(BusReplies& replies, Input& input) {
    ProfileBook book;
    for (int part = 0; part < 8 && !book.complete(); ++part) {
        try {
            book.readOn(replies, [&] { return input.flag(); });
        } catch (const sdbus::Error& error) {
            requireBusError(error);
        }
        checkProfiles(book.profiles());
        const std::string path = "/o" + std::to_string(input.below(6));
        switch (input.below(6)) {
        case 0:
            book.change(path);
            break;
        case 1:
            book.remove(path);
            break;
        case 2:
            book.doubt();
            break;
        default:
            break;
        }
    }
    return book.profiles();
}

void readOnce(BusReplies& replies, Input& input) {
    try {
        auto lines = readLines(replies);
        const NetworkState machine = readState(replies);
        const auto profiles = readProfiles(replies, input);
        checkProfiles(profiles);
        nameLines(lines, profiles);
        checkLines(lines, profiles);
        checkState(machine, lines, !profiles.empty());
    } catch (const sdbus::Error& error) {
        requireBusError(error);
    }
}

void checkReasons(Input& input) {
    const auto known = [](std::uint32_t code) { return code >= 600 && code < 800; };
    require(known(codeOfActiveReason(input.number())), "a reason has a code");
    require(known(codeOfDeviceReason(input.number(), 651)), "a device's reason has a code");
}

/// Few values, so that interfaces come again and counters go back.
LinkReading anyReading(Input& input) {
    return {.index = input.below(3) + 1U,
            .received = std::uint64_t{input.byte()} << input.below(48),
            .sent = std::uint64_t{input.byte()} << input.below(48),
            .packetsReceived = input.wideNumber()};
}

void checkCounters(Input& input) {
    LinkSession session;
    if (input.flag()) {
        session.beginAt(anyReading(input));
    }
    LinkReading before;
    while (!input.empty()) {
        session.sample(anyReading(input));
        require(session.total().received >= before.received && session.total().sent >= before.sent,
                "what a connection counted does not go back");
        before = session.total();
    }
}

void play(Input input) {
    AnyReplies replies(input);
    readOnce(replies, input);
    checkReasons(input);
    checkCounters(input);
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
