// Signals that come over the bus: of anybody, about anything, with values of any types, also as the
// bus's own messages are read; and answers to the question who owns NetworkManager's name.
//
// Input: bytes only. Each event is made of what comes next.

#include "Fuzz.h"
#include "linux/network/BusReplies.h"
#include "linux/network/BusSignal.h"
#include "linux/network/NetworkNews.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <vector>

namespace sdbus {

/// A message that belongs to no bus. The library has it for values of any type, and declares it
/// nowhere.
PlainMessage createPlainMessage();

} // namespace sdbus

namespace tarvik::fuzz {
namespace {

const std::array<std::string, 6> senders{
    ":1.1", ":1.2", ":1.3", "org.freedesktop.DBus", "org.freedesktop.NetworkManager", ""};
const std::array<std::string, 8> interfaces{"org.freedesktop.DBus",
                                            "org.freedesktop.DBus.Properties",
                                            "org.freedesktop.NetworkManager",
                                            "org.freedesktop.NetworkManager.Settings",
                                            "org.freedesktop.NetworkManager.Settings.Connection",
                                            "org.freedesktop.NetworkManager.Connection.Active",
                                            "org.freedesktop.NetworkManager.Device",
                                            ""};
const std::array<std::string, 7> members{
    "NameOwnerChanged", "StateChanged", "PropertiesChanged", "NewConnection", "ConnectionRemoved",
    "Updated",          "Removed"};
const std::array<std::string, 6> texts{"",
                                       "/o1",
                                       "org.freedesktop.NetworkManager",
                                       "org.freedesktop.NetworkManager.Connection.Active",
                                       ":1.1",
                                       ":1.2"};

template <std::size_t count>
std::string oneOf(Input& input, const std::array<std::string, count>& choices) {
    return choices[input.below(count)];
}

BusSignal anySignal(Input& input) {
    BusSignal signal{.sender = oneOf(input, senders),
                     .path = "/o" + std::to_string(input.below(4)),
                     .interface = oneOf(input, interfaces),
                     .member = oneOf(input, members),
                     .values = {}};
    for (std::uint8_t i = input.below(5); i > 0; --i) {
        if (input.flag()) {
            signal.values.emplace_back(oneOf(input, texts));
        } else {
            signal.values.emplace_back(input.number() % 256U);
        }
    }
    return signal;
}

/// Writes a value of a type that signals may hold; what of it a reader is to find, nothing where it
/// is to stop.
std::optional<BusSignal::Value> addValue(Input& input, sdbus::Message& message) {
    switch (input.below(9)) {
    case 0: {
        const std::string text = oneOf(input, texts);
        message << text;
        return text;
    }
    case 1: {
        const std::string path = "/o" + std::to_string(input.below(4));
        message << sdbus::ObjectPath(path);
        return path;
    }
    case 2: {
        const std::uint32_t number = input.number();
        message << number;
        return number;
    }
    case 3:
        message << static_cast<std::int32_t>(input.number());
        return std::nullopt;
    case 4:
        message << std::uint64_t{input.wideNumber()};
        return std::nullopt;
    case 5:
        message << input.flag();
        return std::nullopt;
    case 6:
        message << sdbus::Variant(oneOf(input, texts));
        return std::nullopt;
    case 7:
        message << std::vector<std::string>{oneOf(input, texts)};
        return std::nullopt;
    default:
        message << sdbus::make_struct(input.number(), oneOf(input, texts));
        return std::nullopt;
    }
}

/// A message with any values, and what is read of it: its first three, as far as they are known.
void readAnyMessage(Input& input) {
    auto message = sdbus::createPlainMessage();
    std::vector<BusSignal::Value> wanted;
    bool readable = true;
    for (std::uint8_t i = input.below(6); i > 0; --i) {
        const auto value = addValue(input, message);
        readable = readable && value && wanted.size() < 3;
        if (readable) {
            wanted.push_back(*value);
        }
    }
    message.seal();
    message.rewind(true);
    NetworkNews news;
    require(!news.take(message) && news == NetworkNews(), "what has no sender is not believed");
    const BusSignal signal = readSignal(message);
    require(signal.sender.empty() && signal.path.empty(), "what has no sender is of nobody");
    require(signal.values == wanted,
            "of a signal its first three values are read, up to one of another type");
}

bool areNumbers(const BusSignal& signal, std::size_t count) {
    return signal.values.size() >= count &&
           std::all_of(
               signal.values.begin(), signal.values.begin() + static_cast<std::ptrdiff_t>(count),
               [](const auto& value) { return std::holds_alternative<std::uint32_t>(value); });
}

/// A second statement of who is believed: the bus on names, who owns the service's on all else.
class Listener {
public:
    void answer(const std::string& owner) {
        news_.takeOwner(owner);
        owner_ = owner;
        check();
    }

    void hear(const BusSignal& signal) {
        const NetworkNews before = news_;
        news_.take(signal);
        const bool fromBus = signal.sender == "org.freedesktop.DBus";
        const bool fromService = !owner_.empty() && !fromBus && signal.sender == owner_;
        if (fromBus && tellsOwner(signal)) {
            owner_ = std::get<std::string>(signal.values[2]);
            require(news_.starts() >= before.starts(), "starts are counted on");
        } else if (!fromService) {
            require(news_ == before, "a signal of a stranger changes nothing");
        } else {
            checkOwn(signal, before);
        }
        check();
    }

    /// Something was read: what is stale now has become so since.
    void read() {
        news_.profilesStale = news_.linesStale = false;
        news_.changedProfiles.clear();
    }

private:
    static bool tellsOwner(const BusSignal& signal) {
        const auto text = [&](std::size_t place) {
            return place < signal.values.size() ? std::get_if<std::string>(&signal.values[place])
                                                : nullptr;
        };
        return signal.interface == "org.freedesktop.DBus" && signal.member == "NameOwnerChanged" &&
               text(0) != nullptr && *text(0) == "org.freedesktop.NetworkManager" &&
               text(1) != nullptr && text(2) != nullptr;
    }

    void checkOwn(const BusSignal& signal, const NetworkNews& before) const {
        require(news_.starts() == before.starts(), "a service does not tell who owns its name");
        const bool ofLine = signal.interface == nm::lineInterface;
        const bool ofDevice = signal.interface == nm::deviceInterface;
        if (signal.member != "StateChanged" || !(ofLine || ofDevice)) {
            require(news_.deviceReason() == before.deviceReason() &&
                        news_.reasonOf(signal.path) == before.reasonOf(signal.path),
                    "only a change of state has a reason");
            require(news_.profilesStale == before.profilesStale &&
                        news_.changedProfiles.size() <= before.changedProfiles.size() + 1,
                    "a signal is about one profile");
        } else if (!areNumbers(signal, ofLine ? 2 : 3)) {
            require(news_ == before, "a signal that cannot be read changes nothing");
        } else if (ofLine) {
            require(news_.linesStale &&
                        news_.reasonOf(signal.path) == std::get<std::uint32_t>(signal.values[1]),
                    "the reason is that of the signal");
        }
    }

    void check() const {
        require(news_.running() == !owner_.empty(), "the service runs when its name is owned");
        require(news_.believes("org.freedesktop.DBus") && !news_.believes(""),
                "the bus is believed, nobody is not");
        require(news_.believes(":1.3") == (owner_ == ":1.3"), "only the owner is believed");
    }

    NetworkNews news_;
    std::string owner_;
};

void play(Input input) {
    Listener listener;
    while (!input.empty()) {
        switch (input.below(8)) {
        case 0:
            listener.answer(oneOf(input, texts));
            break;
        case 1:
            listener.read();
            break;
        case 7:
            readAnyMessage(input);
            break;
        default:
            listener.hear(anySignal(input));
        }
    }
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
