#include "types/Current.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using CurrentNumber = Current<int>;

TEST(CurrentTest, TheNewestIsInUseUntilItEnds) {
    int outer = 1;
    int inner = 2;
    const CurrentNumber first(outer);
    {
        const CurrentNumber second(inner);
        EXPECT_EQ(&CurrentNumber::get(""), &inner);
    }

    EXPECT_EQ(&CurrentNumber::get(""), &outer);
}

TEST(CurrentTest, ToAskForOneWhereNoneIsInUseSaysWhatIsMissing) {
    try {
        CurrentNumber::get("no number is in place");
        FAIL();
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "no number is in place");
    }
}

} // namespace
} // namespace tarvik
