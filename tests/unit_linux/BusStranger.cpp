#include "BusStranger.h"

#include <algorithm>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace tarvik {

namespace {

const std::string busName = "org.freedesktop.DBus";
constexpr uid_t anotherUser = 65534;
constexpr int mostAtOnce = 200; // more of them do not fit into the library's own queue
constexpr std::size_t mostBytesAtOnce = 4'000'000;

/// The bus knows a program by the user who connects, and the system knows users by thread.
void becomeAnother() {
    if (geteuid() == 0) {
        syscall(SYS_setresuid, anotherUser, anotherUser, anotherUser);
    }
}

std::unique_ptr<sdbus::IProxy> theBus(sdbus::IConnection& connection) {
    return sdbus::createProxy(connection, busName, "/org/freedesktop/DBus");
}

} // namespace

BusStranger::BusStranger() {
    std::thread([this] {
        becomeAnother();
        bus_ = sdbus::createSystemBusConnection();
    }).join();
}

std::uint32_t BusStranger::user() const {
    std::uint32_t user = 0;
    theBus(*bus_)
        ->callMethod("GetConnectionUnixUser")
        .onInterface(busName)
        .withArguments(name())
        .storeResultsTo(user);
    return user;
}

std::vector<std::string> BusStranger::others() const {
    std::vector<std::string> names;
    theBus(*bus_)->callMethod("ListNames").onInterface(busName).storeResultsTo(names);
    std::erase_if(names, [this](const std::string& one) {
        return one[0] != ':' || one == name() ||
               std::count(spared_.begin(), spared_.end(), one) != 0;
    });
    return names;
}

void BusStranger::spare(const std::string& service) {
    std::string owner;
    theBus(*bus_)
        ->callMethod("GetNameOwner")
        .onInterface(busName)
        .withArguments(service)
        .storeResultsTo(owner);
    spared_.push_back(owner);
}

void BusStranger::flood(int count) {
    flood(count, mostAtOnce, [](sdbus::IObject& object) {
        sdbus::Signal signal =
            object.createSignal("org.freedesktop.NetworkManager.Connection.Active", "StateChanged");
        signal << std::uint32_t{4} << std::uint32_t{9};
        return signal;
    });
}

void BusStranger::floodUnheard(int count, std::size_t bytes) {
    const std::string large(bytes, 'x');
    const auto atOnce = static_cast<int>(mostBytesAtOnce / bytes);
    flood(count, std::min(mostAtOnce, atOnce), [&](sdbus::IObject& object) {
        sdbus::Signal signal = object.createSignal("org.example.Stranger", "Something");
        signal << large;
        return signal;
    });
}

void BusStranger::flood(int count, int atOnce,
                        const std::function<sdbus::Signal(sdbus::IObject&)>& make) {
    const std::vector<std::string> targets = others();
    const auto object = sdbus::createObject(*bus_, "/org/freedesktop/NetworkManager/Flood");
    for (int i = 0; i < count; ++i) {
        for (const std::string& target : targets) {
            sdbus::Signal signal = make(*object);
            signal.setDestination(target);
            object->emitSignal(signal);
        }
        if (i % atOnce == atOnce - 1) {
            others();
        }
    }
    others();
}

} // namespace tarvik
