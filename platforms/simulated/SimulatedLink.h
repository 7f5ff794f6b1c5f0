#pragma once

#include "ports/ConnectionProvider.h"
#include "simulated/SimulatedPhoneBook.h"
#include "simulated/SimulatedTraffic.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tarvik {

/// A dial-up service with a phone book of its own, whose lines carry simulated traffic. The same
/// seed gives the same traffic, session by session.
class SimulatedLink : public ConnectionProvider {
public:
    /// Milliseconds since any fixed moment; never falls.
    using Now = std::function<std::uint64_t()>;
    /// Lets that many milliseconds pass.
    using Sleep = std::function<void(std::uint64_t)>;

    /// Lives by the machine's own steady clock.
    explicit SimulatedLink(std::uint64_t seed);
    SimulatedLink(std::uint64_t seed, Now now, Sleep sleep);

    /// From now on every line is that old, in milliseconds, however long it is up: what it has
    /// carried stands still, and every run counts the same.
    void standStillAt(std::uint64_t age) { stillAge_ = age; }

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
    struct Line {
        std::uint32_t handle;
        const SimulatedEntry* entry;
        std::uint64_t connectedAt;
        SimulatedTraffic traffic;
    };

    Line* lineOf(std::uint32_t handle);
    std::uint32_t connect(const SimulatedEntry& entry);

    std::uint64_t seed_;
    std::optional<std::uint64_t> stillAge_;
    Now now_;
    Sleep sleep_;
    std::vector<Line> lines_;
    std::uint32_t sessions_ = 0;
};

} // namespace tarvik
