#include "types/CheckSum.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvik {
namespace {

TEST(CheckSumTest, TheDigitsHaveTheSumThatIsKnownForThem) {
    EXPECT_EQ(checkSum("123456789"), 0x62EC'59E3'F1A4'F00AU);
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
