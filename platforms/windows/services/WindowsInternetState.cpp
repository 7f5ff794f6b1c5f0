#include "windows/services/WindowsInternetState.h"

#include <string_view>
#include <vector>

namespace tarvik {

bool WindowsInternetState::InternetGetConnectedState(std::uint32_t* flags, std::uint32_t reserved) {
    using State = BOOL WINAPI(DWORD*, DWORD);
    DWORD word = 0;
    State* const state = library_.function<State>("InternetGetConnectedState");
    const bool connected = state != nullptr && state(&word, reserved) != FALSE;
    *flags = word;
    return connected;
}

bool WindowsInternetState::InternetGetConnectedStateExA(std::uint32_t* flags, char* name,
                                                        std::uint32_t size,
                                                        std::uint32_t reserved) {
    using State = BOOL WINAPI(DWORD*, char*, DWORD, DWORD);
    DWORD word = 0;
    // Systems differ in what they leave in the buffer when they are not connected.
    std::vector<char> found(std::size_t{size} + 1);
    State* const state = library_.function<State>("InternetGetConnectedStateExA");
    const bool connected = state != nullptr && state(&word, found.data(), size, reserved) != FALSE;
    *flags = word;
    if (connected && size > 0) {
        const std::string_view text(found.data());
        name[text.copy(name, size - 1)] = '\0';
    }
    return connected;
}

} // namespace tarvik
