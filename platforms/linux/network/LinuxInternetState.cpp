#include "linux/network/LinuxInternetState.h"

#include "linux/services/Environment.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tarvik {

namespace {

// NetworkManager's own numbers.
constexpr std::uint32_t asleep = 10;
constexpr std::uint32_t connectedLocally = 50;
constexpr std::uint32_t connectivityNone = 1;

bool environmentHasProxy() {
    constexpr std::array names{"http_proxy", "https_proxy", "all_proxy",
                               "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"};
    return std::any_of(names.begin(), names.end(),
                       [](const char* name) { return !fromEnvironment(name).empty(); });
}

bool isModem(const std::string& type) {
    constexpr std::array types{"gsm", "cdma", "pppoe", "adsl", "bluetooth"};
    return std::find(types.begin(), types.end(), type) != types.end();
}

} // namespace

InternetFlags internetFlags(const NetworkState& state, const std::vector<NetworkLine>& lines,
                            bool profilesExist, bool proxy) {
    const bool dialling = std::any_of(lines.begin(), lines.end(), [](const NetworkLine& line) {
        return line.state == line_state::activating && isModem(line.type);
    });
    InternetFlags result;
    result.connected = state.state > connectedLocally && state.connectivity != connectivityNone;
    if (result.connected) {
        result.flags |= isModem(state.primaryType) ? InternetState::modem : InternetState::lan;
        result.flags |= proxy ? InternetState::proxy : 0U;
    }
    // Dialling needs nothing but NetworkManager, which has answered.
    result.flags |= InternetState::rasInstalled;
    result.flags |= dialling ? InternetState::modemBusy : 0U;
    result.flags |= state.state <= asleep ? InternetState::offline : 0U;
    result.flags |= profilesExist ? InternetState::configured : 0U;
    return result;
}

bool LinuxInternetState::InternetGetConnectedState(std::uint32_t* flags, std::uint32_t) {
    *flags = 0;
    // One profile is enough to know that there are any.
    if (!bus_.refresh(bus_.profiles().empty() ? NetworkBus::reading
                                              : std::chrono::milliseconds::zero())) {
        return false;
    }
    const InternetFlags found =
        internetFlags(bus_.state(), bus_.lines(), !bus_.profiles().empty(), environmentHasProxy());
    *flags = found.flags;
    return found.connected;
}

bool LinuxInternetState::InternetGetConnectedStateExA(std::uint32_t* flags, char* name,
                                                      std::uint32_t size, std::uint32_t reserved) {
    const bool connected = InternetGetConnectedState(flags, reserved);
    if (connected && size > 0) {
        name[std::string_view(bus_.state().primaryName).copy(name, size - 1)] = '\0';
    }
    return connected;
}

} // namespace tarvik
