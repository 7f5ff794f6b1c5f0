#pragma once

#include "ports/ConnectionProvider.h"
#include "windows/services/Library.h"

#include <cstdint>
#include <vector>

namespace tarvik {

/// The system's remote access service. Records and codes go through as they are; the service takes
/// their oldest layouts on every system. Of the connections those that are up are listed, tunnels
/// before the lines that they run through.
///
/// On a system without the service every operation answers that a module was not found (126); there
/// are then no entries and no connections.
class WindowsConnections : public ConnectionProvider {
public:
    static constexpr std::uint32_t moduleNotFound = 126;

    std::uint32_t RasEnumEntriesA(const char* reserved, const char* phoneBook, void* buffer,
                                  std::uint32_t* bytes, std::uint32_t* count) override;
    std::uint32_t RasEnumConnectionsA(RASCONNA* buffer, std::uint32_t* bytes,
                                      std::uint32_t* count) override;
    std::uint32_t RasGetConnectStatusA(std::uint32_t handle, RASCONNSTATUSA* status) override;
    std::uint32_t RasGetConnectionStatistics(std::uint32_t handle, RAS_STATS* statistics) override;
    std::uint32_t carrierOf(std::uint32_t handle) override;
    std::uint32_t RasGetEntryDialParamsA(const char* phoneBook, RASDIALPARAMSA* parameters,
                                         bool* passwordFound) override;
    std::uint32_t RasDialA(RASDIALEXTENSIONS* extensions, const char* phoneBook,
                           RASDIALPARAMSA* parameters, std::uint32_t notifierType, void* notifier,
                           std::uint32_t* handle) override;
    std::uint32_t RasHangUpA(std::uint32_t handle) override;
    std::uint32_t RasGetErrorStringA(std::uint32_t code, char* buffer, std::uint32_t size) override;

private:
    template <class... Parameters>
    std::uint32_t call(const char* function, Parameters... parameters);

    /// Answers an enumeration whose buffer was too small and that counted nothing, which leaves
    /// open whether there is a connection: the service is documented to refuse a buffer without
    /// room for one record in either case, and to count only what it wrote. `bytes` is the room it
    /// asked for.
    std::uint32_t countConnections(std::uint32_t* bytes, std::uint32_t* count);

    /// Leaves out what is not up yet, and puts what carries another last.
    void settle(RASCONNA* records, std::uint32_t* bytes, std::uint32_t* count);
    bool isBeingMade(const RASCONNA& record);

    /// Of the last enumeration, in its order.
    std::vector<std::uint32_t> tunnels_;
    std::uint32_t dialledLine_ = 0; ///< the last that is no tunnel; 0 for none

    Library library_{"rasapi32.dll"};
};

} // namespace tarvik
