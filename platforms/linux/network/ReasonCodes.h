#pragma once

#include <cstdint>
#include <string_view>

namespace tarvik {

// Why NetworkManager did not bring a connection up, or ended it, as the nearest code of the
// remote-access service. docs/network-codes.md has the same table for readers.

/// From the reason that an active connection gives when it is deactivated.
std::uint32_t codeOfActiveReason(std::uint32_t reason);

/// From the reason that its device gives, which tells more than `dependency failed` or `device
/// disconnected`; `otherwise` for a reason that says nothing.
std::uint32_t codeOfDeviceReason(std::uint32_t reason, std::uint32_t otherwise);

/// From the name of the error that a call was answered with.
std::uint32_t codeOfBusError(std::string_view name);

} // namespace tarvik
