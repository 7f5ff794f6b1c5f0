#pragma once

#include "ports/InternetState.h"
#include "windows/services/Library.h"

namespace tarvik {

/// The user's Internet settings. A system without them is not connected.
class WindowsInternetState : public InternetState {
public:
    bool InternetGetConnectedState(std::uint32_t* flags, std::uint32_t reserved) override;
    bool InternetGetConnectedStateExA(std::uint32_t* flags, char* name, std::uint32_t size,
                                      std::uint32_t reserved) override;

private:
    Library library_{"wininet.dll"};
};

} // namespace tarvik
