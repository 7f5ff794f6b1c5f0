#include "contracts/painted/DrawnChart.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tarvik {
namespace {

/// Of all pixels; what another version of the system or the toolkit may do differently.
constexpr double tolerance = 0.005;

/// Writes what was drawn as the image of that case; the name of its file.
std::string write(const Pixels& pixels, const std::filesystem::path& folder, const ChartCase& one) {
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const std::filesystem::path file = folder / (one.name + ".png");
    return (writeImage(pixels, file) ? "" : "nowhere: ") + file.string();
}

class DrawnChartContract : public testing::TestWithParam<ChartCase> {};

TEST_P(DrawnChartContract, LooksAsItShould) {
    const Pixels now = drawn(GetParam());
    if (const char* folder = std::getenv("TARVIK_WRITE_IMAGES"); folder != nullptr) {
        GTEST_SKIP() << "Written to " << write(now, folder, GetParam());
    }

    EXPECT_LE(differingPart(now, kept(GetParam())), tolerance)
        << "What was drawn is in "
        << write(now, std::filesystem::temp_directory_path() / "tarvik-images", GetParam())
        << ". If it is right, TARVIK_WRITE_IMAGES=FOLDER writes all images anew.";
}

INSTANTIATE_TEST_SUITE_P(All, DrawnChartContract, testing::ValuesIn(chartCases()),
                         [](const auto& one) { return nameOf(one.param); });

TEST(DrawnChartsContract, AnImageThatLacksALineIsNoticed) {
    const Pixels one = drawn({.name = "line_one"});
    const Pixels two = drawn({.name = "line_two", .columns = 2});

    EXPECT_GT(differingPart(one, two), tolerance);
}

} // namespace
} // namespace tarvik
