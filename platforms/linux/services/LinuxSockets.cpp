#include "linux/services/LinuxSockets.h"

#include <cerrno>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <string_view>
#include <unistd.h>

namespace tarvik {

namespace {

/// Addresses of version 4 of the interfaces that are up.
std::vector<std::string> ownAddresses(bool loopback) {
    ifaddrs* found = nullptr;
    if (getifaddrs(&found) != 0) {
        return {};
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(found, &freeifaddrs);
    std::vector<std::string> addresses;
    for (const ifaddrs* each = found; each != nullptr; each = each->ifa_next) {
        const bool wanted = each->ifa_addr != nullptr && each->ifa_addr->sa_family == AF_INET &&
                            (each->ifa_flags & IFF_UP) != 0 &&
                            ((each->ifa_flags & IFF_LOOPBACK) != 0) == loopback;
        if (wanted) {
            sockaddr_in address{};
            std::memcpy(&address, each->ifa_addr, sizeof address);
            std::string bytes(sizeof address.sin_addr, '\0');
            std::memcpy(bytes.data(), &address.sin_addr, bytes.size());
            addresses.push_back(std::move(bytes));
        }
    }
    return addresses;
}

} // namespace

int LinuxSockets::WSAStartup(std::uint16_t version, WSADATA* data) {
    // The version that was asked for is granted: the program asks for no more than names and
    // addresses.
    constexpr std::uint16_t manySockets = 32767;
    *data = {.wVersion = version, .wHighVersion = version, .iMaxSockets = manySockets};
    ++started_;
    return 0;
}

int LinuxSockets::WSACleanup() {
    if (started_ == 0) {
        lastError_ = notStarted;
        return notStarted;
    }
    --started_;
    return 0;
}

int LinuxSockets::gethostname(char* name, int size) {
    if (::gethostname(name, static_cast<std::size_t>(size)) != 0) {
        lastError_ = errno;
        return -1;
    }
    name[size - 1] = '\0';
    return 0;
}

bool LinuxSockets::gethostbyname(const char* name, HOSTENT* host) {
    char own[256] = {};
    if (gethostname(own, sizeof own) != 0 || std::string_view(own) != name) {
        return false; // only this machine is known
    }
    std::vector<std::string> addresses = ownAddresses(false);
    if (addresses.empty()) {
        addresses = ownAddresses(true);
    }
    *host = {.h_name = name, .h_length = 4, .h_addr_list = std::move(addresses)};
    return true;
}

} // namespace tarvik
