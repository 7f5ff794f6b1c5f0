#include "types/CheckSum.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvik {
namespace {

TEST(CheckSumTest, TheDigitsHaveTheSumThatIsKnownForThem) {
    EXPECT_EQ(checkSum("123456789"), 0x62EC'59E3'F1A4'F00AU);
}

/// Bit by bit.
std::uint64_t plainSum(const std::string& bytes) {
    std::uint64_t sum = ~std::uint64_t{0};
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            const bool isSet = (static_cast<unsigned char>(byte) >> bit & 1) != 0;
            const bool carries = (sum >> 63U != 0) != isSet;
            sum = sum << 1U ^ (carries ? 0x42F0'E1EB'A9EA'3693U : 0U);
        }
    }
    return ~sum;
}

TEST(CheckSumTest, BytesOfAnyNumberHaveTheSumOfTheirBits) {
    std::string bytes;
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(checkSum(bytes), plainSum(bytes)) << i;
        bytes += static_cast<char>(i * 37);
    }
}

TEST(CheckSumTest, NothingHasNone) {
    EXPECT_EQ(checkSum(""), 0U);
}

TEST(CheckSumTest, AByteMoreOrLessIsAnotherSum) {
    const std::string zeros(8, '\0');

    EXPECT_NE(checkSum(zeros), checkSum(zeros.substr(1)));
}

} // namespace
} // namespace tarvik
