#pragma once

#include "history/AddressParts.h"

#include <string>

namespace tarvik {

/// Compares two dotted addresses of four parts: a shorter part comes first, parts of one length are
/// compared as texts.
AddressOrder CompareIPAddresses(const std::string& First, const std::string& Second);

/// Shows all addresses that were imported: in the order in which they appear in the log or, if
/// `ByAddress`, ascending; addresses that are not of four parts are then left out, unless the first
/// of all is one: then all others are.
void UpdateIPAddresses(bool ByAddress);

} // namespace tarvik
