#include "SystemBusStandIn.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace tarvik {

namespace {

constexpr const char* variable = "DBUS_SYSTEM_BUS_ADDRESS";

} // namespace

SystemBusStandIn::SystemBusStandIn(std::string service) : service_(std::move(service)) {
    start();
}

SystemBusStandIn::~SystemBusStandIn() {
    kill(bus_, SIGKILL);
    waitpid(bus_, nullptr, 0);
    unsetenv(variable);
}

std::string SystemBusStandIn::address() const {
    return getenv(variable);
}

void SystemBusStandIn::halt() const {
    kill(bus_, SIGSTOP);
}

void SystemBusStandIn::goOn() const {
    kill(bus_, SIGCONT);
}

/// Who may do what is as on a usual system: everybody may send signals, and ask the bus itself.
std::string SystemBusStandIn::busConfiguration(const std::string& socket) const {
    return "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN' "
           "'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>\n<busconfig><listen>"
           "unix:path=" +
           socket +
           "</listen><auth>EXTERNAL</auth><policy context='default'><allow user='*'/>"
           "<deny own='*'/><deny send_type='method_call'/><allow send_type='signal'/>"
           "<allow send_requested_reply='true' send_type='method_return'/>"
           "<allow send_requested_reply='true' send_type='error'/>"
           "<allow receive_type='method_call'/><allow receive_type='method_return'/>"
           "<allow receive_type='error'/><allow receive_type='signal'/>"
           "<allow send_destination='org.freedesktop.DBus'/></policy><policy user='" +
           std::to_string(getuid()) + "'><allow own='" + service_ + "'/><allow send_destination='" +
           service_ + "'/></policy></busconfig>\n";
}

void SystemBusStandIn::start() {
    const std::string socket = folder_.path() + "/bus";
    const std::string configuration = folder_.path() + "/bus.conf";
    std::ofstream(configuration) << busConfiguration(socket);
    // Other users are to come that far.
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::others_exec,
                                 std::filesystem::perm_options::add);
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe2(ready.data(), 0), 0);
    bus_ = fork();
    if (bus_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(open("/dev/null", O_RDWR), STDERR_FILENO); // it complains of limits it may not raise
        dup2(ready[1], STDOUT_FILENO);
        execlp("dbus-daemon", "dbus-daemon", ("--config-file=" + configuration).c_str(), "--nofork",
               "--nopidfile", "--print-address", nullptr);
        _exit(127);
    }
    close(ready[1]);
    char first = 0;
    EXPECT_EQ(read(ready[0], &first, 1), 1) << "no bus"; // it listens when it prints its address
    close(ready[0]);
    setenv(variable, ("unix:path=" + socket).c_str(), 1);
}

} // namespace tarvik
