#pragma once

#include "ports/ConnectionProvider.h"

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

// What every provider of connections that is not the system's own needs to keep the contract of
// records and buffers.

/// Codes of the service that only providers use.
namespace ras {
constexpr std::uint32_t invalidHandle = 6;
constexpr std::uint32_t invalidParameter = 87;
constexpr std::uint32_t unknownEntry = 623;
} // namespace ras

/// A phone-book entry; flags and path only go into the newest form of its record.
struct RasEntry {
    std::string name = {};
    std::uint32_t flags = 0;
    std::string phoneBookPath = {};
};

/// Writes a text into a field of a record, cut so that a NUL follows, and NULs behind it.
template <std::size_t size>
void putText(char (&field)[size], std::string_view text) {
    std::memset(field, 0, size);
    text.copy(field, size - 1);
}

/// The size field that a record begins with.
std::uint32_t sizeFieldOf(const void* record);

/// Answers `RasEnumEntriesA` with these entries, in the form of its record that the buffer's size
/// field tells; one of the three forms must be meant.
std::uint32_t listEntries(const std::vector<RasEntry>& entries, void* buffer, std::uint32_t* bytes,
                          std::uint32_t* count);

/// Answers `RasGetErrorStringA` with that text; null is a code without one.
std::uint32_t answerErrorText(const char* text, char* buffer, std::uint32_t size);

} // namespace tarvik
