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
    static constexpr std::uint32_t timedOut = 638;

    /// `interfacesFolder` is the kernel's folder of network interfaces.
    explicit NetworkConnections(std::string interfacesFolder = "/sys/class/net")
        : interfacesFolder_(std::move(interfacesFolder)) {}

    std::uint32_t RasEnumEntriesA(const char* reserved, const char* phoneBook, void* buffer,
                                  std::uint32_t* bytes, std::uint32_t* count) override;
    std::uint32_t RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                      std::uint32_t* count) override;
    std::uint32_t RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) override;
    std::uint32_t RasGetConnectionStatistics(std::uint32_t handle, RAS_STATS* statistics) override;
    std::optional<LineTotals> lineTotals(std::uint32_t handle) override;
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
        std::vector<LinkReading> before; ///< all interfaces when it was being made; empty when not
        std::uint64_t seenActive = 0;    ///< milliseconds of the steady clock; 0: not yet
        std::uint64_t activeSince = 0;   ///< likewise, from the connection's own start
        std::uint32_t link = 0;          ///< index of the interface that was read last
        std::uint32_t bitRate = 0;       ///< of that interface
        std::uint64_t duration = 0;      ///< milliseconds at the last reading
    };

    bool refresh();
    void takeLines();
    Session newSession(const NetworkLine& line);
    Session* session(std::uint32_t handle);
    /// It is up, and its interface may still become known.
    static bool awaitsInterface(const Session& session);
    const NetworkProfile* profile(const char* name) const;
    std::uint32_t waitForLine(const std::string& path, std::uint32_t* handle);
    void sample(Session& session);
    void beginOn(Session& session, const LinkReading& reading);

    std::string interfacesFolder_;
    NetworkBus bus_;
    std::vector<Session> sessions_;
    std::uint32_t lastHandle_ = 0;
};

} // namespace tarvik
