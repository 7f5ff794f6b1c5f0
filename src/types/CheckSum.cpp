#include "types/CheckSum.h"

#include <array>
#include <cstddef>

namespace tarvik {

namespace {

constexpr std::array<std::uint64_t, 256> checkSumTable() {
    constexpr std::uint64_t polynomial = 0x42F0'E1EB'A9EA'3693;
    std::array<std::uint64_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        std::uint64_t value = std::uint64_t{i} << 56U;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value << 1U) ^ ((value >> 63U) != 0 ? polynomial : 0);
        }
        table[i] = value;
    }
    return table;
}

} // namespace

std::uint64_t checkSum(std::string_view bytes) {
    static constexpr auto table = checkSumTable();
    std::uint64_t sum = ~std::uint64_t{0};
    for (const char byte : bytes) {
        const auto first = static_cast<unsigned char>(sum >> 56U);
        sum = (sum << 8U) ^ table[first ^ static_cast<unsigned char>(byte)];
    }
    return ~sum;
}

} // namespace tarvik
