#pragma once

#include "types/Long.h"

#include <cstdint>
#include <string>

namespace tarvik {

/// Dials a phone-book entry and returns when the connection is up or has failed, which is shown.
/// Returns the connection's handle, 0 when the dial returned none, -1 when no entry was named.
Long DialIn(const std::string& EntryName, const std::string& PhoneBook);

/// Hangs up that connection if it is connected. A failure is shown and switches monitoring off.
void HangUpLine(std::uint32_t Handle);

/// Hangs up every connection that is up. A failure is shown and switches monitoring off.
void HangUp();

} // namespace tarvik
