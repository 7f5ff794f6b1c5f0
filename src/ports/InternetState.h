#pragma once

#include <cstdint>

namespace tarvik {

/// How the machine is connected to the Internet, as the system's Internet settings tell it.
class InternetState {
public:
    /// Bits of the flag word.
    enum Flag : std::uint32_t {
        modem = 1,
        lan = 2,
        proxy = 4,
        modemBusy = 8,
        rasInstalled = 16,
        offline = 32,
        configured = 64,
    };

    virtual ~InternetState() = default;

    /// True when the machine is connected; fills the flag word either way. `reserved` is 0.
    virtual bool InternetGetConnectedState(std::uint32_t* flags, std::uint32_t reserved) = 0;

    /// The same, and writes the connection's NUL-terminated name into `name`, cut to `size` bytes
    /// including the NUL. The name is left untouched when the answer is false.
    virtual bool InternetGetConnectedStateExA(std::uint32_t* flags, char* name, std::uint32_t size,
                                              std::uint32_t reserved) = 0;
};

} // namespace tarvik
