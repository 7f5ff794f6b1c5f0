#pragma once

#include "common/RasRecords.h"
#include "linux/network/LinkMark.h"
#include "linux/network/LinkReader.h"
#include "linux/network/LinkSession.h"
#include "linux/network/NetworkBus.h"
#include "ports/ConnectionProvider.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

/// What NetworkManager dials as a remote-access service: its saved profiles of dialled kinds are
/// the entries, its activated connections of these kinds the connections. A connection that is
/// being made is not one yet.
///
/// Without NetworkManager every operation answers that the service does not run (711); there are
/// then no entries and no connections. Where it is there but has never answered, or so that it
/// could be read, they answer that the time is over (638). Profiles that have not been read yet are
/// no entries yet; to dial one by its name is then answered likewise.
class NetworkConnections : public ConnectionProvider {
public:
    static constexpr std::uint32_t notRunning = 711;
    static constexpr std::uint32_t timedOut = 638;

    static constexpr std::uint32_t dropped = 668;

    /// How long a dial waits.
    struct Patience {
        /// For a connection that is being made. NetworkManager and who keeps its passwords give up
        /// before.
        std::chrono::milliseconds making = std::chrono::minutes(5);
        /// For a word why a connection is not listed any more.
        std::chrono::milliseconds reason = std::chrono::seconds(2);
    };

    explicit NetworkConnections(LinkReader links = {})
        : NetworkConnections(std::move(links), Patience()) {}
    NetworkConnections(LinkReader links, Patience patience)
        : links_(std::move(links)), patience_(patience) {}

    std::uint32_t RasEnumEntriesA(const char* reserved, const char* phoneBook, void* buffer,
                                  std::uint32_t* bytes, std::uint32_t* count) override;
    std::uint32_t RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                      std::uint32_t* count) override;
    std::uint32_t RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) override;
    std::uint32_t RasGetConnectionStatistics(std::uint32_t handle, RAS_STATS* statistics) override;
    std::optional<Traffic> lineTotals(std::uint32_t handle) override;
    std::uint32_t carrierOf(std::uint32_t handle) override;
    std::string sessionMark(std::uint32_t handle) override;
    bool resume(std::uint32_t handle, const std::string& mark) override;
    /// Never: a connection that outlives a start of NetworkManager keeps its handle.
    bool renumbers() const override { return false; }
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
        LinkReadings before;           ///< all interfaces as they were before it was up
        std::uint64_t seenActive = 0;  ///< milliseconds of the steady clock; 0: not yet
        std::uint64_t activeSince = 0; ///< likewise, from the connection's own start
        std::uint64_t readAt = 0;      ///< likewise, of the last reading
        std::uint32_t link = 0;        ///< index of the interface that was read last
        std::uint32_t bitRate = 0;     ///< of that interface
        std::uint64_t duration = 0;    ///< milliseconds at the last reading
    };

    bool refresh(std::chrono::milliseconds profilesFor = NetworkBus::reading);
    std::uint32_t unavailable() const;
    void takeLines();
    Session sessionFor(const NetworkLine& line, std::vector<Session>& known, bool restarted);
    bool goesOn(const Session& own, const NetworkLine& line);
    bool isSame(const LinkMark& mark, const Session& own);
    Session newSession(const NetworkLine& line);
    void listCarriersLast();
    Session* session(std::uint32_t handle);
    const Session* carrier(const Session& session) const;
    std::size_t depth(const Session& session) const;
    /// It is up, and its interface may still become known.
    static bool awaitsInterface(const Session& session);
    const NetworkProfile* profile(const char* name) const;
    std::uint32_t find(const char* name, const NetworkProfile*& wanted);
    std::uint32_t waitForLine(const std::string& path, std::uint32_t* handle);
    std::uint32_t giveUp(const std::string& path);
    void sample(Session& session);
    void beginOn(Session& session, const LinkReading& reading);

    LinkReader links_;
    Patience patience_;
    NetworkBus bus_;
    std::vector<RasEntry> asked_;   ///< that the last listing told the room for; it may follow
    std::vector<Session> sessions_; ///< those that are being made, too
    std::vector<Session> former_;   ///< of a NetworkManager that has stopped
    LinkReadings atListing_;        ///< all interfaces at the last enumeration
    std::uint64_t starts_ = 0;      ///< of the bus, when the sessions were taken
    std::uint32_t lastHandle_ = 0;
    std::string boot_ = bootOfMachine();
};

} // namespace tarvik
