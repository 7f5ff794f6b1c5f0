#pragma once

#include "ports/Sockets.h"
#include "windows/services/Library.h"

namespace tarvik {

/// The sockets of the system, version 1.1 of their interface.
class WindowsSockets : public Sockets {
public:
    int WSAStartup(std::uint16_t version, WSADATA* data) override;
    int WSACleanup() override;
    int WSAGetLastError() override;
    int gethostname(char* name, int size) override;
    bool gethostbyname(const char* name, HOSTENT* host) override;

private:
    Library library_{"ws2_32.dll"};
};

} // namespace tarvik
