#include "types/Long.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr std::int32_t largestLong = 2'147'483'647;
constexpr std::int32_t smallestLong = -largestLong - 1;

TEST(LongTest, CalculatesWithinThirtyTwoBits) {
    EXPECT_EQ(Long(largestLong - 1) + Long(1), Long(largestLong));
    EXPECT_EQ(Long(smallestLong + 1) - Long(1), Long(smallestLong));
    EXPECT_EQ(Long(-46'340) * Long(46'340), Long(-2'147'395'600));
    EXPECT_EQ(-Long(largestLong), Long(-largestLong));
}

TEST(LongTest, RaisesOverflowBeyondThirtyTwoBits) {
    EXPECT_EQ(errorOf([] { return Long(largestLong) + Long(1); }), 6);
    EXPECT_EQ(errorOf([] { return Long(smallestLong) - Long(1); }), 6);
    EXPECT_EQ(errorOf([] { return Long(65'536) * Long(32'768); }), 6);
    EXPECT_EQ(errorOf([] { return -Long(smallestLong); }), 6);
    EXPECT_EQ(errorOf([] { return Long(smallestLong) / Long(-1); }), 6);
}

TEST(LongTest, DividesTowardsZero) {
    EXPECT_EQ(Long(7) / Long(2), Long(3));
    EXPECT_EQ(Long(-7) / Long(2), Long(-3));
}

TEST(LongTest, TheRemainderHasTheSignOfTheDividend) {
    EXPECT_EQ(Long(-7) % Long(3), Long(-1));
    EXPECT_EQ(Long(7) % Long(-3), Long(1));
    EXPECT_EQ(Long(smallestLong) % Long(-1), Long(0));
}

TEST(LongTest, RaisesDivisionByZero) {
    EXPECT_EQ(errorOf([] { return Long(1) / Long(0); }), 11);
    EXPECT_EQ(errorOf([] { return Long(1) % Long(0); }), 11);
}

TEST(LongTest, NarrowsOnlyWhatFits) {
    EXPECT_EQ(Long::narrow(2'147'483'647), Long(largestLong));
    EXPECT_EQ(errorOf([] { return Long::narrow(2'147'483'648); }), 6);
    EXPECT_EQ(errorOf([] { return Long::narrow(-2'147'483'649); }), 6);
}

TEST(RunTimeErrorTest, EachNumberHasItsDescription) {
    EXPECT_STREQ(descriptionOf(ErrorNumber::InvalidProcedureCall),
                 "Invalid procedure call or argument");
    EXPECT_STREQ(descriptionOf(ErrorNumber::Overflow), "Overflow");
    EXPECT_STREQ(descriptionOf(ErrorNumber::OutOfMemory), "Out of memory");
    EXPECT_STREQ(descriptionOf(ErrorNumber::SubscriptOutOfRange), "Subscript out of range");
    EXPECT_STREQ(descriptionOf(ErrorNumber::DivisionByZero), "Division by zero");
    EXPECT_STREQ(descriptionOf(ErrorNumber::TypeMismatch), "Type mismatch");
    EXPECT_STREQ(descriptionOf(ErrorNumber::Internal), "Internal error");
    EXPECT_STREQ(descriptionOf(ErrorNumber::FileNotFound), "File not found");
    EXPECT_STREQ(descriptionOf(ErrorNumber::DiskFull), "Disk full");
    EXPECT_STREQ(descriptionOf(ErrorNumber::PermissionDenied), "Permission denied");
    EXPECT_STREQ(descriptionOf(ErrorNumber::PathFileAccess), "Path/File access error");
    EXPECT_STREQ(descriptionOf(ErrorNumber::PathNotFound), "Path not found");
    EXPECT_STREQ(descriptionOf(static_cast<ErrorNumber>(999)),
                 "Application-defined or object-defined error");
}

TEST(RunTimeErrorTest, ARaisedErrorCarriesNumberAndDescription) {
    try {
        raise(ErrorNumber::DiskFull);
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::DiskFull);
        EXPECT_STREQ(error.what(), "Disk full");
        return;
    }
}

} // namespace
} // namespace tarvik
