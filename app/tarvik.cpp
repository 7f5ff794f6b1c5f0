#include "Machine.h"
#include "startup/mdlStartUp.h"
#include "wiring/World.h"

int main(int argc, char** argv) {
    tarvik::Machine machine(argc, argv);
    tarvik::RemoteAccess connections;
    tarvik::Platform platform = machine.with(connections);
    const tarvik::World world(platform);
    tarvik::Main();
    platform.desktop.run();
    return 0;
}
