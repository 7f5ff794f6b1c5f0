#include "Machine.h"
#include "simulated/SimulatedLink.h"
#include "startup/World.h"
#include "startup/mdlStartUp.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace {

/// The seed of the simulated traffic: any number, 1 unless the environment has another.
std::uint64_t trafficSeed() {
    const char* const wish = std::getenv("TARVIK_DEMO_SEED");
    const std::string_view text = wish == nullptr ? "" : wish;
    std::uint64_t seed = 1;
    std::from_chars(text.data(), text.data() + text.size(), seed);
    return seed;
}

} // namespace

int main(int argc, char** argv) {
    tarvik::Machine machine(argc, argv);
    tarvik::SimulatedLink connections(trafficSeed());
    tarvik::Platform platform = machine.with(connections);
    const tarvik::World world(platform);
    tarvik::Main();
    platform.desktop.run();
    return 0;
}
