// The whole program, whose ticks follow each other without the pauses between them: a test that
// would last a day. Arguments: the number of ticks. It prints what it held before and after to
// standard error.

#include "Machine.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

/// Memory in kilobytes and open descriptors of this process.
void printHeld(const char* when) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "VmRSS:") {
    }
    std::size_t resident = 0;
    status >> resident;
    const auto descriptors = std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                           std::filesystem::directory_iterator());
    std::cerr << when << ' ' << resident << ' ' << descriptors << std::endl;
}

void tick(tarvik::World& world, int times) {
    for (int i = 0; i < times; ++i) {
        world.forms.frmMain.timUpdateStats.fire();
        QApplication::processEvents();
    }
}

} // namespace

int main(int argc, char** argv) {
    const int ticks = argc > 1 ? std::atoi(argv[1]) : 0;
    const int warmUp = ticks / 10;
    argc = 1;
    tarvik::Machine machine(argc, argv);
    tarvik::RemoteAccess connections;
    tarvik::Platform platform = machine.with(connections);
    tarvik::World world(platform);
    tarvik::Main();
    tick(world, warmUp);
    printHeld("before");
    tick(world, ticks);
    printHeld("after");
    std::cerr << "received " << world.state.BytesRcvdCurrent.whole().integralPart() << std::endl;
    return 0;
}
