#include "plan/DataSize.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr std::uint64_t mostBytes = 9'223'372'036'854'775'808U;

std::uint64_t bytesOf(std::string_view text) {
    const auto size = readDataSize(text);
    return size ? size->bytes() : UINT64_MAX;
}

TEST(DataSizeTest, UnitsAreOfAThousandOrOf1024) {
    EXPECT_EQ(bytesOf("1 MB"), 1'000'000U);
    EXPECT_EQ(bytesOf("1 GB"), 1'000'000'000U);
    EXPECT_EQ(bytesOf("1 TB"), 1'000'000'000'000U);
    EXPECT_EQ(bytesOf("1 MiB"), 1'048'576U);
    EXPECT_EQ(bytesOf("1 GiB"), 1'073'741'824U);
    EXPECT_EQ(bytesOf("1 TiB"), 1'099'511'627'776U);
}

TEST(DataSizeTest, ANumberMayHaveThreeDecimals) {
    EXPECT_EQ(bytesOf("2.5 GB"), 2'500'000'000U);
    EXPECT_EQ(bytesOf("0.001 MB"), 1'000U);
    EXPECT_EQ(bytesOf("2.7 GiB"), 2'899'102'924U);
    EXPECT_EQ(bytesOf("1.005 MiB"), 1'053'818U);
}

TEST(DataSizeTest, BlanksAndTheCaseOfLettersDoNotMatter) {
    EXPECT_EQ(bytesOf("  2.5gb "), 2'500'000'000U);
    EXPECT_EQ(bytesOf("3   mIB"), 3'145'728U);
}

TEST(DataSizeTest, ItGoesUpTo2ToThe63) {
    EXPECT_EQ(bytesOf("8388608 TiB"), mostBytes);
    EXPECT_EQ(bytesOf("8589934592 GiB"), mostBytes);
    EXPECT_EQ(bytesOf("9223372.036 TB"), 9'223'372'036'000'000'000U);
    EXPECT_FALSE(readDataSize("8388608.001 TiB"));
    EXPECT_FALSE(readDataSize("8388609 TiB"));
    EXPECT_FALSE(readDataSize("9223372.037 TB"));
    EXPECT_FALSE(readDataSize("99999999999999999999 MB"));
    EXPECT_FALSE(readDataSize("18446744073709552 MB"));
}

TEST(DataSizeTest, WhatIsNoSizeIsNothing) {
    for (const char* text : {"", "GB", "2", "2 KB", "2.1234 GB", "2. GB", ".5 GB", "1,5 GB",
                             "-1 GB", "1 GB more", "1.2.3 GB", "1e3 GB", "+1 GB"}) {
        EXPECT_FALSE(readDataSize(text)) << text;
    }
}

TEST(DataSizeTest, WhatIsWrittenIsReadBack) {
    for (const char* text : {"2.5 GB", "0 MB", "0.001 TiB", "100 MiB", "8388608 TiB", "1.25 GiB"}) {
        const auto size = readDataSize(text);
        ASSERT_TRUE(size) << text;
        EXPECT_EQ(textOf(*size), text);
    }
}

TEST(DataSizeTest, MoreThanFitsIsTheMost) {
    EXPECT_EQ((DataSize{.thousandths = UINT64_MAX, .unit = SizeUnit::TiB}).bytes(), mostBytes);
}

} // namespace
} // namespace tarvik
