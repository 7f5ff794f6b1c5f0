#pragma once

#include "ports/ConnectionProvider.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// A phone-book entry. Flags and path are only known where the service has the newest record form.
struct PhoneBookEntry {
    std::string name = {};
    std::uint32_t flags = 0;
    std::string phoneBookPath = {};
};

/// Fills `Entries` with the phone-book entries, empty when there are none. An empty phone book is
/// the default one. True when entries were found. A failure is shown.
bool RasGetAllEntries(std::vector<PhoneBookEntry>& Entries, const std::string& PhoneBook);

/// Lists the connections anew in `RasConnections`, which may end up longer than `Count`, their
/// number. `Size` is the buffer size in bytes to begin with; 0 asks the service first. Returns 0 or
/// the service's code, which has then been shown.
std::uint32_t InitRas(std::uint32_t Size, std::uint32_t& Count);

/// Asks whether a connection is up. Returns 0 or the service's code, which is not shown; then it is
/// not taken for connected.
std::uint32_t ReadStatus(std::uint32_t Handle, bool& Connected);

/// Reads what a connection has carried. Returns 0 or the service's code, which is not shown.
std::uint32_t ReadStatistics(std::uint32_t Handle, RAS_STATS& Statistics);

/// The text for a code of the service (above 600) or of the system. For a system code that is known
/// this is "Error obtaining error message from system.", on purpose: the length that the system
/// answers counts as a failure.
std::string RasErrorMessage(std::uint32_t Code);

/// Shows that a call of the service failed.
void ShowRasErrorMessage(const std::string& FunctionName, std::uint32_t Code);

/// Copies at most `Size` characters into `Target` and fills up with NULs to index `Size`, which is
/// always NUL: the target needs `Size` + 1 bytes, else error 9 is reported here.
void CopyStringToByte(std::span<char> Target, std::string_view Text, std::size_t Size);

} // namespace tarvik
