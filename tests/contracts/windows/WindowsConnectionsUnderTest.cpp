#include "contracts/ConnectionsUnderTest.h"

#include "standin/StandIn.h"
#include "windows/services/Library.h"
#include "windows/services/WindowsConnections.h"

#include <stdexcept>

namespace tarvik {

std::vector<ConnectionsUnderTest> connectionsUnderTest() {
    Library library("rasapi32.dll");
    StandInService* const mark = library.function<StandInService>(standInMark);
    if (mark == nullptr) {
        throw std::runtime_error("The system's own remote access library answers.");
    }
    StandIn& service = *mark();
    service = StandIn();
    service.entries = {{.name = "Harbour"}};
    const std::uint32_t handle = service.connect("Harbour");
    std::vector<ConnectionsUnderTest> all;
    all.push_back({.name = "remote access",
                   .connections = std::make_unique<WindowsConnections>(),
                   .handle = handle});
    return all;
}

} // namespace tarvik
