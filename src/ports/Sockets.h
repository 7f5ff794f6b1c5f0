#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

/// What the socket interface tells of itself when it is started.
struct WSADATA {
    std::uint16_t wVersion;     ///< version granted: major in the low byte, minor in the high byte
    std::uint16_t wHighVersion; ///< highest version offered
    std::uint16_t iMaxSockets;  ///< sockets one process may open
};
static_assert(sizeof(WSADATA) == 6);

/// A host's name and addresses. The name may carry bytes after its first NUL, as the service's
/// buffer does; each address has `h_length` bytes in network order.
struct HOSTENT {
    std::string h_name;
    std::uint16_t h_length = 4;
    std::vector<std::string> h_addr_list;
};

/// The sockets interface, version 1.1, as far as the local host's name and addresses need it.
class Sockets {
public:
    virtual ~Sockets() = default;

    /// Starts the interface; 0 on success, else its error number.
    virtual int WSAStartup(std::uint16_t version, WSADATA* data) = 0;

    /// Ends it; 0 on success, else the error number.
    virtual int WSACleanup() = 0;

    /// Error number of the last failed call.
    virtual int WSAGetLastError() = 0;

    /// Writes the local host's NUL-terminated name into `name` of `size` bytes; -1 on failure.
    virtual int gethostname(char* name, int size) = 0;

    /// Fills `host` with the entry of that name; false where the platform answers NULL.
    virtual bool gethostbyname(const char* name, HOSTENT* host) = 0;
};

} // namespace tarvik
