#pragma once

#include "linux/network/LinkSession.h"
#include "linux/network/NetworkBus.h"
#include "ports/ConnectionProvider.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

/// What NetworkManager dials as a remote-access service: its saved profiles of dialled kinds are
/// the entries, its active connections of these kinds the connections.
///
/// Without NetworkManager every operation answers that the service does not run (711); there are
/// then no entries and no connections.
class NetworkConnections : public ConnectionProvider {
public:
    static constexpr std::uint32_t notRunning = 711;

    /// `interfacesFolder` is the kernel's folder of network interfaces.
    explicit NetworkConnections(std::string interfacesFolder = "/sys/class/net")
        : interfacesFolder_(std::move(interfacesFolder)) {}

    std::uint32_t RasEnumEntriesA(const char* reserved, const char* phoneBook, void* buffer,
                                  std::uint32_t* bytes, std::uint32_t* count) override;
    std::uint32_t RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                      std::uint32_t* count) override;
    std::uint32_t RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) override;
    std::uint32_t RasGetConnectionStatistics(std::uint32_t handle, RAS_STATS* statistics) override;
    std::uint32_t RasGetEntryDialParamsA(const char* phoneBook, RASDIALPARAMSA* parameters,
                                         bool* passwordFound) override;
    std::uint32_t RasDialA(RASDIALEXTENSIONS* extensions, const char* phoneBook,
                           RASDIALPARAMSA* parameters, std::uint32_t notifierType, void* notifier,
                           std::uint32_t* handle) override;
    std::uint32_t RasHangUpA(std::uint32_t handle) override;
    std::uint32_t RasGetErrorStringA(std::uint32_t code, char* buffer, std::uint32_t size) override;

private:
    /// A connection with the number by which the program knows it.
    struct Session {
        std::uint32_t handle = 0;
        NetworkLine line;
        LinkSession counters;
        std::uint64_t activeSince = 0; ///< milliseconds of the steady clock; 0: not active yet
    };

    bool refresh();
    void takeLines();
    Session& sessionOf(const NetworkLine& line);
    Session* session(std::uint32_t handle);
    const NetworkProfile* profile(const char* name) const;
    std::uint32_t waitForLine(const std::string& path, std::uint32_t* handle);
    void sample(Session& session);

    std::string interfacesFolder_;
    NetworkBus bus_;
    std::vector<Session> sessions_;
    std::uint32_t lastHandle_ = 0;
};

} // namespace tarvik
