#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace sdbus {
class Message;
} // namespace sdbus

namespace tarvik {

struct BusSignal;

/// What is heard of NetworkManager: who it is on the bus, and what has changed.
///
/// Everybody on the bus may send this program a signal that looks like NetworkManager's, and no
/// rule of the bus keeps it away. Only the bus itself is believed who owns a name, and everything
/// else only who owns NetworkManager's. Whatever is not believed or not understood changes nothing.
class NetworkNews {
public:
    /// Who owns NetworkManager's name, as the bus answers; empty for nobody.
    void takeOwner(const std::string& owner);
    void take(const BusSignal& signal);
    /// The same for a signal as it comes. False, its contents unseen, where the sender is not
    /// believed: they may be large.
    bool take(sdbus::Message& message);
    /// Whether signals of that sender are believed at all.
    bool believes(const std::string& sender) const;
    /// Signals may have been missed.
    void doubt() { profilesStale = linesStale = true; }
    /// Why connections ended before is of no interest any more.
    void forgetReasons();

    bool running() const { return !owner_.empty(); }
    /// How often NetworkManager has been found started or gone: the paths of its objects mean
    /// nothing after that.
    std::uint64_t starts() const { return starts_; }

    /// Why a connection was deactivated; nothing when it is not known.
    std::optional<std::uint32_t> reasonOf(const std::string& line) const;
    /// The reason of the device that failed last; 0 when none did.
    std::uint32_t deviceReason() const { return deviceReason_; }

    bool operator==(const NetworkNews& other) const = default;

    /// What is to be read anew. Whoever reads takes it back before.
    bool profilesStale = true; ///< all of them
    bool linesStale = true;
    /// Single profiles that have come, changed or gone, by their paths: whether they are there.
    std::map<std::string, bool> changedProfiles;

private:
    void takeOfService(const BusSignal& signal);
    void takeOfSettings(const BusSignal& signal);
    void takeOfProfile(const BusSignal& signal);
    void takeOfLine(const BusSignal& signal);
    void takeOfDevice(const BusSignal& signal);

    std::string owner_;
    std::uint64_t starts_ = 0;
    std::map<std::string, std::uint32_t> reasons_; ///< by the path of the active connection
    std::uint32_t deviceReason_ = 0;
};

} // namespace tarvik
