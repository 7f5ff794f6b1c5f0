#pragma once

#include "linux/network/NetworkBus.h"
#include "ports/InternetState.h"

#include <vector>

namespace tarvik {

/// How the machine is connected, as NetworkManager tells it: its connectivity, the kind of the
/// primary connection, the proxy settings of the environment, and whether profiles are set up.
class LinuxInternetState : public InternetState {
public:
    bool InternetGetConnectedState(std::uint32_t* flags, std::uint32_t reserved) override;
    bool InternetGetConnectedStateExA(std::uint32_t* flags, char* name, std::uint32_t size,
                                      std::uint32_t reserved) override;

private:
    NetworkBus bus_;
};

/// The flag word and whether there is a connection.
struct InternetFlags {
    std::uint32_t flags = 0;
    bool connected = false;
};

/// What that state of the machine means; `proxy`: the environment names one.
InternetFlags internetFlags(const NetworkState& state, const std::vector<NetworkLine>& lines,
                            bool profilesExist, bool proxy);

} // namespace tarvik
