#include "contracts/ConnectionsUnderTest.h"

#include "scripted/ScriptedConnections.h"
#include "simulated/SimulatedLink.h"
#include "support/RasCalls.h"

#include <utility>

namespace tarvik {

std::vector<ConnectionsUnderTest> connectionsUnderTest() {
    auto scripted = std::make_unique<ScriptedConnections>();
    scripted->entries = {{.name = "Harbour"}};
    const std::uint32_t played = scripted->connect("Harbour");
    auto simulated = std::make_unique<SimulatedLink>(
        7, [] { return std::uint64_t{1'000'000}; }, [](std::uint64_t) {});
    std::uint32_t dialled = 0;
    EXPECT_EQ(dialEntry(*simulated, "Ridge DSL", dialled), ras::success);
    std::vector<ConnectionsUnderTest> all;
    all.push_back({.name = "scripted", .connections = std::move(scripted), .handle = played});
    all.push_back({.name = "simulated", .connections = std::move(simulated), .handle = dialled});
    return all;
}

} // namespace tarvik
