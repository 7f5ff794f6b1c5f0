#pragma once

#include "ports/ConnectionProvider.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvik {

/// One service with what a test must know of it.
struct ConnectionsUnderTest {
    std::string name;
    std::unique_ptr<ConnectionProvider> connections;
    /// Of a connection that is up, where there can be one without a network.
    std::uint32_t handle = 1;
};

/// Those that this program of tests has.
std::vector<ConnectionsUnderTest> connectionsUnderTest();

} // namespace tarvik
