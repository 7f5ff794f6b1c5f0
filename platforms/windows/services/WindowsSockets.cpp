// The functions' names are macros nowhere, but their header must come before the system's own.
#include <winsock2.h>

#include "windows/services/WindowsSockets.h"

namespace tarvik {

namespace {
constexpr int failed = -1;
} // namespace

int WindowsSockets::WSAStartup(std::uint16_t version, WSADATA* data) {
    const auto start = library_.function<decltype(::WSAStartup)>("WSAStartup");
    ::WSADATA found{};
    const int error = start == nullptr ? WSASYSNOTREADY : start(version, &found);
    *data = {.wVersion = found.wVersion,
             .wHighVersion = found.wHighVersion,
             .iMaxSockets = found.iMaxSockets};
    return error;
}

int WindowsSockets::WSACleanup() {
    const auto cleanup = library_.function<decltype(::WSACleanup)>("WSACleanup");
    if (cleanup == nullptr) {
        return WSANOTINITIALISED;
    }
    return cleanup() == 0 ? 0 : WSAGetLastError();
}

int WindowsSockets::WSAGetLastError() {
    const auto error = library_.function<decltype(::WSAGetLastError)>("WSAGetLastError");
    return error == nullptr ? WSANOTINITIALISED : error();
}

int WindowsSockets::gethostname(char* name, int size) {
    const auto get = library_.function<decltype(::gethostname)>("gethostname");
    return get == nullptr || get(name, size) != 0 ? failed : 0;
}

bool WindowsSockets::gethostbyname(const char* name, HOSTENT* host) {
    const auto get = library_.function<decltype(::gethostbyname)>("gethostbyname");
    const hostent* found = get == nullptr ? nullptr : get(name);
    if (found == nullptr) {
        return false;
    }
    const auto length = static_cast<std::uint16_t>(found->h_length);
    *host = {.h_name = found->h_name, .h_length = length, .h_addr_list = {}};
    for (char** address = found->h_addr_list; *address != nullptr; ++address) {
        host->h_addr_list.emplace_back(*address, length);
    }
    return true;
}

} // namespace tarvik
