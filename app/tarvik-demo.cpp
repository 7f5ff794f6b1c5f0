#include "linux/LinuxPlatform.h"
#include "simulated/SimulatedLink.h"
#include "startup/World.h"
#include "startup/mdlStartUp.h"

#include <QtGlobal>

namespace {

/// The seed of the simulated traffic: any number, 1 unless the environment has another.
std::uint64_t trafficSeed() {
    bool valid = false;
    const std::uint64_t seed = qgetenv("TARVIK_DEMO_SEED").toULongLong(&valid);
    return valid ? seed : 1;
}

} // namespace

int main(int argc, char** argv) {
    tarvik::LinuxPlatform machine(argc, argv);
    tarvik::SimulatedLink connections(trafficSeed());
    tarvik::Platform platform = machine.with(connections);
    const tarvik::World world(platform);
    tarvik::Main();
    platform.desktop.run();
    return 0;
}
