#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvik {

/// Units of 1000, then those of 1024.
enum class SizeUnit : std::uint8_t { MB, GB, TB, MiB, GiB, TiB };

/// Bytes that one of them is.
std::uint64_t bytesIn(SizeUnit unit);

/// A number of bytes as the user has put it, up to `mostBytes`.
struct DataSize {
    std::uint64_t thousandths = 0; ///< of the unit
    SizeUnit unit = SizeUnit::GB;

    static constexpr std::uint64_t mostBytes = std::uint64_t{1} << 63U;

    /// Without the fraction of a byte.
    std::uint64_t bytes() const;

    friend bool operator==(const DataSize&, const DataSize&) = default;
};

/// "2.5 GB"; the same in every locale.
std::string textOf(const DataSize& size);

/// Reads what `textOf` writes, also with fewer or no blanks and in letters of either case. Nothing
/// for what is no size, has more than three decimals, or is more than `mostBytes`.
std::optional<DataSize> readDataSize(std::string_view text);

} // namespace tarvik
