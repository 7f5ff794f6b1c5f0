#include "contracts/ConnectionsUnderTest.h"

#include "linux/network/NetworkConnections.h"

#include <cstdlib>

namespace tarvik {

namespace {

/// On a machine whose bus is not there.
class WithoutBus {
public:
    WithoutBus() { setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1); }
    ~WithoutBus() { unsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }
    WithoutBus(const WithoutBus&) = delete;
    WithoutBus& operator=(const WithoutBus&) = delete;
};

class ConnectionsWithoutBus : private WithoutBus, public NetworkConnections {};

} // namespace

std::vector<ConnectionsUnderTest> connectionsUnderTest() {
    std::vector<ConnectionsUnderTest> all;
    all.push_back({.name = "network", .connections = std::make_unique<ConnectionsWithoutBus>()});
    return all;
}

} // namespace tarvik
