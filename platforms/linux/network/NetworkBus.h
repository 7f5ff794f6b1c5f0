#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sdbus {
class IConnection;
class Message;
} // namespace sdbus

namespace tarvik {

/// A saved profile of a kind that is dialled.
struct NetworkProfile {
    std::string path; ///< of the object on the bus
    std::string uuid;
    std::string name;
    std::string type; ///< as NetworkManager names it: "gsm", "vpn"
    std::string userName;
    std::string service; ///< of a VPN: what connects it
};

/// An active connection of such a kind.
struct NetworkLine {
    std::string path;
    std::string uuid;
    std::string name;
    std::string type;
    std::uint32_t state = 0; ///< 1 activating, 2 activated, 3 deactivating, 4 deactivated
    std::string interface;   ///< of the link itself; empty until it is known
};

/// The machine as a whole, in NetworkManager's own numbers and words.
struct NetworkState {
    std::uint32_t state = 0;        ///< 10 asleep, 20 disconnected, 40 connecting, 70 connected
    std::uint32_t connectivity = 0; ///< 0 unknown, 1 none, 4 full
    std::string primaryType;        ///< of the connection that has the default route
    std::string primaryName;
};

/// An error that NetworkManager or the bus answered with, by its name.
struct BusFailure {
    std::string name;
};

/// NetworkManager as a client sees it: its profiles and active connections, kept up to date by
/// signals. Calls block for two seconds at most. Not for more than one thread at a time.
class NetworkBus {
public:
    NetworkBus();
    ~NetworkBus();
    NetworkBus(const NetworkBus&) = delete;
    NetworkBus& operator=(const NetworkBus&) = delete;

    /// Handles the signals that have come, and connects to the bus if need be. False when
    /// NetworkManager does not run.
    bool refresh();
    /// Waits for signals, at most that many milliseconds, and handles them.
    void wait(int milliseconds);

    const std::vector<NetworkProfile>& profiles() const { return profiles_; }
    const std::vector<NetworkLine>& lines() const { return lines_; }
    const NetworkState& state() const { return state_; }

    /// Activates a profile; the path of the active connection. Throws BusFailure.
    std::string activate(const NetworkProfile& profile);
    /// Throws BusFailure.
    void deactivate(const std::string& line);

    /// Why an active connection that is gone was deactivated; nothing when it is not known.
    std::optional<std::uint32_t> reasonOf(const std::string& line) const;
    /// The reason of the device that failed last since `activate`; 0 when none did.
    std::uint32_t deviceReason() const { return deviceReason_; }

private:
    bool connect();
    void watch();
    void onSignal(sdbus::Message& message);
    void pump();
    void readProfiles();
    void readLines();
    void readState();
    std::optional<NetworkProfile> readProfile(const std::string& path);
    std::optional<NetworkLine> readLine(const std::string& path);
    std::string interfaceOf(const std::string& linePath, bool vpn);

    std::unique_ptr<sdbus::IConnection> bus_;
    std::uint32_t deviceReason_ = 0;
    bool running_ = false; ///< NetworkManager is on the bus
    bool profilesStale_ = true;
    bool linesStale_ = true;
    std::vector<NetworkProfile> profiles_;
    std::vector<NetworkLine> lines_;
    NetworkState state_;
    std::map<std::string, std::uint32_t> reasons_; ///< by the path of the active connection
};

} // namespace tarvik
