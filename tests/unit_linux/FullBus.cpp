#include "FullBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarvik {

namespace {

/// The daemon keeps 64 unless it is told otherwise; the others wait behind them.
constexpr std::size_t enough = 100;

bool isClosed(int connection) {
    char byte = 0;
    return recv(connection, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

} // namespace

FullBus::FullBus(const std::string& address) : path_(address.substr(address.find('=') + 1)) {
    for (std::size_t i = 0; i < enough; ++i) {
        const int connection = newConnection();
        if (connection >= 0) {
            held_.push_back(connection);
        }
    }
    thread_ = std::thread([this] { keepFull(); });
}

FullBus::~FullBus() {
    over_ = true;
    thread_.join();
    for (const int connection : held_) {
        close(connection);
    }
}

/// -1 where the system lets nobody wait any more.
int FullBus::newConnection() const {
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(connection);
        return -1;
    }
    return connection;
}

void FullBus::keepFull() {
    while (!over_) {
        for (int& connection : held_) {
            const int next = isClosed(connection) ? newConnection() : -1;
            if (next >= 0) {
                close(connection);
                connection = next;
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace tarvik
