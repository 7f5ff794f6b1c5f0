#include "contracts/painted/PaintedIcon.h"

#include "ports/NotificationArea.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

namespace tarvik {
namespace {

constexpr std::uint8_t darkPanel = 40;
constexpr std::uint8_t lightPanel = 240;

/// How bright a pixel is to who sees no colours, from 0 to 255.
int brightness(std::uint32_t pixel) {
    const auto part = [pixel](int shift) { return static_cast<int>(pixel >> shift & 0xFFU); };
    return (299 * part(16) + 587 * part(8) + 114 * part(0)) / 1000;
}

constexpr int tellableGrey = 60;

/// So many pixels of the two differ clearly, were they grey.
int differingGreys(const Pixels& one, const Pixels& other) {
    int count = 0;
    for (std::size_t i = 0; i < one.values.size(); ++i) {
        const int step = brightness(one.values[i]) - brightness(other.values[i]);
        count += std::abs(step) >= tellableGrey ? 1 : 0;
    }
    return count;
}

/// An icon in each size that panels use, on a dark and on a light panel.
class TrayMarkContract : public testing::TestWithParam<std::tuple<TrayIcon, int, std::uint8_t>> {
protected:
    Pixels painted(TrayMark mark) const {
        return paintedIcon(iconNumber(std::get<TrayIcon>(GetParam()), mark), side(), panel());
    }
    int side() const { return std::get<int>(GetParam()); }
    std::uint8_t panel() const { return std::get<std::uint8_t>(GetParam()); }
    /// A twentieth of what a mark may cover.
    int few() const { return side() * side() / 80; }
};

TEST_P(TrayMarkContract, MarksAreToldFromEachOtherAndFromNoneWithoutColour) {
    const Pixels none = painted(TrayMark::None);
    const Pixels first = painted(TrayMark::First);
    const Pixels last = painted(TrayMark::Last);

    EXPECT_GT(differingGreys(none, first), few());
    EXPECT_GT(differingGreys(none, last), few());
    EXPECT_GT(differingGreys(first, last), few());
}

TEST_P(TrayMarkContract, AMarkLeavesTheIconAsItIsOutsideItsLowerRightCorner) {
    const Pixels none = painted(TrayMark::None);

    for (const TrayMark mark : {TrayMark::First, TrayMark::Last}) {
        const Pixels marked = painted(mark);
        for (int y = 0; y < side(); ++y) {
            for (int x = 0; x < side(); ++x) {
                const bool corner = x >= side() / 2 && y >= side() / 2;
                EXPECT_TRUE(corner || marked.at(x, y) == none.at(x, y)) << x << ' ' << y;
            }
        }
    }
}

TEST_P(TrayMarkContract, AMarkStandsOutFromThePanel) {
    const Pixels bare{.width = side(),
                      .height = side(),
                      .values = std::vector<std::uint32_t>(
                          static_cast<std::size_t>(side() * side()), panel() * 0x010101U)};

    for (const TrayMark mark : {TrayMark::First, TrayMark::Last}) {
        Pixels corner = painted(mark);
        for (int y = 0; y < side(); ++y) {
            for (int x = 0; x < side(); ++x) {
                if (x < side() / 2 || y < side() / 2) {
                    corner.values[static_cast<std::size_t>(y * side() + x)] = bare.at(x, y);
                }
            }
        }
        EXPECT_GT(differingGreys(corner, bare), few());
    }
}

INSTANTIATE_TEST_SUITE_P(All, TrayMarkContract,
                         testing::Combine(testing::Values(TrayIcon::imgSysTray,
                                                          TrayIcon::imgSysTrayOnline,
                                                          TrayIcon::imgSysTrayOffline),
                                          testing::Values(16, 22, 24, 32, 48, 64),
                                          testing::Values(darkPanel, lightPanel)));

TEST(TrayNumberContract, AnUnknownNumberIsThePlainFirstIcon) {
    EXPECT_EQ(paintedIcon(9, 16, lightPanel), paintedIcon(0, 16, lightPanel));
}

} // namespace
} // namespace tarvik
