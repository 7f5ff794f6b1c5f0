#include "linux/network/ReasonCodes.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

/// Codes of the remote-access service that have no other use in this program.
enum Code : std::uint32_t {
    operationCancelled = 631, ///< disconnected by the user
    hardwareFailure = 630,
    requestTimedOut = 638,
    connectionDropped = 668,
    deviceNotReady = 651, ///< reported an error
    busy = 676,
    noAnswer = 678,
    noCarrier = 679,
    noDialTone = 680,
    accessDenied = 691,
    unknownEntry = 623,
    deviceMissing = 692,
    noAddress = 717,
    pppTimeout = 718,
    pppNotConfigured = 720,
    linkNotOpened = 734,
    notRunning = 711, ///< the service could not be started
};

struct Pair {
    std::uint32_t reason;
    std::uint32_t code;
};

template <std::size_t count>
std::uint32_t codeIn(const std::array<Pair, count>& table, std::uint32_t reason,
                     std::uint32_t otherwise) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const Pair& pair) { return pair.reason == reason; });
    return found == table.end() ? otherwise : found->code;
}

constexpr std::array activeReasons{
    Pair{2, operationCancelled}, // the user disconnected
    Pair{3, connectionDropped},  // the device below went away
    Pair{4, connectionDropped},  // the VPN program ended
    Pair{5, noAddress},          // no valid address
    Pair{6, noAnswer},           // the attempt took too long
    Pair{7, requestTimedOut},    // the VPN program did not start in time
    Pair{8, notRunning},         // the VPN program did not start
    Pair{9, accessDenied},       // no or wrong secrets
    Pair{10, accessDenied},      // login failed
    Pair{11, unknownEntry},      // the profile was removed
    Pair{12, deviceNotReady},    // what it needs failed
    Pair{13, deviceMissing},     // the device could not be made
    Pair{14, deviceMissing},     // the device was removed
};

constexpr std::array deviceReasons{
    Pair{4, pppNotConfigured},    // configuration failed
    Pair{5, noAddress},           // no address
    Pair{6, noAddress},           // the address ran out
    Pair{7, accessDenied},        // no or wrong secrets
    Pair{12, linkNotOpened},      // PPP did not start
    Pair{13, connectionDropped},  // PPP disconnected
    Pair{14, linkNotOpened},      // PPP failed
    Pair{15, noAddress},          // DHCP did not start
    Pair{16, noAddress},          // DHCP error
    Pair{17, noAddress},          // DHCP failed
    Pair{23, busy},               // the line is busy
    Pair{24, noDialTone},         // no dial tone
    Pair{25, noCarrier},          // no carrier
    Pair{26, noAnswer},           // the dial took too long
    Pair{27, noAnswer},           // the dial failed
    Pair{28, deviceNotReady},     // the modem did not initialise
    Pair{29, pppNotConfigured},   // access point name
    Pair{30, noCarrier},          // not searching for a network
    Pair{31, accessDenied},       // the network denied
    Pair{32, noCarrier},          // no network in time
    Pair{33, noCarrier},          // no network
    Pair{34, accessDenied},       // PIN
    Pair{35, deviceNotReady},     // firmware
    Pair{36, deviceMissing},      // removed
    Pair{37, operationCancelled}, // the machine went to sleep
    Pair{38, unknownEntry},       // the profile was removed
    Pair{39, operationCancelled}, // the user asked for it
    Pair{40, noCarrier},          // the cable
    Pair{43, deviceMissing},      // no modem
    Pair{44, noCarrier},          // Bluetooth
    Pair{45, deviceNotReady},     // no SIM card
    Pair{46, accessDenied},       // PIN wanted
    Pair{47, accessDenied},       // PUK wanted
    Pair{48, accessDenied},       // wrong SIM card
    Pair{50, deviceNotReady},     // what it needs failed
    Pair{51, deviceNotReady},     // ADSL bridge
    Pair{52, notRunning},         // no modem manager
};

} // namespace

std::uint32_t codeOfActiveReason(std::uint32_t reason) {
    return codeIn(activeReasons, reason, deviceNotReady);
}

std::uint32_t codeOfDeviceReason(std::uint32_t reason, std::uint32_t otherwise) {
    return codeIn(deviceReasons, reason, otherwise);
}

std::uint32_t codeOfBusError(std::string_view name) {
    const auto endsWith = [&](std::string_view end) { return name.ends_with(end); };
    if (endsWith(".UnknownConnection")) {
        return unknownEntry;
    }
    if (endsWith(".UnknownDevice") || endsWith(".DeviceNotFound")) {
        return deviceMissing;
    }
    if (endsWith(".PermissionDenied") || endsWith(".AccessDenied")) {
        return accessDenied;
    }
    if (endsWith(".ServiceUnknown") || endsWith(".NameHasNoOwner") || endsWith(".Disconnected")) {
        return notRunning;
    }
    if (endsWith(".NoReply") || endsWith(".Timeout") || endsWith(".TimedOut")) {
        return requestTimedOut;
    }
    return deviceNotReady;
}

} // namespace tarvik
