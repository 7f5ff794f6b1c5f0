#include "types/CheckSum.h"

#include <array>
#include <cstddef>

namespace tarvik {

namespace {

constexpr std::size_t atOnce = 8; ///< bytes
constexpr unsigned bitsInByte = 8;
constexpr unsigned topByte = 56; ///< bits below it

/// What a byte adds to the sum of so many bytes behind it.
using CheckSumTables = std::array<std::array<std::uint64_t, 256>, atOnce>;

constexpr CheckSumTables checkSumTables() {
    constexpr std::uint64_t polynomial = 0x42F0'E1EB'A9EA'3693;
    CheckSumTables tables{};
    for (std::size_t i = 0; i < tables[0].size(); ++i) {
        std::uint64_t value = std::uint64_t{i} << topByte;
        for (unsigned bit = 0; bit < bitsInByte; ++bit) {
            value = (value << 1U) ^ ((value >> 63U) != 0 ? polynomial : 0);
        }
        tables[0][i] = value;
    }
    for (std::size_t behind = 1; behind < atOnce; ++behind) {
        for (std::size_t i = 0; i < tables[0].size(); ++i) {
            const std::uint64_t value = tables[behind - 1][i];
            tables[behind][i] =
                (value << bitsInByte) ^ tables[0][static_cast<unsigned char>(value >> topByte)];
        }
    }
    return tables;
}

constexpr CheckSumTables tables = checkSumTables();

} // namespace

std::uint64_t checkSum(std::string_view bytes) {
    std::uint64_t sum = ~std::uint64_t{0};
    for (; bytes.size() >= atOnce; bytes.remove_prefix(atOnce)) {
        std::uint64_t next = 0;
        for (std::size_t i = 0; i < atOnce; ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            const auto above = static_cast<unsigned char>(sum >> (topByte - bitsInByte * i));
            next ^= tables[atOnce - 1 - i][static_cast<unsigned char>(byte ^ above)];
        }
        sum = next;
    }
    for (const char byte : bytes) {
        const auto first = static_cast<unsigned char>(sum >> topByte);
        sum = (sum << bitsInByte) ^ tables[0][first ^ static_cast<unsigned char>(byte)];
    }
    return ~sum;
}

} // namespace tarvik
