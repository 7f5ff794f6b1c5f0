#include "connection/mdlCode.h"

#include "support/WorldTest.h"

#include <array>

namespace tarvik {
namespace {

using CopyStringToByteTest = WorldTest;

TEST_F(CopyStringToByteTest, CutsToTheSizeAndEndsWithNul) {
    std::array<char, 5> target{'x', 'x', 'x', 'x', 'x'};

    CopyStringToByte(target, "0123456789", 4);

    EXPECT_EQ(target, (std::array<char, 5>{'0', '1', '2', '3', '\0'}));
}

TEST_F(CopyStringToByteTest, FillsUpWithNuls) {
    std::array<char, 16> target;
    target.fill('x');

    CopyStringToByte(target, "0123456789", 15);

    EXPECT_EQ(std::string(target.data(), 16), std::string("0123456789\0\0\0\0\0\0", 16));
}

TEST_F(CopyStringToByteTest, OfSizeZeroWritesOneNul) {
    std::array<char, 2> target{'x', 'x'};

    CopyStringToByte(target, "abc", 0);

    EXPECT_EQ(target, (std::array<char, 2>{'\0', 'x'}));
}

TEST_F(CopyStringToByteTest, BeyondTheTargetIsAnErrorAfterWhatFits) {
    std::array<char, 3> target{};
    expectError("9 (Subscript out of range)", "CopyStringToByte");

    CopyStringToByte(target, "0123456789", 4);

    EXPECT_EQ(target, (std::array<char, 3>{'0', '1', '2'}));
}

} // namespace
} // namespace tarvik
