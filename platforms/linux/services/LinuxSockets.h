#pragma once

#include "ports/Sockets.h"

namespace tarvik {

/// The local host's name and addresses as the system tells them: the addresses of its interfaces
/// that are up, those of the machine to itself only when there is no other.
class LinuxSockets : public Sockets {
public:
    int WSAStartup(std::uint16_t version, WSADATA* data) override;
    int WSACleanup() override;
    int WSAGetLastError() override { return lastError_; }
    int gethostname(char* name, int size) override;
    bool gethostbyname(const char* name, HOSTENT* host) override;

private:
    static constexpr int notStarted = 10093;

    int started_ = 0;
    int lastError_ = 0;
};

} // namespace tarvik
