#include "types/Amount.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

TEST(AmountTest, IsAddedAndTakenAwayFigureByFigure) {
    const Amount more{.rcvd = 10, .sent = 20, .duration = 30};
    const Amount less{.rcvd = 1, .sent = 2, .duration = 3};

    EXPECT_EQ(more + less, (Amount{.rcvd = 11, .sent = 22, .duration = 33}));
    EXPECT_EQ(more - less, (Amount{.rcvd = 9, .sent = 18, .duration = 27}));
}

TEST(AmountTest, AFigureThatDoesNotFitIsAnError) {
    const Amount largest{.rcvd = 0, .sent = 0, .duration = Currency::fromScaled(INT64_MAX)};

    EXPECT_THROW(largest + largest, RunTimeError);
}

} // namespace
} // namespace tarvik
